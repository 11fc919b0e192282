#include "search/search_window.h"

#include <algorithm>
#include <cmath>

#include "browse/browse_window.h"
#include "browse/page_file.h"
#include "search/matching/search_query.h"
#include "search/matching/variant_table.h"
#include "search/pages/hit_positions.h"
#include "search/pages/result_page.h"
#include "search/runs/found_topics.h"
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

constexpr QStringView ProgressText = u"Araştırılıyor...";

// The number that stands before the reason when the page file of a summary cannot be written.
constexpr int PageNotWritten = 75;

platform::Message failure(const platform::Error& error) {
    return platform::errorMessage(error.message, u"Hata"_s);
}

// Thousands of characters, halves to the even side.
int thousands(qsizetype characters) {
    return static_cast<int>(std::nearbyint(static_cast<double>(characters) / 1000.0));
}

}  // namespace

// Holds the tab and the main window's commands while something runs, in every way out.
class SearchWindow::Busy {
  public:
    explicit Busy(SearchWindow& window) : window_(window) {
        window_.parts_.state.running = true;
        window_.parts_.frame.setCommandsLocked(true);
        window_.parts_.view.setOptionsEnabled(false);
        window_.closing_ = false;
        window_.root_ = window_.followed_ = nullptr;
        window_.sinceEvents_.start();
        window_.eventInterval_ = EventInterval;
    }
    ~Busy() {
        window_.parts_.view.setOptionsEnabled(true);
        window_.parts_.frame.setCommandsLocked(false);
        window_.parts_.state.running = false;
    }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

  private:
    SearchWindow& window_;
};

SearchWindow::SearchWindow(Parts parts) : parts_(std::move(parts)), engine_(parts_.library, parts_.tree) {
    engine_.keepTexts();
}

void SearchWindow::cmd_Bul_Click() {
    if (isRunning()) return;
    const QString typed = parts_.view.searchText();
    if (typed.isEmpty()) {
        tell(platform::errorMessage(u"Aranacak kelime girmediniz!"_s, u"Arama Hatası"_s));
        return;
    }
    parts_.page.setWithheld(true);
    parts_.view.showStopButton(true);
    AramaDurdur_ = false;
    parts_.state.showPanel2 = true;
    parts_.state.showPanel3 = false;
    parts_.frame.setPanelVisible(2, false);
    parts_.frame.setPanelVisible(3, false);
    SonSorgu_ = text::trimBlanks(typed).toString();
    if (!listele(SonSorgu_, ListOrder::Kitap)) parts_.state.showPanel2 = false;
    parts_.page.setWithheld(false);
}

Answer SearchWindow::tell(const platform::Message& message) {
    const Answer answer = parts_.dialogs.show(message);
    parts_.view.focusSearchBox();
    return answer;
}

void SearchWindow::cmdDur_Click() {
    AramaDurdur_ = true;
    parts_.view.showStopButton(false);
}

void SearchWindow::chk_HPI_Click() {
    if (parts_.view.options().allWords) parts_.view.setTogether(false);
}

void SearchWindow::chk_FindWith_Click() {
    if (parts_.view.options().together) parts_.view.setAllWords(false);
}

void SearchWindow::stop() {
    closing_ = true;
    AramaDurdur_ = true;
    OzetDurdur_ = true;
}

void SearchWindow::mnu_Sirala_Click(QStringView key) {
    if (isRunning()) return;
    parts_.view.showStopButton(true);
    AramaDurdur_ = false;
    const ListOrder order = key == u"Kitap"  ? ListOrder::Kitap
                            : key == u"Oran" ? ListOrder::Oran
                                             : ListOrder::Konu;
    if (listele(SonSorgu_, order)) parts_.state.showPanel2 = true;
    parts_.state.showPanel3 = false;
    parts_.frame.setPanelVisible(3, false);
}

