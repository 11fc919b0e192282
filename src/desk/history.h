// The pages that the shared content window showed, in order, each with the place where it was left.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "browse/page_identity.h"
#include "platform/core/page_place.h"

namespace lirovan::desk {

class History {
  public:
    struct Entry {
        browse::PageIdentity page;
        std::optional<platform::PagePlace> place;  ///< nothing where the page could not be asked
        int hit = 0;                               ///< the current one of a marked page, from 0
    };
    static constexpr std::size_t Most = 200;  ///< the oldest go first

    /// The page shown now stands there; without a place the one that it had stays.
    void stands(std::optional<platform::PagePlace> place, int hit);
    /// Another page is shown. What lay ahead is forgotten. The same page again is no step.
    void shown(const browse::PageIdentity& page);

    /// Null before anything was shown.
    const Entry* current() const { return entries_.empty() ? nullptr : &entries_[now_]; }
    /// Goes back (-1) or forward (1) to the nearest page that `show` can show; those that it cannot are
    /// forgotten. While it runs, shown() and stands() change nothing. False: there is none.
    bool go(int step, const std::function<bool(const Entry&)>& show);
    bool isGoing() const { return going_; }

  private:
    std::vector<Entry> entries_;
    std::size_t now_ = 0;
    bool going_ = false;
};

}  // namespace lirovan::desk
