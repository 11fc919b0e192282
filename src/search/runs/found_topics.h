// The found topics of the result tree as pages: which page a node shows, and which node a page belongs to.
#pragma once

#include "browse/page_identity.h"
#include "search/runs/result_tree.h"

namespace lirovan::search {

/// The page of a topic or a summary; other nodes lead to the start page.
browse::PageIdentity pageOf(const ResultNode& node);

/// Null where the run has gone, or never held the page.
ResultNode* nodeOf(const ResultTree& tree, const browse::PageIdentity& page);

/// The found topic after (`step` 1) or before (-1) a node of its run, as the tree shows them, across books
/// and authors. Null at the end.
ResultNode* neighbourTopic(ResultNode& node, int step);

/// The first (`step` 1) or last (-1) found topic of the newest run. Null where there is none.
ResultNode* outermostTopic(const ResultTree& tree, int step);

}  // namespace lirovan::search