bool SearchWindow::listele(const QString& query, ListOrder order) {
    bool closed = false;
    {
        const Busy busy(*this);
        parts_.frame.setToolText(ProgressText.toString());
        if (!text::trimBlanks(query).isEmpty()) {
            parts_.frame.setProgressVisible(true);
            parts_.frame.setToolTextVisible(true);
            parts_.view.setNoDropPointer(true);
        }
        const Result<SearchOutcome> result = engine_.run(
            {query, parts_.view.options(), order, parts_.frame.selectedBooks(), parts_.view.searchText()},
            *this);
        closed = result && result->end == SearchOutcome::End::Listed;
        if (closed && parts_.searched) parts_.searched(query, parts_.view.options());
        if (closed || !result) {
            followNewestBook();
            parts_.view.letEventsRun();
            // Without a topic the run is gone again.
            const ResultTree& tree = parts_.tree;
            if (root_ && tree.runCount() > 0 && &tree.run(tree.runCount() - 1) == root_)
                parts_.view.bringIntoView(*root_, true);
            else if (root_)
                parts_.view.goBackInTree();
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
            parts_.view.setSearchText(withoutSingleLetters(parts_.view.searchText()));
        }
        parts_.frame.setProgressVisible(false);
        parts_.frame.setToolTextVisible(false);
        parts_.view.setNoDropPointer(false);
    }
    parts_.view.showStopButton(false);
    return closed;
}

void SearchWindow::closeRun(const SearchOutcome& result) {
    parts_.frame.setPanelVisible(2, true);
    if (result.listed > 0) {
        parts_.frame.setPanelText(
            2, u"Arama Sonucu: "_s + QString::number(result.listed) + u" başlık bulundu."_s);
        return;
    }
    const QString nothing = u"Gösterilecek başlık bulunamadı."_s;
    parts_.frame.setPanelText(2, nothing);
    parts_.state.showPanel2 = false;
    parts_.frame.setPanelVisible(2, false);
    // The third panel still holds the last page's count, which has nothing to do with this.
    parts_.frame.setPanelText(3, nothing);
    parts_.frame.setPanelVisible(3, true);
    // A program that is closing does not wait for an answer.
    if (!closing_) tell(platform::noticeMessage(nothing, u"Aranan Kelime Bulunamadı"_s));
}

bool SearchWindow::acceptSingleLetter() {
    platform::Message message;
    message.text =
        u"Aranacak Kelime(ler) alanına harf girdiniz.\r\n"
        "Arama işlemi Yalnız Tüm Kelime özelliği aktif olarak yapılacaktır.\r\n"
        "Devam etmek için 'OK/Tamam', işlemi durdurmak ve harfi silmek için 'Cancel/İptal' "
        "düğmesini seçin."_s;
    message.title = u"Tek Harf Arama"_s;
    message.icon = platform::Icon::Information;
    message.buttons = platform::Buttons::OkCancel;
    if (tell(message) != Answer::Ok) return false;
    parts_.view.setWholeWord(true);
    parts_.view.showStopButton(true);  // with the focus again
    return true;
}

void SearchWindow::runStarted(ResultNode& root) {
    root_ = &root;
    parts_.view.bringIntoView(root, false);
}

void SearchWindow::authorStarted(qsizetype topics) {
    progress_ = 1;
    parts_.frame.setProgressMaximum(static_cast<int>(topics) + 1);
    parts_.frame.setProgressValue(progress_);
}

void SearchWindow::topicDone(qsizetype done, ResultNode* book) {
    progress_ = static_cast<int>(done) + 1;
    if (book) followed_ = book;
}

bool SearchWindow::goOn() {
    if (!AramaDurdur_) letEventsRun();
    return !AramaDurdur_;
}

void SearchWindow::letEventsRun() {
    if (sinceEvents_.elapsed() < eventInterval_) return;
    sinceEvents_.restart();
    parts_.frame.setProgressValue(progress_);
    followNewestBook();
    parts_.view.letEventsRun();
    eventInterval_ = std::clamp(sinceEvents_.restart() * ShareOfEvents, EventInterval, LongestInterval);
}

