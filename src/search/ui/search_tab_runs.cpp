// What the search tab does: starting, stopping and sorting searches, clicks in the result tree, the summary,
// the rebuilding of the word variants.
#include "search/ui/search_tab.h"

#include <algorithm>
#include <cmath>

#include "browse/browse_window.h"
#include "browse/page_file.h"
#include "search/matching/search_query.h"
#include "search/matching/variant_table.h"
#include "search/pages/hit_positions.h"
#include "search/pages/result_page.h"
#include "search/runs/found_topics.h"
#include "search/search_messages.h"
#include "text/blanks.h"

namespace lirovan::search {

using namespace Qt::StringLiterals;
using platform::operator""_tw;
using platform::Answer;
using platform::Result;
namespace button = platform::button;

namespace {

// Events are let run at fixed points, of which there are hundreds of thousands; really, this often
// (milliseconds). Where handling them takes long, less often, so that the search has most of the time, but
// never so seldom that a reader would notice.
constexpr qint64 EventInterval = 8, LongestInterval = 35, ShareOfEvents = 6;

// The number that stands before the reason when the page file of a summary cannot be written.
constexpr int PageNotWritten = 75;

// Thousands of characters, halves to the even side.
int thousands(qsizetype characters) {
    return static_cast<int>(std::nearbyint(static_cast<double>(characters) / 1000.0));
}

}  // namespace

// Holds the tab and the main window's commands while something runs, in every way out.
class SearchTab::Busy {
  public:
    explicit Busy(SearchTab& window) : window_(window) {
        window_.parts_.state.running = true;
        window_.parts_.frame.setCommandsLocked(true);
        window_.Frame1->setEnabled(false);
        window_.closing_ = false;
        window_.root_ = window_.followed_ = nullptr;
        window_.sinceEvents_.start();
        window_.eventInterval_ = EventInterval;
    }
    ~Busy() {
        window_.Frame1->setEnabled(true);
        window_.parts_.frame.setCommandsLocked(false);
        window_.parts_.state.running = false;
    }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

