#include "ui/controls/flx_grid.h"

#include <QEvent>
#include <QHeaderView>

namespace norvelis::ui {

namespace {

constexpr int kColumnAir = 16;

}  // namespace

void GridModel::SetHeadings(std::string_view headings) {
    beginResetModel();
    headings_ = QString::fromUtf8(headings.data(), static_cast<qsizetype>(headings.size())).split('|');
    cells_.clear();
    endResetModel();
}

void GridModel::SetOddRowColor(const QColor& color) {
    oddRows_ = color;
    if (rowCount() > 0)
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1), {Qt::BackgroundRole});
}

int GridModel::rowCount(const QModelIndex& parent) const {
    if (parent.isValid() || headings_.empty()) return 0;
    return static_cast<int>(cells_.size()) / columnCount();
}

int GridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(headings_.size());
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    if (role == Qt::BackgroundRole && index.row() % 2 == 0) return oddRows_;
    if (role != Qt::DisplayRole) return {};
    return cells_[static_cast<std::size_t>(index.row() * columnCount() + index.column())];
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section >= headings_.size()) return {};
    if (role == Qt::DisplayRole) return headings_[section];
    if (role == Qt::TextAlignmentRole) return static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter);
    return {};
}

FlxGrid::FlxGrid(const QString& name, std::string_view headings, QWidget* parent)
    : QTableView(parent), model_(new GridModel(this)) {
    setObjectName(name);
    setModel(model_);
    model_->SetHeadings(headings);
    setShowGrid(false);
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    horizontalHeader()->setFixedHeight(fontMetrics().height() + 10);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setStretchLastSection(true);
    MSFlexGridColors(palette().color(QPalette::AlternateBase));
    FitColumns();
}

void FlxGrid::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) MSFlexGridColors(palette().color(QPalette::AlternateBase));
}

void FlxGrid::FitColumns() {
    for (int column = 0; column < model_->columnCount(); ++column) {
        const QFontMetrics metrics = fontMetrics();
        int widest =
            metrics.horizontalAdvance(model_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
        for (int row = 0; row < model_->rowCount(); ++row) {
            const QString cell = model_->index(row, column).data().toString();
            widest = std::max(widest, metrics.horizontalAdvance(cell.trimmed()));
        }
        setColumnWidth(column, widest + kColumnAir);
    }
}

}  // namespace norvelis::ui
