// What the browse window must know of the search that lives on its second tab. The search sets it.
#pragma once

namespace lirovan::browse {

struct SearchTabState {
    bool running = false;     ///< a search or summary runs: the window stays open, the page is not changed
    bool showPanel2 = false;  ///< status panels 2 and 3 come back with the search tab
    bool showPanel3 = false;
};

}  // namespace lirovan::browse
