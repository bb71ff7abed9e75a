#include "ui/controls/record_tree_model.h"

#include <QColor>
#include <vector>

#include "ui/skins/art/classic_colors.h"

namespace norvelis::ui {

namespace {

constexpr int kRed = 255;

}  // namespace

RecordTreeModel::RecordTreeModel(QObject* parent) : QAbstractListModel(parent), branches_(RecordTree()) {}

void RecordTreeModel::SetTree(RecordTree tree) {
    beginResetModel();
    branches_ = ExtendedTreeView(std::move(tree));
    branches_.ExpandMembers();
    red_.clear();
    endResetModel();
}

void RecordTreeModel::Rearrange(const std::function<void(ExtendedTreeView&)>& change) {
    emit layoutAboutToBeChanged();
    const QModelIndexList held = persistentIndexList();
    std::vector<NodeIndex> nodes;
    for (const QModelIndex& index : held) nodes.push_back(NodeOf(index));
    change(branches_);
    QModelIndexList now;
    for (const NodeIndex node : nodes) now.push_back(IndexOf(node));
    changePersistentIndexList(held, now);
    emit layoutChanged();
}

void RecordTreeModel::MarkRed(NodeIndex node) {
    red_.insert(node);
    const QModelIndex index = IndexOf(node);
    if (index.isValid()) emit dataChanged(index, index, {Qt::ForegroundRole});
}

QModelIndex RecordTreeModel::IndexOf(NodeIndex node) const {
    const auto line = branches_.LineOf(node);
    return line ? createIndex(*line, 0) : QModelIndex();
}

NodeIndex RecordTreeModel::NodeOf(const QModelIndex& index) const {
    return index.isValid() ? branches_.Lines()[static_cast<std::size_t>(index.row())] : kNoNode;
}

int RecordTreeModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(branches_.Lines().size());
}

QVariant RecordTreeModel::data(const QModelIndex& index, int role) const {
    const NodeIndex node = NodeOf(index);
    if (node == kNoNode) return {};
    switch (role) {
        case Qt::DisplayRole:
            return QString::fromStdString(Tree().Text(node));
        case Qt::ForegroundRole:
            return red_.contains(node) ? QVariant(ColorOf(kRed)) : QVariant();
        case kIncompleteRole:
            return Tree().IsIncomplete(node);
        case Qt::AccessibleTextRole:
            return Spoken(node);
        default:
            return {};
    }
}

// Few texts are on many lines: each is compared once.
QModelIndexList RecordTreeModel::match(const QModelIndex& start, int, const QVariant& typed, int,
                                       Qt::MatchFlags) const {
    std::vector<bool> begins(Tree().TextCount());
    for (RecordTree::TextId text = 0; text < begins.size(); ++text) {
        begins[text] =
            QString::fromStdString(Tree().TextOf(text)).startsWith(typed.toString(), Qt::CaseInsensitive);
    }
    for (int i = 0, count = rowCount(); i < count; ++i) {
        const QModelIndex line = index((start.row() + i) % count);
        if (begins[Tree().TextIdOf(NodeOf(line))]) return {line};
    }
    return {};
}

QString RecordTreeModel::Spoken(NodeIndex node) const {
    QString text =
        QString("%1, level %2").arg(QString::fromStdString(Tree().Text(node))).arg(Tree().Level(node));
    if (Tree().IsIncomplete(node)) text += ", incomplete";
    if (branches_.HasChildren(node)) text += branches_.Expanded(node) ? ", open" : ", closed";
    return text;
}

}  // namespace norvelis::ui
