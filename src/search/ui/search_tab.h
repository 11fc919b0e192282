// The search tab of frm_Arama: search box, options, buttons and result tree.
#pragma once

#include <QCheckBox>
#include <QElapsedTimer>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QWidget>
#include <memory>

#include "search/search_window.h"
#include "search/ui/result_tree_model.h"
#include "search/ui/suggestion_list.h"

namespace lirovan::search {

class SearchTab : public QWidget, private SearchView {
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
        /// Told of every search that came to its end.
        std::function<void(const QString& query, const SearchOptions& options)> searched = {};
    };
    /// What `parts` refers to outlives the tab.
    explicit SearchTab(const Parts& parts, QWidget* parent = nullptr);

    /// What the main window's sort menus and its closing need.
    SearchWindow& decisions() { return decisions_; }
    const ResultTree& results() const { return tree_; }
    /// Puts a search into the box and the check boxes, which does not run yet.
    void offer(const QString& query, const SearchOptions& options);
    /// Opens a node as a click on it does, and brings it into view.
    void open(ResultNode& node);
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

    QString searchText() const override;
    void setSearchText(const QString& text) override;
    SearchOptions options() const override;
    void setWholeWord(bool checked) override;
    void setAllWords(bool checked) override;
    void setTogether(bool checked) override;
    void setOptionsEnabled(bool enabled) override;
    void showStopButton(bool shown) override;
    void showSummaryStop(bool shown) override;
    void setNoDropPointer(bool set) override;
    void focusSearchBox() override;
    void bringIntoView(ResultNode& root, bool toTheTop) override;
    void goBackInTree() override;
    void follow(ResultNode& book) override;
    void letEventsRun() override;

    QElapsedTimer sinceRows_;
    qint64 nextRows_ = 0;  // milliseconds from then to the next rows
    ResultTree tree_;
    SearchWindow decisions_;
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
