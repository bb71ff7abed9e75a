#pragma once

#include <QAbstractItemModel>

#include "browse/record_tree.h"

namespace norvelis::ui {

/// A record tree for a tree view. It copies nothing: indexes are the nodes' numbers.
class RecordTreeModel : public QAbstractItemModel {
    Q_OBJECT

  public:
    RecordTreeModel(RecordTree tree, QObject* parent);

    const RecordTree& Tree() const { return tree_; }
    void SetTree(RecordTree tree);

    QModelIndex IndexOf(NodeIndex node) const;
    static NodeIndex NodeOf(const QModelIndex& index);  ///< kNoNode for no index.

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& = {}) const override { return 1; }
    bool hasChildren(const QModelIndex& parent = {}) const override { return rowCount(parent) > 0; }
    QVariant data(const QModelIndex& index, int role) const override;

  private:
    RecordTree tree_;
};

}  // namespace norvelis::ui
