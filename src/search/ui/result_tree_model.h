// The result tree as an item model. What a search adds becomes rows only when the tab shows it, many at a
// time: a view that is told of each of ten thousand nodes has no time left for anything else.
#pragma once

#include <QAbstractItemModel>
#include <QHash>
#include <QIcon>
#include <QSet>
#include <functional>

#include "search/runs/result_tree.h"

namespace lirovan::search {

class ResultTreeModel : public QAbstractItemModel, private ResultTree::Listener {
    Q_OBJECT

  public:
    enum Role {
        KeyRole = Qt::UserRole,  ///< node key, "konu112"
        TagRole                  ///< number, text or nothing
    };

    /// `tree` outlives the model and tells it, and nobody else, of its changes.
    explicit ResultTreeModel(ResultTree& tree, QObject* parent = nullptr);
    ~ResultTreeModel() override;

    /// What the tip of a run's root says; its text where this is not set.
    std::function<QString(const ResultNode& root)> rootTip;

    /// Makes rows of what was added since the last call.
    void showChanges();

    /// Null for an invalid index.
    static ResultNode* node(const QModelIndex& index);
    /// Invalid while the node is not shown.
    QModelIndex index(const ResultNode& node) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

  Q_SIGNALS:
    /// A run or an author became a row; these are shown open.
    void opened(const QModelIndex& index);

  private:
    void nodeAdded(ResultNode& node) override;
    void textChanged(ResultNode& node) override;
    void aboutToRemove(ResultNode& root) override;
    void removed() override;

    int shownChildren(const ResultNode* parent) const { return shown_.value(parent, 0); }
    static int children(const ResultTree& tree, const ResultNode* parent);
    ResultNode* child(const ResultNode* parent, int row) const;
    QIcon icon(const ResultNode& node) const;

    ResultTree& tree_;
    QHash<const ResultNode*, int> shown_;         // rows by parent; null: the runs
    std::vector<const ResultNode*> growing_;      // parents of nodes that are no rows yet, upper ones first
    QSet<const ResultNode*> isGrowing_, retold_;  // retold_: nodes with a new text
    mutable QHash<QString, QIcon> icons_;
    bool removingRows_ = false;
};

}  // namespace lirovan::search
