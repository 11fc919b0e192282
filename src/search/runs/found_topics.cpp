#include "search/runs/found_topics.h"

namespace lirovan::search {

using namespace Qt::StringLiterals;
using browse::PageIdentity;

namespace {

// The next node in the order of the tree, `step` 1, or the one before, -1.
ResultNode* neighbour(ResultNode* node, int step) {
    if (step > 0 && !node->children.empty()) return node->children.front();
    for (; node->parent; node = node->parent) {
        const auto& siblings = node->parent->children;
        const std::ptrdiff_t row = std::ptrdiff_t{node->row} + step;
        if (row < 0) return node->parent;
        if (row >= std::ssize(siblings)) continue;
        node = siblings[static_cast<std::size_t>(row)];
        while (step < 0 && !node->children.empty()) node = node->children.back();
        return node;
    }
    return nullptr;
}

}  // namespace

PageIdentity pageOf(const ResultNode& node) {
    const int run = static_cast<int>(node.root().tagNumber());
    switch (node.kind) {
        case NodeKind::Topic:
            return {PageIdentity::Kind::MarkedPage, {node.tagNumber()}, {}, node.headingRow, run, 0};
        case NodeKind::Summary:
            // The author's counter stands behind "OZET" in the tag.
            return {PageIdentity::Kind::Summary,
                    {},
                    {},
                    0,
                    run,
                    QString(std::get<QString>(node.tag)).remove(u"OZET"_s).toInt()};
        default:
            return {};
    }
}

ResultNode* nodeOf(const ResultTree& tree, const PageIdentity& page) {
    if (page.kind != PageIdentity::Kind::MarkedPage && page.kind != PageIdentity::Kind::Summary)
        return nullptr;
    for (int run = 0; run < tree.runCount(); ++run) {
        ResultNode* root = &tree.run(run);
        if (root->tagNumber() != page.run) continue;
        for (ResultNode* node = root; node; node = neighbour(node, 1))
            if (node->kind != NodeKind::Run && pageOf(*node) == page) return node;
    }
    return nullptr;
}

ResultNode* neighbourTopic(ResultNode& node, int step) {
    ResultNode* next = neighbour(&node, step);
    while (next && next->kind != NodeKind::Topic) next = neighbour(next, step);
    return next;
}

ResultNode* outermostTopic(const ResultTree& tree, int step) {
    if (tree.runCount() == 0) return nullptr;
    ResultNode* node = &tree.run(tree.runCount() - 1);
    while (step < 0 && !node->children.empty()) node = node->children.back();
    return node->kind == NodeKind::Topic ? node : neighbourTopic(*node, step);
}

}  // namespace lirovan::search