void SearchWindow::followNewestBook() {
    if (followed_) parts_.view.follow(*std::exchange(followed_, nullptr));
}

void SearchWindow::cmd_KelimeKontOlustur_Click() {
    if (isRunning()) return;
    const Busy busy(*this);
    AramaDurdur_ = false;
    parts_.frame.setBusyPointer(true);
    progress_ = 0;
    const Result<qint64> rows = rebuildVariantTable(parts_.library, [this] { return goOn(); });
    parts_.frame.setBusyPointer(false);
    if (closing_) return;
    if (rows)
        parts_.frame.showPassingText(formatCount(*rows) + u" özel kelime belirlendi."_s);
    else
        tell(failure(rows.error()));
}

void SearchWindow::resultTreePressed(bool rightButton) {
    if (isRunning()) return;
    if (rightButton) {
        parts_.frame.popUpMenu(u"mnu_listele");
        return;
    }
    parts_.state.showPanel3 = false;
    parts_.frame.setPanelVisible(3, false);
}

void SearchWindow::NodeClick(ResultNode& node) {
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

Result<std::shared_ptr<const RunHits>> SearchWindow::hitsOf(const ResultNode* node) {
    using Found = std::shared_ptr<const RunHits>;
    const SearchRun* run = node ? engine_.stores().find(static_cast<int>(node->root().tagNumber())) : nullptr;
    if (!run) return Found();
    engine_.outline().refresh();
    Result<HitList> list = hitListOf(parts_.library, engine_.outline(), *run);
    if (!list) return list.error();
    return Found(std::make_shared<RunHits>(RunHits{*run, node->root().text, std::move(*list)}));
}

std::optional<qint32> SearchWindow::openHit(const SearchRun& run, const HitPlace& hit) {
    if (isRunning()) return std::nullopt;
    return showTopic(hit, run);
}

std::optional<qint32> SearchWindow::showTopic(const HitPlace& hit, const SearchRun& run) {
    platform::MainFrame& frame = parts_.frame;
    frame.FontSize(browse::TopicFontSize);
    frame.setProgressValue(1);

    MarkingProgress progress;
    progress.wordStarted = [&](QStringView word, qsizetype textLength) {
        frame.setToolText(u'\'' + text::trimBlanks(word).toString() + u"' Taranıyor..."_s);
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
    frame.setPanelText(3, u"Seçili başlıkta bulunan kelime sayısı: "_s + QString::number(hits));
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

void SearchWindow::showPage(const Result<QByteArray>& written, const QString& caption) {
    parts_.content.setCaption(caption);
    browse::showPageFile(parts_.content, u"file:\\"_s + parts_.folder.pageText(browse::PageFile), written);
}

void SearchWindow::OzetAl(int group, const SearchRun* run) {
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
        parts_.view.showSummaryStop(false);
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

void SearchWindow::beginSummary() {
    platform::MainFrame& frame = parts_.frame;
    parts_.view.letEventsRun();
    parts_.view.showSummaryStop(true);
    frame.setBusyPointer(true);
    parts_.page.setWithheld(true);
    frame.setToolText(u"Özetleniyor..."_s);
    frame.setProgressVisible(true);
    frame.setToolTextWidth(2050_tw);
    frame.setToolTextVisible(true);
    progress_ = 1;
    frame.setProgressValue(progress_);
}

void SearchWindow::endSummary() {
    platform::MainFrame& frame = parts_.frame;
    OzetDurdur_ = false;
    parts_.view.showSummaryStop(false);
    frame.setProgressValue(1);
    frame.setProgressVisible(false);
    frame.setToolTextVisible(false);
    frame.setToolTextWidth(1125_tw);
    frame.setToolText(ProgressText.toString());
    parts_.page.setWithheld(false);
    frame.setBusyPointer(false);
}

}  // namespace lirovan::search
