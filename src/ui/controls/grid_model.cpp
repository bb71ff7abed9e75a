#include "ui/controls/grid_model.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <thread>
#include <tuple>
#include <utility>

#include "base/text.h"

namespace norvelis::ui {

namespace {

constexpr std::size_t kManyCells = 100'000;  // To free so many takes a while.

/// What a cell is sorted by.
struct SortKey {
    explicit SortKey(std::string_view cell) : isText(!IsNumeric(cell)) {
        if (isText) {
            text = UpperCase(Trim(cell));
        } else {
            number = Val(cell);
        }
    }
    bool operator<(const SortKey& other) const {
        return std::tie(isText, number, text) < std::tie(other.isText, other.number, other.text);
    }

    bool isText;
    double number = 0;
    std::string text;
};

}  // namespace

void GridModel::SetHeadings(const QStringList& headings) {
    beginResetModel();
    headings_ = headings;
    if (cells_.size() > kManyCells) std::thread([freed = std::move(cells_)] {}).detach();
    cells_.clear();
    rows_.clear();
    endResetModel();
}

void GridModel::SetCells(std::vector<std::string> cells) {
    beginResetModel();
    cells_.assign(std::move_iterator(cells.begin()), std::move_iterator(cells.end()));
    rows_.resize(cells_.size() / static_cast<std::size_t>(columnCount()));
    rows_ = SortedRows(sortColumn_, sortOrder_);
    endResetModel();
}

void GridModel::BeginRows(const QStringList& headings) {
    SetHeadings(headings);
    coming_ = true;
}

void GridModel::AddRows(std::vector<std::string> cells) {
    const int first = rowCount();
    const int count = static_cast<int>(cells.size()) / columnCount();
    if (count == 0) return;
    beginInsertRows({}, first, first + count - 1);
    cells_.insert(cells_.end(), std::move_iterator(cells.begin()), std::move_iterator(cells.end()));
    for (int row = first; row < first + count; ++row) rows_.push_back(row);
    endInsertRows();
}

void GridModel::EndRows() {
    coming_ = false;
    if (sortColumn_ >= 0) sort(sortColumn_, sortOrder_);
}

void GridModel::SetOddRowColor(const QColor& color) {
    oddRows_ = color;
    if (rowCount() > 0)
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1), {Qt::BackgroundRole});
}

const std::string& GridModel::Cell(int row, int column) const {
    const int given = rows_[static_cast<std::size_t>(row)];
    return cells_[static_cast<std::size_t>(given) * static_cast<std::size_t>(columnCount()) +
                  static_cast<std::size_t>(column)];
}

std::string_view GridModel::CellText(int row, int column) const {
    std::string_view text = Cell(row, column);
    if (text.starts_with(' ')) text.remove_prefix(1);
    return text;
}

int GridModel::WidestRow(int column, const std::array<int, 128>& characterWidths, int from, int most) const {
    int widestRow = -1, widest = -1;
    for (int row = from; row < rowCount() && widest < most; ++row) {
        int width = 0;
        for (const char c : CellText(row, column)) {
            width += characterWidths[static_cast<unsigned char>(c) & 127];
            if (width >= most) break;
        }
        if (width > widest) {
            widest = width;
            widestRow = row;
        }
    }
    return widestRow;
}

int GridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int GridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(headings_.size());
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    if (role == Qt::BackgroundRole && index.row() % 2 == 0) return oddRows_;
    if (role != Qt::DisplayRole) return {};
    const std::string& cell = Cell(index.row(), index.column());
    QString text = QString::fromStdString(painted_ ? painted_(cell) : cell);
    for (const QChar c : {u'\r', u'\n', u'\t'}) text.replace(c, u' ');  // A row is one line.
    return text;
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section >= headings_.size()) return {};
    if (role == Qt::DisplayRole) return headings_[section];
    if (role == Qt::TextAlignmentRole) return static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter);
    return {};
}

std::vector<int> GridModel::SortedRows(int column, Qt::SortOrder order) const {
    std::vector<int> rows(rows_.size());
    std::iota(rows.begin(), rows.end(), 0);
    if (column < 0) return rows;
    std::vector<SortKey> keys;
    keys.reserve(rows.size());
    const auto columns = static_cast<std::size_t>(columnCount());
    for (std::size_t cell = static_cast<std::size_t>(column); cell < cells_.size(); cell += columns)
        keys.emplace_back(cells_[cell]);
    const auto key = [&keys](int row) -> const SortKey& { return keys[static_cast<std::size_t>(row)]; };
    std::stable_sort(rows.begin(), rows.end(), [&](int a, int b) {
        return order == Qt::AscendingOrder ? key(a) < key(b) : key(b) < key(a);
    });
    return rows;
}

void GridModel::sort(int column, Qt::SortOrder order) {
    std::vector<int> sorted;
    const auto work = [&] { sorted = SortedRows(column, order); };
    if (!coming_ && sorter_) {
        sorter_(work);
    } else if (!coming_) {
        work();
    }
    if (!coming_ && sorted.size() != rows_.size()) return;
    sortColumn_ = column;
    sortOrder_ = order;
    if (!coming_) Reorder(std::move(sorted));
}

void GridModel::Reorder(std::vector<int> rows) {
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    std::vector<int> shownAs(rows.size());
    const std::vector<int> before = std::exchange(rows_, std::move(rows));
    for (std::size_t row = 0; row < rows_.size(); ++row)
        shownAs[static_cast<std::size_t>(rows_[row])] = static_cast<int>(row);
    const QModelIndexList held = persistentIndexList();
    QModelIndexList now;
    for (const QModelIndex& index : held) {
        const int given = before[static_cast<std::size_t>(index.row())];
        now.push_back(createIndex(shownAs[static_cast<std::size_t>(given)], index.column()));
    }
    changePersistentIndexList(held, now);
    emit layoutChanged({}, VerticalSortHint);
}

}  // namespace norvelis::ui
