#include "search/ui/result_tree_model.h"

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QTextDocument>
#include <utility>

#include "platform/ui/icons.h"

namespace lirovan::search {

using namespace Qt::StringLiterals;

ResultTreeModel::ResultTreeModel(ResultTree& tree, QObject* parent)
    : QAbstractItemModel(parent), tree_(tree) {
    tree_.setListener(this);
}

ResultTreeModel::~ResultTreeModel() {
    tree_.setListener(nullptr);
}

int ResultTreeModel::children(const ResultTree& tree, const ResultNode* parent) {
    return parent ? static_cast<int>(parent->children.size()) : tree.runCount();
}

ResultNode* ResultTreeModel::child(const ResultNode* parent, int row) const {
    return parent ? parent->children[static_cast<size_t>(row)] : &tree_.run(row);
}

void ResultTreeModel::nodeAdded(ResultNode& node) {
    if (isGrowing_.contains(node.parent)) return;
    isGrowing_.insert(node.parent);
    growing_.push_back(node.parent);
}

void ResultTreeModel::textChanged(ResultNode& node) {
    retold_.insert(&node);
}

void ResultTreeModel::showChanges() {
    isGrowing_.clear();
    for (const ResultNode* parent : std::exchange(growing_, {})) {
        const int first = shownChildren(parent), last = children(tree_, parent) - 1;
        if (last < first) continue;
        beginInsertRows(parent ? index(*parent) : QModelIndex(), first, last);
        shown_[parent] = last + 1;
        endInsertRows();
        for (int row = first; row <= last; ++row) {
            const ResultNode& node = *child(parent, row);
            if (node.kind == NodeKind::Run || node.kind == NodeKind::Author) Q_EMIT opened(index(node));
        }
    }
    for (const ResultNode* node : std::exchange(retold_, {})) {
        const QModelIndex at = index(*node);
        if (at.isValid()) Q_EMIT dataChanged(at, at, {Qt::DisplayRole});
    }
}

void ResultTreeModel::aboutToRemove(ResultNode& root) {
    // Only whole runs go, and the last one goes first; what earlier ones listed was shown when they ended.
    growing_.clear();
    isGrowing_.clear();
    retold_.clear();
    removingRows_ = root.row < shownChildren(nullptr);
    if (removingRows_) beginRemoveRows({}, root.row, root.row);
    std::vector<const ResultNode*> gone{&root};
    while (!gone.empty()) {
        const ResultNode* node = gone.back();
        gone.pop_back();
        shown_.remove(node);
        gone.insert(gone.end(), node->children.begin(), node->children.end());
    }
    if (removingRows_) shown_[nullptr] = root.row;
}

void ResultTreeModel::removed() {
    if (std::exchange(removingRows_, false)) endRemoveRows();
}

ResultNode* ResultTreeModel::node(const QModelIndex& index) {
    return static_cast<ResultNode*>(index.internalPointer());
}

QModelIndex ResultTreeModel::index(const ResultNode& node) const {
    return node.row < shownChildren(node.parent) ? createIndex(node.row, 0, const_cast<ResultNode*>(&node))
                                                 : QModelIndex();
}

QModelIndex ResultTreeModel::index(int row, int column, const QModelIndex& parent) const {
    const ResultNode* above = node(parent);
    if (row < 0 || column != 0 || row >= shownChildren(above)) return {};
    return createIndex(row, column, child(above, row));
}

QModelIndex ResultTreeModel::parent(const QModelIndex& child) const {
    const ResultNode* below = node(child);
    return below && below->parent ? createIndex(below->parent->row, 0, below->parent) : QModelIndex();
}

int ResultTreeModel::rowCount(const QModelIndex& parent) const {
    return shownChildren(node(parent));
}

int ResultTreeModel::columnCount(const QModelIndex&) const {
    return 1;
}

QVariant ResultTreeModel::data(const QModelIndex& index, int role) const {
    const ResultNode* at = node(index);
    if (!at) return {};
    const bool root = at->kind == NodeKind::Run;
    switch (role) {
        case Qt::DisplayRole:
            return at->text;
        case Qt::ToolTipRole: {
            const QString tip = root && rootTip ? rootTip(*at) : at->text;
            // A tag in a title is shown, not obeyed.
            return Qt::mightBeRichText(tip) ? tip.toHtmlEscaped().replace(u'\n', u"<br>"_s) : tip;
        }
        case Qt::DecorationRole:
            return icon(*at);
        case Qt::FontRole: {
            QFont font;
            font.setBold(true);
            return root ? QVariant(font) : QVariant();
        }
        case Qt::BackgroundRole:
            return root ? QVariant(QBrush(QColor(0, 255, 0))) : QVariant();
        case Qt::ForegroundRole:
            // On the bright green, whatever the palette.
            return root ? QVariant(QBrush(Qt::black)) : QVariant();
        case KeyRole:
            return at->key;
        case TagRole:
            if (const auto* number = std::get_if<qint64>(&at->tag)) return *number;
            if (const auto* text = std::get_if<QString>(&at->tag)) return *text;
            return {};
        default:
            return {};
    }
}

QIcon ResultTreeModel::icon(const ResultNode& node) const {
    const auto* number = std::get_if<qint64>(&node.image);
    const auto* name = std::get_if<QString>(&node.image);
    const QString key = number ? QString::number(*number) : name ? *name : QString();
    auto found = icons_.find(key);
    if (found == icons_.end()) found = icons_.insert(key, platform::icon(key));
    return *found;
}

}  // namespace lirovan::search
