// The outline of the library as an item model over the nodes that the browse window's decisions keep, so that
// a library of many thousand topics costs no item each.
#pragma once

#include <QAbstractItemModel>
#include <QHash>
#include <QIcon>

#include "browse/book_tree.h"

namespace lirovan::browse {

class BookTreeModel : public QAbstractItemModel {
    Q_OBJECT

  public:
    enum Role {
        KeyRole = Qt::UserRole,  ///< node key, "C12"
        ImageRole                ///< image key, "Acik"
    };

    explicit BookTreeModel(QObject* parent = nullptr);

    /// `nodes` outlives the model or the next call.
    void setNodes(const std::vector<TreeNode>& nodes);

    /// Position among the nodes of an index; -1 for an invalid one.
    qsizetype node(const QModelIndex& index) const;
    QModelIndex index(qsizetype node) const;
    /// A node's image is another now.
    void imageChanged(qsizetype node);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

  private:
    const std::vector<TreeNode>* nodes_;
    // Children of node n, in order, are children_[first_[n + 1]] up to children_[first_[n + 2]]; the roots,
    // as children of -1, begin at first_[0].
    std::vector<qsizetype> first_;
    std::vector<qsizetype> children_;
    std::vector<int> row_;
    mutable QHash<QStringView, QIcon> icons_;
};

}  // namespace lirovan::browse
