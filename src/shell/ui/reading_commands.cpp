// The commands of the reading desk: pages shown before, neighbours in book order, hits across topics.
#include <limits>
#include <utility>

#include "search/runs/found_topics.h"
#include "shell/ui/child_windows.h"

namespace lirovan::shell {

using namespace Qt::StringLiterals;
using browse::PageIdentity;

// ---- What is shown ----

void ChildWindows::aboutToShow(const PageIdentity& page) {
    shown_ = page;
    if (continueStrip_ && page.kind != PageIdentity::Kind::StartPage) continueStrip_->deleteLater();
    if (history_.isGoing()) return;
    notePlace();
    history_.shown(page);
}

void ChildWindows::notePlace() {
    if (!content_) return;
    const platform::MdiChild::Hold hold(*content_);
    history_.stands(content_->shownPage().place(false).value, hits_->current());
}

qsizetype ChildWindows::nodeOf(const PageIdentity& page) {
    if (!page.isOfTopic()) return -1;
    data::BookId book = page.book;
    if (page.kind == PageIdentity::Kind::MarkedPage) {
        const auto heading = library_.headingWithBook(page.topic, page.headingRow);
        if (heading && *heading) book = (**heading).book;
    }
    return browse::topicNode(browseWindow().decisions().nodes(), page.topic, book);
}

// ---- Back and forward ----

void ChildWindows::goInHistory(int step) {
    if (isBusy()) return;
    frame_.showPassingText({});
    notePlace();
    const bool went =
        history_.go(step, [this](const desk::History::Entry& entry) { return showAgain(entry); });
    if (!went) {
        frame_.showPassingText(step < 0 ? u"Daha önce gösterilen bir sayfa yok."_s
                                        : u"Geri dönülen bir sayfa yok."_s);
        return;
    }
    focusContentView();
}

bool ChildWindows::showAgain(const desk::History::Entry& entry) {
    if (!showPage(entry.page)) return false;
    if (!content_) return true;
    const platform::MdiChild::Hold hold(*content_);
    platform::PageView& page = content_->shownPage();
    page.waitUntilComplete();
    if (entry.page.kind == PageIdentity::Kind::MarkedPage && entry.hit > 0) hits_->goToStop(entry.hit);
    if (entry.place) page.goTo(*entry.place, false);
    return true;
}

bool ChildWindows::showPage(const PageIdentity& page) {
    if (page.isOfTopic()) {
        const auto text = library_.topic(page.topic);
        if (!text || !*text) return false;
    }
    switch (page.kind) {
        case PageIdentity::Kind::StartPage:
            aboutToShow(page);
            contentWindow();
            contentPort_->show();
            browse::showStartPage(*contentPort_, pageCommands_);
            return true;
        case PageIdentity::Kind::Topic:
            putInFront(browse::Tab::Books);
            return browseWindow().openTopic(page.topic, page.book);
        default:
            return showResult(page);
    }
}

bool ChildWindows::showResult(const PageIdentity& page) {
    search::ResultNode* node = searchTab_ ? search::nodeOf(searchTab_->results(), page) : nullptr;
    if (!node) return false;
    putInFront(browse::Tab::Search);
    const PageIdentity before = std::exchange(shown_, {});
    searchTab_->open(*node);
    if (shown_ == PageIdentity{}) shown_ = before;  // the page before stays
    return shown_ == page;
}

void ChildWindows::openPassage(const PageIdentity& summary, int passage) {
    if (isBusy() || summary.kind != PageIdentity::Kind::Summary) return;
    const search::ResultNode* node = searchTab_ ? searchTab_->topicOfPassage(summary, passage) : nullptr;
    if (!node || !showResult(search::pageOf(*node)))
        return frame_.showPassingText(u"Bu özetin araması artık sonuçlarda yok."_s);
    content_->bringForward();
}

// A marked page is read with the tab of the search, whose buttons step through it.
void ChildWindows::putInFront(browse::Tab tab) {
    if (browse_ && browse_->tab() != tab) browse_->decisions().selectTab(tab);
}

// ---- Neighbours ----

void ChildWindows::stepTopic(int step) {
    if (isBusy()) return;
    frame_.showPassingText({});
    const qsizetype from = shownNode();
    const qsizetype next =
        from < 0 && step < 0 ? -1 : browse::neighbourTopic(browseWindow().decisions().nodes(), from, step);
    if (next < 0)
        frame_.showPassingText(step < 0 ? u"Bundan önce konu yok."_s : u"Bundan sonra konu yok."_s);
    else
        browse_->openNode(next);
}

void ChildWindows::showInBookTree() {
    if (isBusy()) return;
    const qsizetype node = shownNode();
    if (node < 0) {
        frame_.showPassingText(u"Gösterilen sayfa bir konu değil."_s);
        return;
    }
    showBrowseTab(browse::Tab::Books);
    browse_->showNode(node);
}

void ChildWindows::stepHit(int step) {
    if (isBusy()) return;
    frame_.showPassingText({});
    if (content_ && pageCommands_.shown() == browse::ShownPage::MarkedPage) {
        bool canStep = false;
        {
            const platform::MdiChild::Hold hold(*content_);
            canStep = hits_->canStep(step);
        }
        if (canStep) return step > 0 ? nextHit() : previousHit();
    }
    search::ResultNode* from = searchTab_ ? search::nodeOf(searchTab_->results(), shown_) : nullptr;
    search::ResultNode* next = from         ? search::neighbourTopic(*from, step)
                               : searchTab_ ? search::outermostTopic(searchTab_->results(), step)
                                            : nullptr;
    if (!next) {
        frame_.showPassingText(!from      ? u"Gösterilecek arama sonucu yok."_s
                               : step > 0 ? u"Aramanın sonuna gelindi."_s
                                          : u"Aramanın başına gelindi."_s);
        return;
    }
    searchTab_->open(*next);
    if (step > 0 || !content_) return;
    const platform::MdiChild::Hold hold(*content_);
    hits_->goToStop(std::numeric_limits<qint32>::max());
}

}  // namespace lirovan::shell
