// The decisions of frm_Arama, the window with the book tree: life, place, tabs, and clicks on the tree.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "browse/book_tree.h"
#include "browse/page_toolbar.h"
#include "browse/search_tab_state.h"
#include "browse/window_ports.h"
#include "data/library.h"
#include "platform/core/main_frame.h"
#include "platform/core/paths.h"

namespace lirovan::browse {

/// The pixel size that a topic's page starts with.
inline constexpr int TopicFontSize = 16;

class BrowseWindow {
  public:
    struct Parts {
        platform::MainFrame& frame;
        BrowseView& view;
        ContentView& content;  ///< frm_Icerik
        const data::Library& library;
        platform::AppFolder folder;
        SearchTabState& search;
        PageCommands& page;                 ///< of frm_Icerik
        std::function<bool()> isHelpShown;  ///< frm_yardim is loaded
    };
    explicit BrowseWindow(Parts parts) : parts_(std::move(parts)) {}

    /// Form_Load — menu, place, first tab, and the tree's nodes. The result says if the filling failed; the
    /// nodes read so far stand, and the program goes on with them. `widthBefore`: the window's width when it
    /// was closed; then the main window is left as it is.
    const BookTree& load(const TreeProgress& progress,
                         std::optional<platform::Twips> widthBefore = std::nullopt);
    const std::vector<TreeNode>& nodes() const { return tree_.nodes; }
    /// The library changed: reads the outline anew. What was read and unfolded stays so. The nodes before, by
    /// position, and which they are now.
    struct Reloaded {
        std::vector<TreeNode> before;
        std::vector<qsizetype> now;
    };
    Reloaded reload();

    /// Form_Activate
    void activate();
    /// Form_Resize — also called when the main window's size changed.
    void resize();
    /// Form_Unload — false: a search runs, the window must stay open.
    bool unload();

    void selectTab(Tab tab);

    // The tree's handlers; `node` is an index among nodes().
    void expanded(qsizetype node);
    void collapsed(qsizetype node);
    /// tvw_Kitaplar_NodeClick — shows the start page or the topic's page.
    void NodeClick(qsizetype node);

  private:
    TreeNode& at(qsizetype node) { return tree_.nodes[static_cast<size_t>(node)]; }
    void setImage(qsizetype node, QStringView image);
    void showTopic(const TreeNode& node);
    void placeContentBeside();

    Parts parts_;
    BookTree tree_;
};

}  // namespace lirovan::browse
