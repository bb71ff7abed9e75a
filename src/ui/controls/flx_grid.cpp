#include "ui/controls/flx_grid.h"

#include <QAction>
#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <algorithm>
#include <optional>
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
constexpr int kWidestColumn = 1000;  // One long text does not push the other columns away.
constexpr int kRowHandle = 14;       // Width of the strip at the left by which rows are selected.

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
    model_->SetHeadings(
        QString::fromUtf8(headings.data(), static_cast<qsizetype>(headings.size())).split('|'));
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

void FlxGrid::BeginRows(const QStringList& headings) {
    model_->BeginRows(headings);
    if (isSortingEnabled()) OrderAsGiven();
    padded_ = false;
    FitColumns();
}

void FlxGrid::AddRows(std::vector<std::string> cells) {
    const int first = model_->rowCount();
    model_->AddRows(std::move(cells));
    MeasureRows(first);
    if (first == 0) ApplyWidths();
}

void FlxGrid::EndRows() {
    ApplyWidths();
    model_->EndRows();
}

void FlxGrid::SetPainted(std::string (*painted)(const std::string&)) {
    model_->SetPainted(painted);
}

void FlxGrid::SetLongWork(const LongWork& longWork) {
    longWork_ = longWork;
    model_->SetSorter([this](const std::function<void()>& work) { DoWork("Sorting", work); });
}

void FlxGrid::DoWork(const char* name, const std::function<void()>& work) {
    constexpr int kManyRows = 10'000;
    if (longWork_ && model_->rowCount() >= kManyRows) {
        longWork_(name, work);
    } else {
        work();
    }
}

void FlxGrid::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) MSFlexGridColors(palette().color(QPalette::AlternateBase));
}

void FlxGrid::MSFlexGridColors(const QColor& color) {
    model_->SetOddRowColor(color);
}

void FlxGrid::FitColumns() {
    widths_.clear();
    for (int column = 0; column < model_->columnCount(); ++column)
        widths_.push_back(fontMetrics().horizontalAdvance(QString::fromStdString(Heading(column))));
    MeasureRows(0);
    ApplyWidths();
}

// The widest cell is found by the widths of single characters: to measure each text would take seconds in a
// large grid.
void FlxGrid::MeasureRows(int from) {
    const QFontMetrics metrics = fontMetrics();
    std::array<int, 128> characters{};
    for (int c = ' '; c < 128; ++c)
        characters[static_cast<std::size_t>(c)] = metrics.horizontalAdvance(QChar(c));
    for (int column = 0; column < model_->columnCount(); ++column) {
        const int row = model_->WidestRow(column, characters, from, kWidestColumn);
        if (row < 0) continue;
        const QString cell = model_->index(row, column).data().toString().trimmed();
        int& width = widths_[static_cast<std::size_t>(column)];
        width = std::clamp(metrics.horizontalAdvance(cell), width, std::max(width, kWidestColumn));
    }
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

void FlxGrid::ApplyWidths() {
    for (int column = 0; column < model_->columnCount(); ++column) {
        lastColumnNeeds_ = widths_[static_cast<std::size_t>(column)] + kColumnAir;
        setColumnWidth(column, lastColumnNeeds_);
    }
    FillWithLastColumn();
}

std::string FlxGrid::Heading(int column) const {
    return model_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString().toStdString();
}

std::string FlxGrid::SelectedText(bool withHeadings) const {
    return TextOf(selectionModel()->selection(), withHeadings);
}

std::string FlxGrid::TextOf(const QItemSelection& selection, bool withHeadings) const {
    std::set<int> rows, columns;
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
            const bool chosen = selection.contains(model_->index(row, column));
            cells.push_back(chosen ? model_->CellText(row, column) : std::string_view());
        }
        AppendTabLine(text, cells);
        if (!padded_ || !IsEmpty(cells)) end = text.size();
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
        if (!padded_ || !IsEmpty(cells)) end = text.size();
    }
    text.resize(end);
    return IsAscii(text) ? text : std::string(kByteOrderMark) + text;
}

void FlxGrid::Copy(bool withHeadings) {
    std::optional<QString> text;
    const QItemSelection selection = selectionModel()->selection();
    DoWork("Copying", [&] { text = QString::fromStdString(TextOf(selection, withHeadings)); });
    if (text) QGuiApplication::clipboard()->setText(*text);
}

void FlxGrid::SelectWholeRows() {
    selectionModel()->select(selectionModel()->selection(),
                             QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

void FlxGrid::SaveAsCsv() {
    const auto path = host_.SaveFileDialog("Save as CSV", "Comma-separated values (*.csv)", "csv");
    if (!path) return;
    try {
        DoWork("Saving as CSV", [&] { WriteFile(*path, Csv()); });
    } catch (const RuntimeFailure& failure) {
        host_.MessageBox(failure.what());
    }
}

}  // namespace norvelis::ui
