// The decisions of the search tab: starting, stopping and sorting searches, clicks in the result tree, the
// summary, the rebuilding of the word variants.
#pragma once

#include <QElapsedTimer>
#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "browse/page_toolbar.h"
#include "browse/search_tab_state.h"
#include "browse/window_ports.h"
#include "data/library.h"
#include "platform/core/dialogs.h"
#include "platform/core/main_frame.h"
#include "platform/core/paths.h"
#include "search/runs/result_tree.h"
#include "search/runs/run_words.h"
#include "search/runs/search_engine.h"
#include "search/search_view.h"
#include "search/study/hit_list.h"

namespace lirovan::search {

class SearchWindow : private RunHost {
  public:
    struct Parts {
        platform::MainFrame& frame;
        platform::Dialogs& dialogs;
        SearchView& view;
        browse::ContentView& content;  ///< frm_Icerik
        const data::Library& library;
        platform::AppFolder folder;
        browse::PageCommands& page;     ///< of frm_Icerik
        browse::SearchTabState& state;  ///< shared with the window that hosts the tab
        ResultTree& tree;               ///< what tvw_Kitaplar_Bul shows
        std::function<void(const QString& query, const SearchOptions& options)> searched = {};
    };
    explicit SearchWindow(Parts parts);
    /// Told the words of a marked page, once it is there.
    std::function<void(std::vector<RunWord> words)> wordsShown;

    /// The button "Bul", and Enter in the search box.
    void cmd_Bul_Click();
    /// The button "Dur"
    void cmdDur_Click();
    /// The button "Özet Alma İşlemini Durdur"
    void cmd_Stop_Click() { OzetDurdur_ = true; }
    /// The button "Özel Kelimeleri Belirle": rebuilds the word-variant table.
    void cmd_KelimeKontOlustur_Click();
    // "Tüm Kelimeleri İçeren Konular" and "Tümünü Birlikte Ara" exclude each other.
    void chk_HPI_Click();
    void chk_FindWith_Click();

    /// mnu_Sirala_Click — searches the last query again, in the order `key`: "Kitap", "Konu" or "Oran".
    void mnu_Sirala_Click(QStringView key);

    /// A click on a node of the result tree: the highlighted page of a topic, a summary, or the start page.
    void NodeClick(ResultNode& node);
    /// The run of a node with its hits; null without node or run.
    platform::Result<std::shared_ptr<const RunHits>> hitsOf(const ResultNode* node);
    /// The marked page of a hit of a run, which need not be in the tree any more. Gives the number of the
    /// hit's button, once the page is there; nothing where the topic or the hit is gone.
    std::optional<qint32> openHit(const SearchRun& run, const HitPlace& hit);
    /// A mouse button went down on the result tree, or a key opened a node of it.
    void resultTreePressed(bool rightButton);

    /// A search, a summary or a rebuild is under way, or a page is being loaded.
    bool isRunning() const { return parts_.state.running || showing_; }
    /// Ends whatever runs at its next step; for the main window that is to close.
    void stop();

    const SearchEngine& engine() const { return engine_; }
    const QString& SonSorgu() const { return SonSorgu_; }

  private:
    class Busy;  // what holds while something runs

    bool acceptSingleLetter() override;
    void runStarted(ResultNode& root) override;
    void authorStarted(qsizetype topics) override;
    void topicDone(qsizetype done, ResultNode* book) override;
    bool goOn() override;

    /// Shows a message of the search; then the focus is in the search box, where the next step is taken.
    platform::Answer tell(const platform::Message& message);
    /// Whether the run came to its end, found something or not, or was stopped.
    bool listele(const QString& query, ListOrder order);
    void closeRun(const SearchOutcome& result);
    /// `hit`: its position is 0 where none is asked for.
    std::optional<qint32> showTopic(const HitPlace& hit, const SearchRun& run);
    void showPage(const platform::Result<QByteArray>& written, const QString& caption);
    void OzetAl(int group, const SearchRun* run);
    void beginSummary();
    void endSummary();
    void letEventsRun();
    void followNewestBook();

    Parts parts_;
    SearchEngine engine_;
    QString SonSorgu_;
    bool AramaDurdur_ = false;
    bool OzetDurdur_ = false;
    bool closing_ = false;  // stop() ended what runs
    bool showing_ = false;  // a page is being loaded, which lets events run

    QElapsedTimer sinceEvents_;
    qint64 eventInterval_ = 0;
    int progress_ = 0;
    ResultNode* root_ = nullptr;      // of the run under way
    ResultNode* followed_ = nullptr;  // the newest book, where the tree does not show it yet
};

}  // namespace lirovan::search
