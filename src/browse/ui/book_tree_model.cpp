#include "browse/ui/book_tree_model.h"

#include <QTextDocument>

#include "platform/ui/icons.h"

namespace lirovan::browse {

namespace {

std::size_t at(qsizetype index) {
    return static_cast<std::size_t>(index);
}

}  // namespace

BookTreeModel::BookTreeModel(QObject* parent) : QAbstractItemModel(parent) {
    static const std::vector<TreeNode> None;
    setNodes(None);
}

void BookTreeModel::setNodes(const std::vector<TreeNode>& nodes) {
    beginResetModel();
    nodes_ = &nodes;
    // Counting sort by parent.
    first_.assign(nodes.size() + 2, 0);
    for (const TreeNode& node : nodes) ++first_[at(node.parent + 2)];
    for (std::size_t slot = 1; slot < first_.size(); ++slot) first_[slot] += first_[slot - 1];
    std::vector<qsizetype> next(first_.begin(), first_.end() - 1);
    children_.resize(nodes.size());
    row_.resize(nodes.size());
    for (std::size_t n = 0; n < nodes.size(); ++n) {
        const std::size_t slot = at(nodes[n].parent + 1);
        row_[n] = static_cast<int>(next[slot] - first_[slot]);
        children_[at(next[slot]++)] = static_cast<qsizetype>(n);
    }
    endResetModel();
}

qsizetype BookTreeModel::node(const QModelIndex& index) const {
    return index.isValid() ? static_cast<qsizetype>(index.internalId()) : -1;
}

QModelIndex BookTreeModel::index(qsizetype node) const {
    if (node < 0 || at(node) >= nodes_->size()) return {};
    return createIndex(row_[at(node)], 0, static_cast<quintptr>(node));
}

void BookTreeModel::imageChanged(qsizetype node) {
    const QModelIndex place = index(node);
    Q_EMIT dataChanged(place, place, {Qt::DecorationRole, ImageRole});
}

QModelIndex BookTreeModel::index(int row, int column, const QModelIndex& parent) const {
    if (!hasIndex(row, column, parent)) return {};
    return index(children_[at(first_[at(node(parent) + 1)] + row)]);
}

QModelIndex BookTreeModel::parent(const QModelIndex& child) const {
    return child.isValid() ? index((*nodes_)[at(node(child))].parent) : QModelIndex();
}

int BookTreeModel::rowCount(const QModelIndex& parent) const {
    const std::size_t slot = at(node(parent) + 1);
    return static_cast<int>(first_[slot + 1] - first_[slot]);
}

int BookTreeModel::columnCount(const QModelIndex&) const {
    return 1;
}

QVariant BookTreeModel::data(const QModelIndex& index, int role) const {
    const qsizetype n = node(index);
    if (n < 0) return {};
    const TreeNode& found = (*nodes_)[at(n)];
    switch (role) {
        case Qt::DisplayRole:
            return found.text;
        case Qt::ToolTipRole:
            // A tag in a title is shown, not obeyed.
            return Qt::mightBeRichText(found.text) ? found.text.trimmed().toHtmlEscaped()
                                                   : found.text.trimmed();
        case Qt::DecorationRole:
            if (!icons_.contains(found.image)) icons_.insert(found.image, platform::icon(found.image));
            return icons_.value(found.image);
        case KeyRole:
            return found.key;
        case ImageRole:
            return found.image.toString();
        default:
            return {};
    }
}

}  // namespace lirovan::browse
