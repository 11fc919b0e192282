// Stepping through the hits of a highlighted page. The main window has one of these for the shared content
// window, every extra content window one of its own.
#pragma once

#include <QStringView>
#include <functional>
#include <vector>

#include "platform/core/page_view.h"
#include "search/runs/run_words.h"

namespace lirovan::search {

/// The stops for hits at `offsets` (pixels from the top of the content cell, in any order): ascending, equal
/// ones spread by 33 pixels, the last one 33 lower in any case. Never empty: a page without hits has the one
/// stop 33. {300, 120} gives {120, 333}; {100, 100, 250} gives {100, 133, 283}.
std::vector<qint32> hitStops(const std::vector<double>& offsets);

class HitPositions {
  public:
    /// Enables or disables "Up" or "Down" on the owner's toolbar.
    using EnableButton = std::function<void(QStringView key, bool enabled)>;

    /// `view` outlives this object.
    HitPositions(platform::PageView& view, EnableButton enableButton);

    /// Collects the stops of the page now shown; neither scrolls nor changes the current stop. A page that
    /// does not answer keeps those that it had. Every step does this first: the layout may be another.
    void ReOrderPos();
    /// Goes to the first hit of a new page. Where that stands in the first view anyway, and where there is
    /// none, the page stays at its top.
    void SetPosZero();
    /// Goes to the hit with this button.
    void goToButton(qint32 anchor);
    void UpperPos();   ///< to the hit before
    void DownerPos();  ///< to the next hit
    /// Whether there is a hit after (`step` 1) or before (-1) the current one.
    bool canStep(int step);
    /// Makes a hit the current one; one beyond the last is the last.
    void goToStop(qint32 hit);
    /// To the next of these hits, round the page.
    void goToNextOf(const std::vector<HitRange>& hits);
    /// What an extra content window does when it is first activated: sets its buttons and goes to the current
    /// stop. Later calls do nothing.
    void firstActivation();

    qint32 current() const { return current_; }

  private:
    void goTo(qint32 stop);
    void scrollToFirst();
    void scrollToCurrent();
    void outlineCurrent();
    qint32 lastIndex() const { return static_cast<qint32>(stops_.size()) - 1; }

    platform::PageView& view_;
    EnableButton enableButton_;
    std::vector<qint32> stops_ = {0};
    std::vector<int> order_;  ///< the hits' numbers, by their place on the page
    bool hasHits_ = false;
    qint32 current_ = 0;
    bool activated_ = false;
};

}  // namespace lirovan::search
