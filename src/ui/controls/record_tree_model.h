#pragma once

#include <QAbstractListModel>
#include <functional>
#include <unordered_set>

#include "ui/controls/extended_tree_view.h"

namespace norvelis::ui {

/// The lines of a record tree: the nodes that no closed branch hides, as a plain list. The platform's own
/// tree view keeps objects for every open branch, and with a million nodes takes seconds to open one.
class RecordTreeModel : public QAbstractListModel {
    Q_OBJECT

  public:
    static constexpr int kIncompleteRole = Qt::UserRole;  ///< A record that was not read to its end.

    explicit RecordTreeModel(QObject* parent);

    /// Who walks a tree while the screen lives takes a copy: the screen may get another one meanwhile.
    const RecordTree& Tree() const { return branches_.Tree(); }
    const ExtendedTreeView& Branches() const { return branches_; }

    /// Every branch with members is open, no node is red.
    void SetTree(RecordTree tree);

    /// Opens and closes branches. Indexes that are held go on to mean their nodes; those of nodes that
    /// are hidden become none.
    void Rearrange(const std::function<void(ExtendedTreeView&)>& change);

    /// Visited and found nodes stay red until the next tree.
    void MarkRed(NodeIndex node);

    QModelIndex IndexOf(NodeIndex node) const;         ///< No index for a node in a closed branch.
    NodeIndex NodeOf(const QModelIndex& index) const;  ///< kNoNode for no index.

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    /// The next line from `start` on, round the end, whose text begins with `typed`: where typed letters
    /// lead.
    QModelIndexList match(const QModelIndex& start, int role, const QVariant& typed, int hits,
                          Qt::MatchFlags flags) const override;

  private:
    QString Spoken(NodeIndex node) const;

    ExtendedTreeView branches_;
    std::unordered_set<NodeIndex> red_;
};

}  // namespace norvelis::ui
