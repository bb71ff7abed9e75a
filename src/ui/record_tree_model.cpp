#include "ui/record_tree_model.h"

namespace norvelis::ui {

RecordTreeModel::RecordTreeModel(RecordTree tree, QObject* parent)
    : QAbstractItemModel(parent), tree_(std::move(tree)) {}

void RecordTreeModel::SetTree(RecordTree tree) {
    beginResetModel();
    tree_ = std::move(tree);
    endResetModel();
}

QModelIndex RecordTreeModel::IndexOf(NodeIndex node) const {
    if (node == kNoNode) return {};
    return createIndex(static_cast<int>(tree_.Row(node)), 0, static_cast<quintptr>(node));
}

NodeIndex RecordTreeModel::NodeOf(const QModelIndex& index) {
    return index.isValid() ? static_cast<NodeIndex>(index.internalId()) : kNoNode;
}

QModelIndex RecordTreeModel::index(int row, int column, const QModelIndex& parent) const {
    const auto children = tree_.Children(NodeOf(parent));
    if (row < 0 || static_cast<std::size_t>(row) >= children.size() || column != 0) return {};
    return createIndex(row, 0, static_cast<quintptr>(children[static_cast<std::size_t>(row)]));
}

QModelIndex RecordTreeModel::parent(const QModelIndex& child) const {
    return child.isValid() ? IndexOf(tree_.Parent(NodeOf(child))) : QModelIndex();
}

int RecordTreeModel::rowCount(const QModelIndex& parent) const {
    return static_cast<int>(tree_.Children(NodeOf(parent)).size());
}

QVariant RecordTreeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || role != Qt::DisplayRole) return {};
    return QString::fromStdString(tree_.Text(NodeOf(index)));
}

}  // namespace norvelis::ui
