#include "shell/ui/child_windows.h"

#include <QApplication>

#include "shell/ui/frmHakkinda.h"

namespace lirovan::shell {

using namespace Qt::StringLiterals;
using browse::frm_Icerik;
using platform::WebView;
using search::frm_Arama;

/// frm_Icerik for those who show pages in it: asking for its views loads it again after it was closed.
class ChildWindows::ContentPort : public browse::ContentView {
  public:
    explicit ContentPort(ChildWindows& windows) : windows_(windows) {}

    platform::TwipsRect place() const override { return window().place(); }
    void setPlace(const platform::TwipsRect& place) override {
        if (windows_.content_) windows_.content_->setPlace(place);
    }
    bool isMinimized() const override { return window().isMinimized(); }
    bool isMaximized() const override { return window().isMaximized(); }
    void show() override { window().show(); }
    QString caption() const override { return window().windowTitle(); }
    void setCaption(const QString& caption) override { window().setWindowTitle(caption); }
    platform::PageView& wb_Icerik() override { return *window().wb_Icerik; }
    platform::PageView& wb_Icerik2() override { return *window().wb_Icerik2; }

  private:
    frm_Icerik& window() const { return windows_.contentWindow(); }
    ChildWindows& windows_;
};

ChildWindows::ChildWindows(QMdiArea& area, platform::MainFrame& frame, const data::Library& library,
                           Services& services)
    : area_(area),
      frame_(frame),
      library_(library),
      services_(services),
      contentPort_(std::make_unique<ContentPort>(*this)),
      contentDecisions_(frame, *contentPort_, services.folder) {}

ChildWindows::~ChildWindows() {
    delete browse_;
    delete content_;
}

// ---- Loading and placing ----

frm_Arama& ChildWindows::browseWindow() {
    if (!browse_) loadBrowse();
    return *browse_;
}

void ChildWindows::loadBrowse() {
    browse_ = new frm_Arama({frame_, *contentPort_, library_, services_.folder, search_,
                             [this] { return help_ && help_->helpShown; },
                             std::exchange(maximizeMainWindow, nullptr)});
    area_.addSubWindow(browse_);
    browse_->setSearchTab(new QWidget);
    const browse::BookTree& tree = browse_->load(treeProgress);
    if (tree.failure)
        services_.dialogs.show(platform::errorMessage(tree.failure->message, u"Okuma Hatası"_s));
}

frm_Icerik& ChildWindows::contentWindow() {
    if (!content_) loadContent();
    return *content_;
}

void ChildWindows::loadContent() {
    if (!services_.engine) services_.engine = platform::WebEngine::create(services_.folder);
    content_ = new frm_Icerik(contentDecisions_, services_.engine, services_.dialogs);
    frm_Icerik* window = content_;
    area_.addSubWindow(window);
    hits_.emplace(*window->wb_Icerik,
                  [this](QStringView key, bool enabled) { frame_.setButtonEnabled(key, enabled); });
    window->onActivate = [this] { contentDecisions_.activate(); };
    window->onResize = [this] { contentDecisions_.resize(); };
    window->onUnload = [this] {
        if (isBusy()) return false;
        contentDecisions_.unload();
        return true;
    };
    connect(window, &platform::MdiChild::unloaded, this, [this] {
        hits_.reset();
        content_.clear();
    });
    connect(window, &frm_Icerik::printRequested, this, &ChildWindows::printDialogWanted);
    if (browse_) {
        lastBrowsePlace_ = browse_->place();
        lastBrowseMinimized_ = browse_->isMinimized();
    }
    contentDecisions_.load(lastBrowsePlace_, lastBrowseMinimized_);
}

browse::ContentView& ChildWindows::contentView() {
    return *contentPort_;
}

void ChildWindows::arrange(platform::Twips browseWidth) {
    if (!browse_) return;
    platform::TwipsRect place = browse_->place();
    place.width = browseWidth;
    browse_->setPlace(place);
    // Whatever the first change brought about: the window has its height only now.
    browse_->decisions().resize();
    if (content_) contentDecisions_.resize();
}

// ---- The browse window ----

void ChildWindows::restoreBrowse() {
    browseWindow().bringForward();
}

void ChildWindows::showBrowse() {
    browseWindow().bringForward();
}

void ChildWindows::hideBrowse() {
    if (browse_) browse_->hide();
}

void ChildWindows::showTab(browse::Tab tab) {
    browseWindow().decisions().selectTab(tab);
}

void ChildWindows::sortResults(QStringView) {}

// ---- The shared content window ----

void ChildWindows::restoreContent() {
    contentWindow().bringForward();
}

void ChildWindows::showContent() {
    contentWindow().bringForward();
}

void ChildWindows::unloadContent() {
    if (content_) content_->close();
}

void ChildWindows::focusContentView() {
    if (!content_ || content_->isHidden()) return;
    area_.setActiveSubWindow(content_);
    content_->wb_Icerik->setFocus();
}

void ChildWindows::changeContentFontSize(int step) {
    if (content_) contentDecisions_.ChangeFontSize(step);
}

bool ChildWindows::contentHasSelection() const {
    return content_ && content_->shownPage().hasSelection();
}

void ChildWindows::printContent(const platform::PrintTarget& target, std::function<void(bool)> finished) {
    if (content_) content_->shownPage().print(target, std::move(finished));
}

void ChildWindows::openInNewWindow() {}

void ChildWindows::ReOrderPos() {
    if (hits_) hits_->ReOrderPos();
}

void ChildWindows::SetPosZero() {
    if (hits_) hits_->SetPosZero();
}

void ChildWindows::previousHit() {
    if (hits_) hits_->UpperPos();
}

void ChildWindows::nextHit() {
    if (hits_) hits_->DownerPos();
}

void ChildWindows::setActiveZoom(double factor) {
    if (!content_) return;
    content_->wb_Icerik->setZoom(factor);
    content_->wb_Icerik2->setZoom(factor);
}

void ChildWindows::sendCut() {
    if (QWidget* focused = QApplication::focusWidget()) QMetaObject::invokeMethod(focused, "cut");
}

void ChildWindows::sendCopy() {
    if (content_) content_->wb_Icerik->copy();
}

// ---- Notebook, help, the end ----

void ChildWindows::showNotebook() {}

void ChildWindows::pasteIntoNotebook() {}

void ChildWindows::showHelp() {
    frm_yardim help(
        frame_, [this](browse::Tab tab) { showTab(tab); }, area_.window());
    help_ = &help;
    help.exec();
    help_.clear();
    QApplication::processEvents();
}

void ChildWindows::showAbout() {
    frmHakkinda(area_.window()).exec();
}

void ChildWindows::quit() {
    Q_EMIT quitWanted();
}

}  // namespace lirovan::shell
