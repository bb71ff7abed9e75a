#include "ui/controls/flx_grid.h"

#include <QAction>
#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <algorithm>
#include <set>

#include "base/failure.h"
#include "base/paths.h"
#include "base/table_text.h"
#include "core/host.h"
#include "ui/controls/context_menu.h"
#include "ui/controls/grid_model.h"

namespace norvelis::ui {

namespace {

constexpr int kColumnAir = 16, kRowAir = 6, kHeadingAir = 10;
constexpr int kRowHandle = 14;  // Width of the strip at the left by which rows are selected.

/// Tells spreadsheet programs that a file is UTF-8.
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 128; });
}

bool IsEmpty(const std::vector<std::string_view>& cells) {
    return std::all_of(cells.begin(), cells.end(), [](std::string_view cell) { return cell.empty(); });
}

}  // namespace

FlxGrid::FlxGrid(const QString& name, std::string_view headings, Host& host, QWidget* parent)
    : QTableView(parent), host_(host), model_(new GridModel(this)) {
    setObjectName(name);
    setModel(model_);
    model_->SetHeadings(headings);
    setShowGrid(false);
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectItems);
    setSelectionMode(ExtendedSelection);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerPixel);
    QHeaderView& handles = *verticalHeader();
    handles.setFixedWidth(kRowHandle);
    handles.setMinimumSectionSize(1);
    handles.setDefaultSectionSize(fontMetrics().height() + kRowAir);
    handles.setSectionResizeMode(QHeaderView::Fixed);
    handles.setToolTip("Selects rows");
    horizontalHeader()->setFixedHeight(fontMetrics().height() + kHeadingAir);
    horizontalHeader()->setHighlightSections(false);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int section) {
        if (section + 1 < model_->columnCount()) FillWithLastColumn();
    });
    MakeMenu();
    MSFlexGridColors(palette().color(QPalette::AlternateBase));
    FitColumns();
}

void FlxGrid::MakeMenu() {
    ContextMenu menu(this);
    QAction* copies[] = {
        menu.Add("&Copy", QKeySequence::Copy, [this] { Copy(false); }),
        menu.Add("Copy with &headings", QKeySequence("Ctrl+Shift+C"), [this] { Copy(true); })};
    menu.AddLine();
    menu.Add("Select whole &rows", QKeySequence("Shift+Space"), [this] { SelectWholeRows(); });
    menu.Add("Select &all", QKeySequence::SelectAll, [this] { selectAll(); });
    menu.AddLine();
    menu.Add("&Save as CSV...", [this] { SaveAsCsv(); });
    const auto update = [this, copies] {
        for (QAction* copy : copies) copy->setEnabled(selectionModel()->hasSelection());
    };
    update();
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, update);
    connect(model_, &QAbstractItemModel::modelReset, this, update);
}

void FlxGrid::AllowSorting() {
    horizontalHeader()->setSortIndicatorClearable(true);
    OrderAsGiven();
    setSortingEnabled(true);
    ContextMenu menu(this);
    menu.AddLine();
    menu.Add("Sort &up by this column", [this] { Sort(Qt::AscendingOrder); });
    menu.Add("Sort &down by this column", [this] { Sort(Qt::DescendingOrder); });
    menu.Add("&Order as given", [this] { OrderAsGiven(); });
}

void FlxGrid::Sort(Qt::SortOrder order) {
    if (currentIndex().isValid()) sortByColumn(currentIndex().column(), order);
}

void FlxGrid::OrderAsGiven() {
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
}

void FlxGrid::SetCells(std::vector<std::string> cells) {
    model_->SetCells(std::move(cells));
    FitColumns();
}

void FlxGrid::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) MSFlexGridColors(palette().color(QPalette::AlternateBase));
}

void FlxGrid::MSFlexGridColors(const QColor& color) {
    model_->SetOddRowColor(color);
}

