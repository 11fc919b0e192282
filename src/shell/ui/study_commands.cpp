// The windows about the hits of a run.
#include "platform/ui/icons.h"
#include "platform/ui/mdi_child.h"
#include "search/ui/context_window.h"
#include "search/ui/distribution_window.h"
#include "search/ui/summary_file.h"
#include "shell/ui/child_windows.h"

namespace lirovan::shell {

using namespace Qt::StringLiterals;

namespace {
// Of the frame's height: above them the page stays in view.
constexpr double WindowShare = 0.45;
}  // namespace

std::shared_ptr<const search::RunHits> ChildWindows::currentRun() {
    std::shared_ptr<const search::RunHits> run;
    if (searchTab_) {
        auto found = searchTab_->currentRun();
        if (!found) {
            services_.dialogs.show(platform::errorMessage(found.error().message, u"Hata"_s));
            return nullptr;
        }
        run = *found;
    }
    if (!run || run->list.hits.empty()) {
        services_.dialogs.show(
            platform::noticeMessage(u"Önce arama yapın: gösterilecek isabet yok."_s, u"Arama"_s));
        return nullptr;
    }
    return run;
}

void ChildWindows::showContexts() {
    if (isBusy()) return;
    const auto run = currentRun();
    if (!run) return;
    auto* window = new search::ContextWindow(library_, services_.dialogs, run);
    connect(window, &search::ContextWindow::hitWanted, this,
            [this, run](const search::HitPlace& hit) { openHit(run->run, hit); });
    showBeside(window, u"contextFrame"_s);
}

void ChildWindows::showDistribution() {
    if (isBusy()) return;
    const auto run = currentRun();
    if (!run) return;
    auto* window = new search::DistributionWindow(library_, services_.dialogs, run);
    connect(window, &search::DistributionWindow::hitWanted, this,
            [this, run](const search::HitPlace& hit) { openHit(run->run, hit); });
    showBeside(window, u"distributionFrame"_s);
}

void ChildWindows::saveSummary() {
    if (isBusy()) return;
    if (const auto run = currentRun())
        search::saveSummaryOf(library_, run, searchTab_->currentAuthor(), services_.dialogs, area_.window());
}

void ChildWindows::openHit(const search::SearchRun& run, const search::HitPlace& hit) {
    if (isBusy()) return;
    browseWindow();
    const std::optional<qint32> anchor = searchTab_->openHit(run, hit);
    if (!anchor || !content_) return;
    const platform::MdiChild::Hold hold(*content_);
    hits_->goToButton(*anchor);
}

void ChildWindows::showBeside(QWidget* window, const QString& name) {
    auto* frame = new platform::MdiChild(name);
    frame->setWidget(window);
    frame->setWindowIcon(platform::icon(platform::button::Arama));
    area_.addSubWindow(frame);
    const QRect room = area_.contentsRect();
    const int left = browse_ && browse_->isVisible() && !browse_->isMinimized()
                         ? browse_->geometry().right() + 1
                         : room.left();
    const int height = static_cast<int>(room.height() * WindowShare);
    frame->setGeometry(left, room.bottom() + 1 - height, room.right() + 1 - left, height);
    platform::keepInside(*frame);
    frame->bringForward();
    window->setFocus();
}

}  // namespace lirovan::shell
