// The main toolbar's buttons that belong to the page of the shared content window.
#pragma once

#include <functional>

#include "platform/core/main_frame.h"

namespace lirovan::browse {

/// What the shared content window shows, as far as its commands are concerned.
enum class ShownPage {
    None,        ///< the start page in its own view, or the window is closed
    Topic,       ///< also a page that the reader went to by a link
    MarkedPage,  ///< a found topic with its hits
    Summary      ///< has no hits to step through
};

/// Knows what is shown and what keeps the buttons back, and works all of them out anew at every change: who
/// changes one thing need not know of the others.
class PageCommands {
  public:
    explicit PageCommands(platform::MainFrame& frame) : frame_(frame) {}
    /// Told with every page.
    std::function<void(ShownPage page)> pageShown;

    /// Another page is shown. "Up" and "Down" are disabled until its hits say otherwise.
    void showPageCommands(ShownPage page);
    ShownPage shown() const { return shown_; }

    /// What the hits of a marked page say of "Up" or "Down".
    void setHitButton(QStringView key, bool enabled);
    /// The tab Kitaplar is in front: "Up" and "Down" are disabled meanwhile.
    void setBooksInFront(bool inFront);
    /// A search or summary is under way: no button of the page is visible meanwhile.
    void setWithheld(bool withheld);

  private:
    void apply();

    platform::MainFrame& frame_;
    ShownPage shown_ = ShownPage::None;
    bool up_ = false, down_ = false;
    bool booksInFront_ = false;
    bool withheld_ = false;
};

}  // namespace lirovan::browse