// The widest cell is found by the widths of single characters: to measure each text would take seconds in a
// large grid.
void FlxGrid::FitColumns() {
    const QFontMetrics metrics = fontMetrics();
    std::array<int, 128> widths{};
    for (int c = ' '; c < 128; ++c) widths[static_cast<std::size_t>(c)] = metrics.horizontalAdvance(QChar(c));
    for (int column = 0; column < model_->columnCount(); ++column) {
        int widest =
            metrics.horizontalAdvance(model_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
        if (const int row = model_->WidestRow(column, widths); row >= 0) {
            const QString cell = model_->index(row, column).data().toString();
            widest = std::max(widest, metrics.horizontalAdvance(cell.trimmed()));
        }
        lastColumnNeeds_ = widest + kColumnAir;
        setColumnWidth(column, lastColumnNeeds_);
    }
    FillWithLastColumn();
}

// The header's own stretching would also cut the column's cells in a narrow grid, where no scrolling helps.
void FlxGrid::FillWithLastColumn() {
    const int last = model_->columnCount() - 1;
    const int left = viewport()->width() - horizontalHeader()->sectionPosition(last);
    setColumnWidth(last, std::max(lastColumnNeeds_, left));
}

void FlxGrid::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    FillWithLastColumn();
}

std::string FlxGrid::Heading(int column) const {
    return model_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString().toStdString();
}

std::string FlxGrid::SelectedText(bool withHeadings) const {
    std::set<int> rows, columns;
    const QItemSelection selection = selectionModel()->selection();
    for (const QItemSelectionRange& range : selection) {
        for (int row = range.top(); row <= range.bottom(); ++row) rows.insert(rows.end(), row);
        for (int column = range.left(); column <= range.right(); ++column) columns.insert(column);
    }
    std::string text;
    std::vector<std::string_view> cells;
    if (withHeadings) {
        std::vector<std::string> headings;
        for (const int column : columns) headings.push_back(Heading(column));
        cells.assign(headings.begin(), headings.end());
        AppendTabLine(text, cells);
    }
    std::size_t end = text.size();
    for (const int row : rows) {
        cells.clear();
        for (const int column : columns) {
            const bool chosen = selectionModel()->isSelected(model_->index(row, column));
            cells.push_back(chosen ? model_->CellText(row, column) : std::string_view());
        }
        AppendTabLine(text, cells);
        if (!IsEmpty(cells)) end = text.size();
    }
    text.resize(end);
    if (text.ends_with('\n')) text.pop_back();
    return text;
}

std::string FlxGrid::Csv() const {
    std::vector<std::string> headings;
    for (int column = 0; column < model_->columnCount(); ++column) headings.push_back(Heading(column));
    std::string text;
    std::vector<std::string_view> cells(headings.begin(), headings.end());
    AppendCsvLine(text, cells);
    std::size_t end = text.size();
    for (int row = 0; row < model_->rowCount(); ++row) {
        for (int column = 0; column < model_->columnCount(); ++column)
            cells[static_cast<std::size_t>(column)] = model_->CellText(row, column);
        AppendCsvLine(text, cells);
        if (!IsEmpty(cells)) end = text.size();
    }
    text.resize(end);
    return IsAscii(text) ? text : std::string(kByteOrderMark) + text;
}

void FlxGrid::Copy(bool withHeadings) {
    QGuiApplication::clipboard()->setText(QString::fromStdString(SelectedText(withHeadings)));
}

void FlxGrid::SelectWholeRows() {
    selectionModel()->select(selectionModel()->selection(),
                             QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

void FlxGrid::SaveAsCsv() {
    const auto path = host_.SaveFileDialog("Save as CSV", "Comma-separated values (*.csv)", "csv");
    if (!path) return;
    try {
        WriteFile(*path, Csv());
    } catch (const RuntimeFailure& failure) {
        host_.MessageBox(failure.what());
    }
}

}  // namespace norvelis::ui
