// What the main window's commands do to its child windows.
#include <QApplication>
#include <algorithm>

#include "platform/ui/clipboard.h"
#include "shell/page_printing.h"
#include "shell/ui/child_windows.h"
#include "shell/ui/command_table.h"
#include "shell/ui/frmHakkinda.h"
#include "shell/ui/page_looks.h"

namespace lirovan::shell {

using platform::WebView;
namespace menu = platform::menu;

namespace {

// The type that mnu_yazi counts in points; the page view zooms between a quarter and five times.
constexpr int NormalPoints = 10, PointStep = 2, LeastPoints = 4, MostPoints = 50;

}  // namespace

// ---- The browse window ----

void ChildWindows::showBrowse() {
    browseWindow().bringForward();
}

void ChildWindows::showBrowseTab(browse::Tab tab) {
    showBrowse();
    showTab(tab);
    frame_.setPanelText(1, (tab == browse::Tab::Books ? status::Kitaplar : status::Bul).toString());
}

void ChildWindows::toggleBrowse() {
    if (frame_.isMenuChecked(menu::Arama)) {
        hideBrowse();
        frame_.setPanelText(1, status::Idle.toString());
        return;
    }
    showBrowse();
    showTab(browse::Tab::Books);
    frame_.setPanelText(1, status::Arama.toString());
}

void ChildWindows::hideBrowse() {
    if (!browse_) return;
    browse_->hide();
    // It would stay the active window and take the keys.
    const QList<QMdiSubWindow*> windows = area_.subWindowList(QMdiArea::ActivationHistoryOrder);
    const auto next = std::find_if(windows.crbegin(), windows.crend(), [](const QMdiSubWindow* window) {
        return window->isVisible() && !window->isMinimized();
    });
    area_.setActiveSubWindow(next == windows.crend() ? nullptr : *next);
    if (next == windows.crend())
        area_.setFocus();
    else if (*next == content_)
        focusContentView();
}

void ChildWindows::showTab(browse::Tab tab) {
    browseWindow().decisions().selectTab(tab);
    if (tab == browse::Tab::Books && !help_) browseWindow().bookTree().setFocus();
}

void ChildWindows::sortResults(search::ListOrder order) {
    if (searchTab_) searchTab_->mnu_Sirala_Click(order);
}

// ---- The shared content window ----

void ChildWindows::showContent() {
    contentWindow().bringForward();
}

void ChildWindows::bringContentForward() {
    showContent();
    frame_.setPanelText(1, status::Icerik.toString());
}

void ChildWindows::toggleContent() {
    if (frame_.isMenuChecked(menu::Icerik)) {
        if (content_) content_->close();
        frame_.setPanelText(1, status::Idle.toString());
        return;
    }
    bringContentForward();
}

void ChildWindows::focusContentView() {
    if (!content_ || content_->isHidden()) return;
    area_.setActiveSubWindow(content_);
    content_->shownPage().setFocus();
}

void ChildWindows::changeContentFontSize(int step) {
    if (!content_) return;
    const platform::MdiChild::Hold hold(*content_);
    contentDecisions_.ChangeFontSize(step);
    // Pressed by the keyboard, the toolbar has the keys that now move the page.
    const QWidget* focused = QApplication::focusWidget();
    if (focused && !area_.isAncestorOf(focused)) focusContentView();
}

platform::PageView* ChildWindows::shownPage() {
    return content_ ? &content_->shownPage() : nullptr;
}

void ChildWindows::previousHit() {
    if (!content_) return;
    const platform::MdiChild::Hold hold(*content_);
    hits_->UpperPos();
}

void ChildWindows::nextHit() {
    if (!content_) return;
    const platform::MdiChild::Hold hold(*content_);
    hits_->DownerPos();
}

void ChildWindows::restoreZoom() {
    points_ = std::clamp(looks_->keptPoints(NormalPoints), LeastPoints, MostPoints);
    zoom_ = static_cast<double>(points_) / NormalPoints;
}

void ChildWindows::stepZoom(int step) {
    auto* extra = qobject_cast<frm_IcerikN*>(area_.activeSubWindow());
    int& points = extra ? extra->zoomPoints : points_;
    points = std::clamp(step == 0 ? NormalPoints : points + step * PointStep, LeastPoints, MostPoints);
    const double factor = static_cast<double>(points) / NormalPoints;
    const auto zoom = [factor](auto& window) {
        for (WebView* page : {window.wb_Icerik, window.wb_Icerik2}) page->setZoom(factor);
    };
    if (extra) return zoom(*extra);
    looks_->keepPoints(points_);
    zoom_ = factor;
    if (content_) zoom(*content_);
}

void ChildWindows::openInNewWindow() {
    if (!content_ || !content_->wb_Icerik->isShown()) return;
    const platform::MdiChild::Hold hold(*content_);
    const WebView& page = *content_->wb_Icerik;
    // Reading a large page takes longer than anyone would wait, and some pages never answer.
    if (page.isLarge()) return openSameInNewWindow();
    // A page that is still loading has no text to copy yet.
    content_->wb_Icerik->waitUntilComplete();
    const auto html = content_->wb_Icerik->innerHtml();
    if (html)
        loadExtra({page.location(), copiedPage(*html.value, services_.folder),
                   copiedCaption(content_->windowTitle(), *html.value), frame_.fontSize(), shown_,
                   pageWords()});
    else if (html.outcome == platform::Outcome::TimedOut)
        openSameInNewWindow();
}

void ChildWindows::openSameInNewWindow() {
    const WebView& page = *content_->wb_Icerik;
    loadExtra({page.location(),
               {},
               copiedCaption(content_->windowTitle(), {}),
               frame_.fontSize(),
               shown_,
               pageWords(),
               &page});
}

void ChildWindows::printPageDirectly() {
    if (platform::PageView* page = shownPage()) printDirectly(*page, services_.printing, services_.dialogs);
}

void ChildWindows::printPageWithDialog() {
    if (platform::PageView* page = shownPage()) printWithDialog(*page, services_.printing, services_.dialogs);
}

void ChildWindows::cut() {
    platform::cutInFocus();
}

void ChildWindows::copy() {
    focusContentView();
    if (content_) content_->shownPage().copy();
}

// ---- Notebook, help, the end ----

void ChildWindows::showNotebook() {
    notebook_.show();
}

void ChildWindows::paste() {
    showNotebook();
    notebook_.pasteFromClipboard();
}

void ChildWindows::showHelp() {
    frm_yardim help(
        frame_, [this](browse::Tab tab) { showHelpTab(tab); }, area_.window());
    help_ = &help;
    help.exec();
    help_.clear();
    QApplication::processEvents();
}

// A click on one of its buttons is about what the window shows.
void ChildWindows::showHelpTab(browse::Tab tab) {
    if (!browse_ || browse_->isHidden() || browse_->isMinimized()) showBrowse();
    showTab(tab);
}

void ChildWindows::showAbout() {
    frmHakkinda(area_.window()).exec();
}

void ChildWindows::quit() {
    Q_EMIT quitWanted();
}

}  // namespace lirovan::shell
