// What the decisions of the search tab need of its widget.
#pragma once

#include <QString>

#include "search/runs/result_tree.h"
#include "search/runs/search_run.h"

namespace lirovan::search {

/// The search tab of frm_Arama.
class SearchView {
  public:
    virtual ~SearchView() = default;

    virtual QString searchText() const = 0;  ///< txt_Bul, as it stands
    virtual void setSearchText(const QString& text) = 0;

    virtual SearchOptions options() const = 0;
    virtual void setWholeWord(bool checked) = 0;       ///< chk_TMK
    virtual void setAllWords(bool checked) = 0;        ///< chk_HPI
    virtual void setTogether(bool checked) = 0;        ///< chk_FindWith
    virtual void setOptionsEnabled(bool enabled) = 0;  ///< Frame1

    /// True: cmdDur in place of cmd_Bul, with the focus. False: the reverse.
    virtual void showStopButton(bool shown) = 0;
    virtual void showSummaryStop(bool shown) = 0;  ///< fraStopper with cmd_Stop
    /// The pointer "no drop" over the result tree and Frame1.
    virtual void setNoDropPointer(bool set) = 0;

    virtual void focusSearchBox() = 0;

    /// Shows a run's root in the result tree, or moves the tree so that it is the first row.
    virtual void bringIntoView(ResultNode& root, bool toTheTop) = 0;
    /// To where the tree stood before the last root was shown, which is gone again.
    virtual void goBackInTree() = 0;
    /// Selects a book's node in the result tree, so that it follows the listing.
    virtual void follow(ResultNode& book) = 0;
    /// Shows what was added to the result tree and lets events run.
    virtual void letEventsRun() = 0;
};

}  // namespace lirovan::search
