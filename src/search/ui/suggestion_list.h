// The list below the search box. The keys stay in the box: arrows choose, Enter takes what is chosen, Esc
// closes; with nothing chosen Enter is the box's own. While one types it offers words and queries; Down in
// an empty box, and Alt+Down in any, lists the last searches with their options.
#pragma once

#include <QLineEdit>
#include <QListWidget>
#include <QTimer>
#include <atomic>
#include <functional>
#include <memory>
#include <optional>

#include "browse/ui/background_work.h"
#include "search/matching/library_changes.h"
#include "search/matching/suggestions.h"

namespace lirovan::search {

class SuggestionList : public QListWidget {
    Q_OBJECT

  public:
    /// Lies over `parent`, in which the box is; what it refers to outlives it.
    SuggestionList(QLineEdit& box, const data::Library& library, const AskedSearches& asked, QWidget* parent);

    /// While true, the library is not read for the words: a search has the machine to itself.
    std::function<bool()> isSearching;
    /// Until something is typed again.
    void close();
    /// Ends the reading of the words, which keeps others from writing the library; what is typed next begins
    /// it again.
    void stopReading() { work_.stop(); }
    bool hasWords() const { return index_ != nullptr; }
    void showLastSearches();

  Q_SIGNALS:
    void optionsTaken(const SearchOptions& options);  ///< with a search that was asked before

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void readWords();
    void offer();
    void showOffered();
    void show(std::vector<Suggestion> offered);
    void take(int row);
    bool takeKey(const QKeyEvent& key);
    void place();

    QLineEdit& box_;
    const data::Library& library_;
    const AskedSearches& asked_;
    LibraryChanges changes_;
    std::shared_ptr<const WordIndex> index_;
    bool current_ = false;  // the index is that of the library as it was at changes_
    std::vector<Suggestion> offered_;
    bool wanted_ = false;  // something was typed and nothing decided since
    QTimer pause_;
    std::atomic<bool> paused_ = false;
    // Last: it ends before what it works on goes.
    browse::BackgroundWork work_;
};

}  // namespace lirovan::search
