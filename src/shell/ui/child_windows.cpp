#include "shell/ui/child_windows.h"

#include <QApplication>
#include <QMenu>
#include <algorithm>

#include "browse/window_places.h"
#include "data/book_pictures.h"
#include "shell/ui/command_table.h"
#include "shell/ui/import_progress.h"
#include "shell/ui/page_looks.h"
#include "shell/ui/update_download.h"
#include "shell/update_check.h"

namespace lirovan::shell {

using namespace Qt::StringLiterals;
using browse::frm_Arama;
using browse::frm_Icerik;
using platform::WebView;

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
    bool isLoaded() const override { return windows_.content_; }
    void show() override {
        if (!window().isMinimized()) {
            window().show();
            return windows_.uncoverContent();
        }
        // Restoring activates the window; the reader goes on where the click was.
        QMdiSubWindow* before = windows_.area_.activeSubWindow();
        const QPointer<QWidget> focused = QApplication::focusWidget();
        window().showNormal();
        if (before && before != &window()) windows_.area_.setActiveSubWindow(before);
        if (focused && before && before->isAncestorOf(focused)) focused->setFocus();
    }
    QString caption() const override { return window().windowTitle(); }
    void setCaption(const QString& caption) override { window().setWindowTitle(caption); }
    void aboutToShow(const browse::PageIdentity& page) override { windows_.aboutToShow(page); }
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
      pageCommands_(frame),
      contentDecisions_(frame, *contentPort_, pageCommands_, services.folder),
      notebook_(area, services.folder, frame, services.dialogs, services.printing,
                [&area](const QString& path) -> platform::Result<void> {
                    const auto ensured = ensureLayout(path, platform::LayoutKind::Notes, area.window());
                    if (!ensured) return ensured.error();
                    return {};
                }),
      changes_(library) {
    (void)changes_.any();
    history_.shown({});
    looks_ = std::make_unique<PageLooks>(frame, services.registry);
    restoreZoom();
    pageCommands_.pageShown = [this](browse::ShownPage page) {
        if (words_ && page != browse::ShownPage::MarkedPage) words_->setWords({});
        for (const CommandBar& bar : menuBars())
            for (const CommandRow& row : bar.rows)
                if (has(row.state, RowState::OfPage))
                    frame_.setMenuEnabled(row.name, page != browse::ShownPage::None);
    };
    connect(&notebook_, &notes::Notebook::linkWanted, this, &ChildWindows::openLink);
    connect(&area_, &QMdiArea::subWindowActivated, this, &ChildWindows::nameActive);
    connect(&area_, &QMdiArea::subWindowActivated, this, &ChildWindows::focusActivePage);
}

ChildWindows::~ChildWindows() {
    closeExtraWindows();
    delete browse_;
    delete content_;
}

// ---- Loading and placing ----

void ChildWindows::followLibrary() {
    if (browse_) browse_->reload();
    if (services_.engine) chooseFirstPage();
    (void)changes_.any();
    Q_EMIT libraryChanged();
}

void ChildWindows::followOthers() {
    if (library_.database().isOpen() && !isBusy() && changes_.any()) followLibrary();
}

frm_Arama& ChildWindows::browseWindow() {
    if (!browse_) loadBrowse();
    return *browse_;
}

void ChildWindows::loadBrowse() {
    browse_ = new frm_Arama({frame_, *contentPort_, library_, services_.folder, search_, pageCommands_,
                             [this] { return help_ && help_->helpShown; }, maximizeMainWindow});
    area_.addSubWindow(browse_);
    searchTab_ = new search::SearchTab({frame_, services_.dialogs, *contentPort_, library_, services_.folder,
                                        pageCommands_, search_, asked});
    browse_->setSearchTab(searchTab_);
    searchTab_->wordsShown = [this](std::vector<search::RunWord> words) {
        if (words_) words_->setWords(std::move(words));
    };
    connect(browse_, &platform::MdiChild::unloaded, this, [this] {
        lastBrowsePlace();
        closedBrowseWidth_ = browse_->normalPlace().width;
        browse_.clear();
        searchTab_.clear();
    });
    mark(*browse_, platform::menu::Arama);
    const browse::BookTree& tree = browse_->load(treeProgress, closedBrowseWidth_);
    if (tree.failure)
        services_.dialogs.show(
            platform::errorMessage(browse::incompleteListMessage(*tree.failure), u"Okuma Hatası"_s));
}

void ChildWindows::mark(const platform::MdiChild& window, QStringView item) {
    connect(&window, &platform::MdiChild::shownChanged, this,
            [this, item](bool shown) { frame_.setMenuChecked(item, shown); });
}

frm_Icerik& ChildWindows::contentWindow() {
    if (!content_) loadContent();
    return *content_;
}

void ChildWindows::loadContent() {
    content_ = new frm_Icerik(contentDecisions_, engine(), services_.dialogs);
    frm_Icerik* window = content_;
    area_.addSubWindow(window);
    hits_.emplace(*window->wb_Icerik,
                  [this](QStringView key, bool enabled) { pageCommands_.setHitButton(key, enabled); });
    window->onActivate = [this] { contentDecisions_.activate(); };
    window->onResize = [this] {
        contentDecisions_.resize();
        followDraggedBorder();
    };
    window->onUnload = [this] {
        if (isSearching()) return false;
        contentDecisions_.unload();
        return true;
    };
    connect(window, &platform::MdiChild::unloaded, this, [this] {
        hits_.reset();
        content_.clear();
        aboutToShow({});
    });
    addWordsStrip();
    mark(*window, platform::menu::Icerik);
    connect(window->wb_Icerik, &WebView::loaded, this, [this] { contentDecisions_.pageLoaded(); });
    connect(window, &frm_Icerik::printRequested, this, &ChildWindows::printPageWithDialog);
    connect(window->wb_Icerik2, &WebView::installerRequested, this, [this](const QUrl& installer) {
        downloadInstaller(installer, services_.dialogs, area_.window());
    });
    for (WebView* page : {window->wb_Icerik, window->wb_Icerik2}) {
        equip(*page);
        connect(page, &WebView::passageWanted, this, [this](int passage) { openPassage(shown_, passage); });
    }
    contentDecisions_.load(lastBrowsePlace(), isBrowseMinimized());
}

platform::TwipsRect ChildWindows::lastBrowsePlace() {
    if (browse_) lastBrowsePlace_ = browse_->place();
    return lastBrowsePlace_;
}

std::shared_ptr<platform::WebEngine> ChildWindows::engine() {
    if (services_.engine) return services_.engine;
    services_.engine =
        platform::WebEngine::create(services_.folder, onServer(services_.updateServer, InstallerPath));
    looks_->apply(services_.engine);
    chooseFirstPage();
    services_.engine->picture = [this](qint64 number) -> std::optional<platform::LibraryPicture> {
        auto found = data::picture(library_.database(), number);
        if (!found || !*found) return std::nullopt;
        return platform::LibraryPicture{std::move((*found)->type), std::move((*found)->bytes)};
    };
    return services_.engine;
}

void ChildWindows::arrange(platform::Twips browseWidth) {
    if (browse_) {
        platform::TwipsRect place = browse_->place();
        place.width = restoredBrowseWidth_
                          ? platform::Twips{std::min(restoredBrowseWidth_->value, frame_.width().value / 2)}
                          : browseWidth;
        browse_->setPlace(place);
        // Whatever the first change brought about: the window has its height only now.
        browse_->decisions().resize();
    }
    if (content_) contentDecisions_.resize();
    for (QMdiSubWindow* window : area_.subWindowList()) platform::keepInside(*window);
}

// The border between the two windows can be dragged from either side: the browse window takes or gives the
// room when the content window, which reaches to the frame's edge, is sized at its left.
void ChildWindows::followDraggedBorder() {
    const auto isPlain = [](const QMdiSubWindow* window) {
        return window && window->isVisible() && !window->isMinimized() && !window->isMaximized();
    };
    if (!isPlain(browse_) || !isPlain(content_)) return;
    const QRect content = content_->geometry();
    const bool reachesEdge = content.right() == area_.contentsRect().right();
    if (!reachesEdge || content.left() == browse_->geometry().right() + 1) return;
    platform::TwipsRect place = browse_->place();
    place.width = content_->place().left;
    browse_->setPlace(place);
}

void ChildWindows::equip(WebView& page) {
    page.setZoom(zoom_);
    addToMenu(page);
    followTopics(page);
    connect(&page, &WebView::zoomWanted, this, &ChildWindows::stepZoom);
}

void ChildWindows::addToMenu(WebView& page) {
    connect(&page, &WebView::menuOpening, this, [this](QMenu* menu) {
        menu->addSeparator();
        menu->addActions(pageMenuItems);
    });
}

void ChildWindows::followTopics(WebView& page) {
    connect(&page, &WebView::topicWanted, this,
            [this](qint64 topic, const QString& place) { openTopic(data::TopicId{topic}, place); });
}

bool ChildWindows::isBusy() const {
    if (isSearching() || (content_ && content_->isHeld())) return true;
    const std::vector<frm_IcerikN*> open = extra_.open();
    return std::any_of(open.begin(), open.end(), [](const frm_IcerikN* window) { return window->isHeld(); });
}

// The windows say on the status bar themselves what they are, the notebook excepted.
void ChildWindows::nameActive() {
    const auto* active = qobject_cast<platform::MdiChild*>(area_.activeSubWindow());
    if (active && !active->onActivate) {
        frame_.setPanelText(1, active->windowTitle());
        connect(active, &QWidget::windowTitleChanged, this, &ChildWindows::nameActive, Qt::UniqueConnection);
    }
    const QList<QMdiSubWindow*> windows = area_.subWindowList();
    if (std::none_of(windows.begin(), windows.end(), [](const auto* window) { return window->isVisible(); }))
        frame_.setPanelText(1, status::Idle.toString());
}

void ChildWindows::focusActivePage() {
    QMdiSubWindow* active = area_.activeSubWindow();
    if (!active || active->isMinimized()) return;
    const QWidget* focused = QApplication::focusWidget();
    if (focused && focused != active && focused != active->widget() && active->isAncestorOf(focused)) return;
    if (active == content_) content_->shownPage().setFocus();
    if (auto* extra = qobject_cast<frm_IcerikN*>(active)) extra->wb_Icerik->setFocus();
}

void ChildWindows::stopRun() {
    if (searchTab_) searchTab_->stop();
}

// ---- Extra content windows ----

void ChildWindows::loadExtra(const CopiedPage& page) {
    const int number = extra_.highest() + 1;
    auto* window =
        new frm_IcerikN({frame_, services_.dialogs, services_.printing, engine(), services_.folder}, number);
    window->zoomPoints = points_;
    window->words->setWanted(looks_->wordsShown());
    extra_.add(window);
    area_.addSubWindow(window);
    connect(window, &platform::MdiChild::unloaded, this, [this, number] { extra_.release(number); });
    connect(window, &QObject::destroyed, this, [this, number] { extra_.release(number); });
    connect(window, &frm_IcerikN::notebookWanted, this,
            [this](bool paste) { paste ? this->paste() : showNotebook(); });
    window->setPlace(
        browse::extraPlaceAtLoad(lastBrowsePlace(), isBrowseMinimized(), frame_.width(), frame_.height()));
    equip(*window->wb_Icerik);
    connect(window->wb_Icerik, &WebView::passageWanted, this,
            [this, summary = shown_](int passage) { openPassage(summary, passage); });
    window->fill(page);
    window->bringForward();
    window->focusPage();
}

void ChildWindows::closeExtraWindows() {
    for (frm_IcerikN* window : extra_.open()) delete window;
}

// ---- Hits of the shared content window ----

void ChildWindows::ReOrderPos() {
    if (!content_ || pageCommands_.shown() != browse::ShownPage::MarkedPage) return;
    const platform::MdiChild::Hold hold(*content_);
    hits_->ReOrderPos();
}

void ChildWindows::SetPosZero() {
    if (!content_) return;
    const platform::MdiChild::Hold hold(*content_);
    hits_->SetPosZero();
}

}  // namespace lirovan::shell
