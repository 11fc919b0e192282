#include "search/runs/result_tree.h"

namespace lirovan::search {

qint64 ResultNode::tagNumber() const {
    const auto* number = std::get_if<qint64>(&tag);
    return number ? *number : 0;
}

ResultNode& ResultTree::add(ResultNode* parent, ResultNode node) {
    // Only the newest run grows.
    if (!parent) runs_.push_back(std::make_unique<std::deque<ResultNode>>());
    ResultNode& added = runs_.back()->emplace_back(std::move(node));
    added.parent = parent;
    added.row = parent ? static_cast<int>(parent->children.size()) : runCount() - 1;
    if (parent) parent->children.push_back(&added);
    if (listener_) listener_->nodeAdded(added);
    return added;
}

void ResultTree::setText(ResultNode& node, QString text) {
    node.text = std::move(text);
    if (listener_) listener_->textChanged(node);
}

void ResultTree::SonuclariTemizle() {
    while (!runs_.empty()) removeLastRun();
}

void ResultTree::removeLastRun() {
    if (listener_) listener_->aboutToRemove(runs_.back()->front());
    runs_.pop_back();
    if (listener_) listener_->removed();
}

}  // namespace lirovan::search