  private:
    SearchTab& window_;
};

void SearchTab::cmd_Bul_Click() {
    if (isRunning()) return;
    const QString typed = txt_Bul->text();
    if (typed.isEmpty()) {
        tell(nothingTyped());
        return;
    }
    parts_.page.setWithheld(true);
    showStopButton(true);
    AramaDurdur_ = false;
    parts_.state.showPanel2 = true;
    parts_.state.showPanel3 = false;
    parts_.frame.setPanelVisible(2, false);
    parts_.frame.setPanelVisible(3, false);
    SonSorgu_ = text::trimBlanks(typed).toString();
    if (!listele(SonSorgu_, ListOrder::Kitap)) parts_.state.showPanel2 = false;
    parts_.page.setWithheld(false);
}

Answer SearchTab::tell(const platform::Message& message) {
    const Answer answer = parts_.dialogs.show(message);
    txt_Bul->setFocus();
    return answer;
}

void SearchTab::cmdDur_Click() {
    AramaDurdur_ = true;
    showStopButton(false);
}

void SearchTab::stop() {
    closing_ = true;
    AramaDurdur_ = true;
    OzetDurdur_ = true;
}

void SearchTab::mnu_Sirala_Click(ListOrder order) {
    if (isRunning()) return;
    showStopButton(true);
    AramaDurdur_ = false;
    if (listele(SonSorgu_, order)) parts_.state.showPanel2 = true;
    parts_.state.showPanel3 = false;
    parts_.frame.setPanelVisible(3, false);
}

bool SearchTab::listele(const QString& query, ListOrder order) {
    bool closed = false;
    {
        const Busy busy(*this);
        parts_.frame.setToolText(ProgressText.toString());
        if (!text::trimBlanks(query).isEmpty()) {
            parts_.frame.setProgressVisible(true);
            parts_.frame.setToolTextVisible(true);
            setNoDropPointer(true);
        }
        const Result<SearchOutcome> result =
            engine_.run({query, options(), order, parts_.frame.selectedBooks(), txt_Bul->text()}, *this);
        closed = result && result->end == SearchOutcome::End::Listed;
        if (closed) parts_.asked.add({query, options()});
        if (closed || !result) {
            followNewestBook();
            showAndLetEventsRun();
            // Without a topic the run is gone again.
            if (root_ && tree_.runCount() > 0 && &tree_.run(tree_.runCount() - 1) == root_)
                bringIntoView(*root_, true);
            else if (root_)
                goBackInTree();
        }
        if (!result) {
            // Its text is about an earlier run.
            parts_.state.showPanel2 = false;
            parts_.frame.setPanelVisible(2, false);
            if (!closing_) tell(failure(result.error()));
        } else if (closed) {
            closeRun(*result);
        } else if (result->end == SearchOutcome::End::Cancelled) {
            // From the query too: sorting it again would bring the letters back.
            SonSorgu_ = withoutSingleLetters(SonSorgu_);
            txt_Bul->setText(withoutSingleLetters(txt_Bul->text()));
        }
        parts_.frame.setProgressVisible(false);
        parts_.frame.setToolTextVisible(false);
        setNoDropPointer(false);
    }
    showStopButton(false);
    return closed;
}

void SearchTab::closeRun(const SearchOutcome& result) {
    parts_.frame.setPanelVisible(2, true);
    if (result.listed > 0) {
        parts_.frame.setPanelText(2, foundText(result.listed));
        return;
    }
    parts_.frame.setPanelText(2, NothingFound.toString());
    parts_.state.showPanel2 = false;
    parts_.frame.setPanelVisible(2, false);
    // The third panel still holds the last page's count, which has nothing to do with this.
    parts_.frame.setPanelText(3, NothingFound.toString());
    parts_.frame.setPanelVisible(3, true);
    // A program that is closing does not wait for an answer.
    if (!closing_) tell(nothingFound());
}

bool SearchTab::acceptSingleLetter() {
    if (tell(singleLetterTyped()) != Answer::Ok) return false;
    chk_TMK->setChecked(true);
    showStopButton(true);  // with the focus again
    return true;
}

void SearchTab::runStarted(ResultNode& root) {
    root_ = &root;
    bringIntoView(root, false);
}

void SearchTab::authorStarted(qsizetype topics) {
    progress_ = 1;
    parts_.frame.setProgressMaximum(static_cast<int>(topics) + 1);
    parts_.frame.setProgressValue(progress_);
}

void SearchTab::topicDone(qsizetype done, ResultNode* book) {
    progress_ = static_cast<int>(done) + 1;
    if (book) followed_ = book;
}

bool SearchTab::goOn() {
    if (!AramaDurdur_) letEventsRun();
    return !AramaDurdur_;
}

void SearchTab::letEventsRun() {
    if (sinceEvents_.elapsed() < eventInterval_) return;
    sinceEvents_.restart();
    parts_.frame.setProgressValue(progress_);
    followNewestBook();
    showAndLetEventsRun();
    eventInterval_ = std::clamp(sinceEvents_.restart() * ShareOfEvents, EventInterval, LongestInterval);
}

void SearchTab::followNewestBook() {
    if (followed_) follow(*std::exchange(followed_, nullptr));
}

void SearchTab::cmd_KelimeKontOlustur_Click() {
    if (isRunning()) return;
    const Busy busy(*this);
    AramaDurdur_ = false;
    parts_.frame.setBusyPointer(true);
    progress_ = 0;
    const Result<qint64> rows = rebuildVariantTable(parts_.library, [this] { return goOn(); });
    parts_.frame.setBusyPointer(false);
    if (closing_) return;
    if (rows)
        parts_.frame.showPassingText(variantsText(*rows));
    else
        tell(failure(rows.error()));
}

void SearchTab::resultTreePressed(bool rightButton) {
    if (isRunning()) return;
    if (rightButton) {
        parts_.frame.popUpMenu(u"mnu_listele");
        return;
    }
    parts_.state.showPanel3 = false;
    parts_.frame.setPanelVisible(3, false);
}

void SearchTab::NodeClick(ResultNode& node) {
    if (isRunning()) return;
    const SearchRun* run = engine_.stores().find(static_cast<int>(node.root().tagNumber()));
    switch (node.kind) {
        case NodeKind::Summary:
            OzetAl(pageOf(node).group, run);
            break;
        case NodeKind::Topic:
            if (run) showTopic({{node.tagNumber()}, node.headingRow, 0}, *run);
            break;
        default:
            parts_.content.aboutToShow({});
            browse::showStartPage(parts_.content, parts_.page);
    }
}

Result<std::shared_ptr<const RunHits>> SearchTab::hitsOf(const ResultNode* node) {
    using Found = std::shared_ptr<const RunHits>;
    const SearchRun* run = node ? engine_.stores().find(static_cast<int>(node->root().tagNumber())) : nullptr;
    if (!run) return Found();
    engine_.outline().refresh();
    Result<HitList> list = hitListOf(parts_.library, engine_.outline(), *run);
    if (!list) return list.error();
    return Found(std::make_shared<RunHits>(RunHits{*run, node->root().text, std::move(*list)}));
}

std::optional<qint32> SearchTab::openHit(const SearchRun& run, const HitPlace& hit) {
    if (isRunning()) return std::nullopt;
    return showTopic(hit, run);
}

std::optional<qint32> SearchTab::showTopic(const HitPlace& hit, const SearchRun& run) {
    platform::MainFrame& frame = parts_.frame;
    frame.FontSize(browse::TopicFontSize);
    frame.setProgressValue(1);

    MarkingProgress progress;
    progress.wordStarted = [&](QStringView word, qsizetype textLength) {
        frame.setToolText(scanningText(word));
        frame.setProgressMaximum(thousands(textLength) + 15);
    };
    int shown = 0;
    progress.hitMarked = [&](qsizetype position) {
        const int value = thousands(position) + 1;
        if (value != std::exchange(shown, value)) frame.setProgressValue(value);
    };
    const auto heading = hit.headingRow != 0 ? std::optional(hit.headingRow) : std::nullopt;
    const auto page =
        highlightedPage(parts_.library, parts_.folder, hit.topic, heading, run, progress, hit.position);
    frame.setToolText(ProgressText.toString());

    const qint32 hits = page ? page->marks.hits : 0;
    frame.setPanelText(3, hitsText(hits));
    frame.setPanelVisible(3, true);
    // The topic may be gone since the search; then the page stays as it is.
    if (!page) return std::nullopt;

    parts_.content.aboutToShow(
        {browse::PageIdentity::Kind::MarkedPage, hit.topic, {}, hit.headingRow, run.AramaNo, 0});
    parts_.state.showPanel3 = true;
    parts_.page.showPageCommands(browse::ShownPage::Topic);
    parts_.content.show();
    browse::showGeneratedPage(parts_.content);
    const Result<QByteArray> written = browse::writePage(parts_.folder, page->page);
    showPage(written, page->heading.isEmpty() ? browse::ContentCaption.toString()
                                              : browse::contentCaption(page->heading));
    // The hits can be found once the page is there.
    showing_ = true;
    parts_.content.wb_Icerik().waitUntilComplete();
    parts_.page.showPageCommands(browse::ShownPage::MarkedPage);
    if (wordsShown) wordsShown(runWords(run, page->marks));
    frame.SetPosZero();
    // Without a file, what stands there is the page before.
    parts_.page.setHitButton(
        button::Down,
        written && parts_.content.wb_Icerik().hasElement(HitAnchor.toString() + u'0').valueOr(false));
    showing_ = false;
    return page->wanted;
}

void SearchTab::showPage(const Result<QByteArray>& written, const QString& caption) {
    parts_.content.setCaption(caption);
    browse::showPageFile(parts_.content, u"file:\\"_s + parts_.folder.pageText(browse::PageFile), written);
}

void SearchTab::OzetAl(int group, const SearchRun* run) {
    const Busy busy(*this);
    OzetDurdur_ = false;
    beginSummary();
    const Result<QString> page = summaryPage(
        parts_.library, run, group,
        [this](qsizetype hits) { parts_.frame.setProgressMaximum(static_cast<int>(hits) + 5); },
        [this] {
            ++progress_;
            letEventsRun();
            return !OzetDurdur_;
        });
    const Result<QByteArray> written =
        page ? browse::writePage(parts_.folder, *page) : Result<QByteArray>(page.error());
    if (written) {
        parts_.content.aboutToShow(
            {.kind = browse::PageIdentity::Kind::Summary, .run = run->AramaNo, .group = group});
        parts_.content.show();
        fraStopper->setVisible(false);
        parts_.page.showPageCommands(browse::ShownPage::Summary);
        // The passages' type grows and shrinks from this size only.
        parts_.frame.FontSize(browse::TopicFontSize);
        showPage(written, browse::contentCaption(u"ÖZET"_s));
        browse::showGeneratedPage(parts_.content);
    } else if (!closing_) {
        parts_.dialogs.show(
            failure(page ? summaryError(PageNotWritten, written.error().message) : page.error()));
    }
    endSummary();
}

const ResultNode* SearchTab::topicOfPassage(const browse::PageIdentity& summary, int passage) {
    if (isRunning()) return nullptr;
    const Busy busy(*this);
    OzetDurdur_ = false;
    ResultNode* node = nodeOf(tree_, summary);
    const SearchRun* run = engine_.stores().find(summary.run);
    // A summary of tens of megabytes takes seconds.
    const auto goOn = [this] {
        letEventsRun();
        return !OzetDurdur_;
    };
    const auto topic = node && run
                           ? search::topicOfPassage(parts_.library, *run, summary.group, passage, goOn)
                           : std::optional<data::TopicId>();
    if (!topic) return nullptr;
    do node = neighbourTopic(*node, 1);
    while (node && node->tagNumber() != topic->value);
    return node;
}

void SearchTab::beginSummary() {
    platform::MainFrame& frame = parts_.frame;
    showAndLetEventsRun();
    fraStopper->setVisible(true);
    frame.setBusyPointer(true);
    parts_.page.setWithheld(true);
    frame.setToolText(u"Özetleniyor..."_s);
    frame.setProgressVisible(true);
    frame.setToolTextWidth(2050_tw);
    frame.setToolTextVisible(true);
    progress_ = 1;
    frame.setProgressValue(progress_);
}

void SearchTab::endSummary() {
    platform::MainFrame& frame = parts_.frame;
    OzetDurdur_ = false;
    fraStopper->setVisible(false);
    frame.setProgressValue(1);
    frame.setProgressVisible(false);
    frame.setToolTextVisible(false);
    frame.setToolTextWidth(1125_tw);
    frame.setToolText(ProgressText.toString());
    parts_.page.setWithheld(false);
    frame.setBusyPointer(false);
}

}  // namespace lirovan::search
