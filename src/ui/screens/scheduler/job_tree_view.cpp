#include "ui/screens/scheduler/job_tree_view.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <algorithm>

#include "ui/skins/art/classic_colors.h"

namespace norvelis::ui {

namespace {

constexpr int kRed = 255;
constexpr int kMostShown = 500;  ///< Letters of a text; nobody reads more, and painting them takes long.

/// The id of an index: 0 for a job, else the job that a field belongs to, from 1.
quintptr IdOfFieldsOf(int job) {
    return static_cast<quintptr>(job) + 1;
}
bool IsJob(const QModelIndex& node) {
    return node.internalId() == 0;
}
std::size_t JobOf(const QModelIndex& node) {
    return IsJob(node) ? static_cast<std::size_t>(node.row()) : node.internalId() - 1;
}

QString InOneLine(const std::string& text) {
    QString line = QString::fromStdString(text).left(kMostShown);
    return line.replace('\r', ' ').replace('\n', ' ');
}

}  // namespace

void JobTreeModel::SetTree(JobTree tree) {
    beginResetModel();
    tree_ = std::move(tree);
    red_.clear();
    endResetModel();
}

void JobTreeModel::MarkRed(const QModelIndex& node) {
    red_.emplace_back(node);
    emit dataChanged(node, node, {Qt::ForegroundRole});
}

QModelIndex JobTreeModel::IndexOf(std::size_t job, std::optional<std::size_t> field) const {
    const QModelIndex jobIndex = index(static_cast<int>(job), 0);
    return field ? index(static_cast<int>(*field), 0, jobIndex) : jobIndex;
}

QModelIndex JobTreeModel::index(int row, int column, const QModelIndex& parent) const {
    if (!hasIndex(row, column, parent)) return {};
    return createIndex(row, column, parent.isValid() ? IdOfFieldsOf(parent.row()) : 0);
}

QModelIndex JobTreeModel::parent(const QModelIndex& node) const {
    return !node.isValid() || IsJob(node) ? QModelIndex() : createIndex(static_cast<int>(JobOf(node)), 0);
}

int JobTreeModel::rowCount(const QModelIndex& parent) const {
    if (!parent.isValid()) return static_cast<int>(tree_.Size());
    return IsJob(parent) ? static_cast<int>(tree_.Fields(JobOf(parent)).size()) : 0;
}

int JobTreeModel::columnCount(const QModelIndex&) const {
    return 1;
}

std::string JobTreeModel::Text(const QModelIndex& node) const {
    return IsJob(node) ? tree_.At(JobOf(node)).name
                       : tree_.Fields(JobOf(node))[static_cast<std::size_t>(node.row())];
}

QVariant JobTreeModel::data(const QModelIndex& node, int role) const {
    if (!node.isValid()) return {};
    switch (role) {
        case Qt::DisplayRole:
            return InOneLine(Text(node));
        case Qt::ToolTipRole:  // A tree in a narrow column cuts its texts; a name is never markup.
            return InOneLine(Text(node)).toHtmlEscaped();
        case Qt::ForegroundRole:
            return std::find(red_.begin(), red_.end(), node) != red_.end() ? QVariant(ColorOf(kRed))
                                                                           : QVariant();
        case kKeyRole:
            return QString::fromStdString(
                IsJob(node) ? tree_.Key(JobOf(node))
                            : tree_.FieldKey(JobOf(node), static_cast<std::size_t>(node.row())));
        default:
            return {};
    }
}

JobTreeView::JobTreeView(const QString& name, const QString& spoken, QWidget* parent)
    : QTreeView(parent), model_(new JobTreeModel(this)) {
    setObjectName(name);
    setAccessibleName(spoken);
    setModel(model_);
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    connect(this, &QAbstractItemView::clicked, this, [this](const QModelIndex& node) {
        emit NodeClicked(node.data(JobTreeModel::kKeyRole).toString().toStdString());
    });
}

void JobTreeView::SetTree(JobTree tree) {
    model_->SetTree(std::move(tree));
}

void JobTreeView::SelectJob(std::int64_t scheduleid) {
    for (std::size_t job = 0; job < Tree().Size(); ++job) {
        if (Tree().At(job).scheduleid == scheduleid) return setCurrentIndex(model_->IndexOf(job, {}));
    }
}

void JobTreeView::ShowHit(std::size_t job, std::optional<std::size_t> field) {
    const QModelIndex node = model_->IndexOf(job, field);
    model_->MarkRed(node);
    setCurrentIndex(node);  // Which opens the job of a field.
    scrollTo(node);
}

std::vector<std::int64_t> JobTreeView::MarkedIds() const {
    std::vector<std::int64_t> ids;
    for (const QModelIndex& node : selectionModel()->selectedIndexes()) {
        if (const auto id = ScheduleIdIn(node.data(JobTreeModel::kKeyRole).toString().toStdString()))
            ids.push_back(*id);
    }
    return ids;
}

void JobTreeView::keyPressEvent(QKeyEvent* event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && currentIndex().isValid()) {
        emit clicked(currentIndex());
    } else {
        QTreeView::keyPressEvent(event);
    }
}

}  // namespace norvelis::ui
