// The search tab of frm_Arama: search box, options, buttons and result tree.
#pragma once

#include <QCheckBox>
#include <QElapsedTimer>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QString>
#include <QTreeView>
#include <QWidget>
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
#include "search/study/hit_list.h"
#include "search/ui/result_tree_model.h"
#include "search/ui/suggestion_list.h"

namespace lirovan::search {

class SearchTab : public QWidget, private RunHost {
    Q_OBJECT

  public:
    struct Parts {
        platform::MainFrame& frame;
        platform::Dialogs& dialogs;
        browse::ContentView& content;
        const data::Library& library;
        platform::AppFolder folder;
        browse::PageCommands& page;
        browse::SearchTabState& state;
        AskedSearches& asked;  ///< gets every search that came to its end
    };
    /// What `parts` refers to outlives the tab.
    explicit SearchTab(const Parts& parts, QWidget* parent = nullptr);

    /// Told the words of a marked page, once it is there.
    std::function<void(std::vector<RunWord> words)> wordsShown;

    /// The button "Bul", and Enter in the search box.
    void cmd_Bul_Click();
    /// The button "Dur"
    void cmdDur_Click();
    /// The button "Özel Kelimeleri Belirle": rebuilds the word-variant table.
    void cmd_KelimeKontOlustur_Click();

    /// mnu_Sirala_Click — searches the last query again, in another order.
    void mnu_Sirala_Click(ListOrder order);

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
    const ResultTree& results() const { return tree_; }
    /// Puts a search into the box and the check boxes, which does not run yet.
    void offer(const QString& query, const SearchOptions& options);
    /// Opens a node as a click on it does, and brings it into view.
    void open(ResultNode& node);
    /// The node of the topic that a summary's passage is from; null where the run has gone from the tree.
    const ResultNode* topicOfPassage(const browse::PageIdentity& summary, int passage);
    /// The run that the tree's current node belongs to, else the newest; null without any.
    platform::Result<std::shared_ptr<const RunHits>> currentRun();
    /// Number of the author in it that is the current node, or whose summary is; else -1.
    int currentAuthor() const;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QLayout* searchRow();
    QWidget* optionsFrame();
    QWidget* stopFrame();
    void setUpTree();
    void connectButtons();
    void showBoxMenu(const QPoint& place);
    void setOptions(const SearchOptions& options);

    SearchOptions options() const;
    /// True: cmdDur in place of cmd_Bul, with the focus. False: the reverse.
    void showStopButton(bool shown);
    /// The pointer "no drop" over the result tree and Frame1.
    void setNoDropPointer(bool set);
    /// Shows a run's root in the result tree, or moves the tree so that it is the first row.
    void bringIntoView(ResultNode& root, bool toTheTop);
    /// To where the tree stood before the last root was shown, which is gone again.
    void goBackInTree();
    /// Selects a book's node in the result tree, so that it follows the listing.
    void follow(ResultNode& book);
    /// Shows what was added to the result tree and lets events run.
    void showAndLetEventsRun();

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

    QElapsedTimer sinceRows_;
    qint64 nextRows_ = 0;  // milliseconds from then to the next rows
    Parts parts_;
    ResultTree tree_;
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

    ResultTreeModel results_;

    QLabel* Label1;
    QLineEdit* txt_Bul;
    QPushButton* cmd_Bul;
    QPushButton* cmdDur;
    QGroupBox* Frame1;
    QCheckBox* chk_BKD;
    QCheckBox* chk_TMK;
    QCheckBox* chk_HPI;
    QCheckBox* chk_FindWith;
    QCheckBox* chk_ClearResult;
    QCheckBox* chk_Ses;
    QPushButton* cmd_KelimeKontOlustur;
    QFrame* fraStopper;
    QPushButton* cmd_Stop;
    QTreeView* tvw_Kitaplar_Bul;
    SuggestionList* suggestions_;

    int placeBefore_ = 0;  ///< of the scroll bar, when the last run's root was shown
};

}  // namespace lirovan::search
