#pragma once

#include <QAbstractItemModel>
#include <QTreeView>
#include <cstdint>
#include <optional>
#include <vector>

#include "scheduler/job_tree.h"

namespace norvelis::ui {

class ContextMenu;

/// The nodes of a JobTree. Texts are made when they are shown.
class JobTreeModel : public QAbstractItemModel {
    Q_OBJECT

  public:
    static constexpr int kKeyRole = Qt::UserRole;  ///< The node's key.

    using QAbstractItemModel::QAbstractItemModel;

    const JobTree& Tree() const { return tree_; }
    void SetTree(JobTree tree);
    /// The hit of a search stays red until the next tree.
    void MarkRed(const QModelIndex& node);

    QModelIndex IndexOf(std::size_t job, std::optional<std::size_t> field) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& node) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& node, int role) const override;

  private:
    std::string Text(const QModelIndex& node) const;

    JobTree tree_;
    std::vector<QPersistentModelIndex> red_;
};

/// A tree of jobs in which several may be marked. Return is a click.
class JobTreeView : public QTreeView {
    Q_OBJECT

  public:
    JobTreeView(const QString& name, const QString& spoken, QWidget* parent);

    const JobTree& Tree() const { return model_->Tree(); }
    void SetTree(JobTree tree);
    /// Selects the job of that id without a click; nothing when it is not here.
    void SelectJob(std::int64_t scheduleid);
    void ShowHit(std::size_t job, std::optional<std::size_t> field);

    /// Of the marked nodes that are jobs. RuntimeFailure 6 as ScheduleIdIn.
    std::vector<std::int64_t> MarkedIds() const;

  signals:
    void NodeClicked(const std::string& key);

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    JobTreeModel* model_;
};

}  // namespace norvelis::ui
