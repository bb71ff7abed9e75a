#include "ui/controls/grid_model.h"

#include <algorithm>
#include <numeric>
#include <tuple>
#include <utility>

#include "base/text.h"

namespace norvelis::ui {

namespace {

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

void GridModel::SetHeadings(std::string_view headings) {
    beginResetModel();
    headings_ = QString::fromUtf8(headings.data(), static_cast<qsizetype>(headings.size())).split('|');
    cells_.clear();
    rows_.clear();
    endResetModel();
}

void GridModel::SetCells(std::vector<std::string> cells) {
    beginResetModel();
    cells_ = std::move(cells);
    rows_.resize(cells_.size() / static_cast<std::size_t>(columnCount()));
    rows_ = SortedRows();
    endResetModel();
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

int GridModel::WidestRow(int column, const std::array<int, 128>& characterWidths) const {
    int widestRow = -1, widest = -1;
    for (int row = 0; row < rowCount(); ++row) {
        int width = 0;
        for (const char c : CellText(row, column))
            width += characterWidths[static_cast<unsigned char>(c) & 127];
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
    return QString::fromStdString(Cell(index.row(), index.column()));
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section >= headings_.size()) return {};
    if (role == Qt::DisplayRole) return headings_[section];
    if (role == Qt::TextAlignmentRole) return static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter);
    return {};
}

std::vector<int> GridModel::SortedRows() const {
    std::vector<int> rows(rows_.size());
    std::iota(rows.begin(), rows.end(), 0);
    if (sortColumn_ < 0) return rows;
    std::vector<SortKey> keys;
    keys.reserve(rows.size());
    const auto columns = static_cast<std::size_t>(columnCount());
    for (std::size_t cell = static_cast<std::size_t>(sortColumn_); cell < cells_.size(); cell += columns)
        keys.emplace_back(cells_[cell]);
    const auto key = [&keys](int row) -> const SortKey& { return keys[static_cast<std::size_t>(row)]; };
    std::stable_sort(rows.begin(), rows.end(), [&](int a, int b) {
        return sortOrder_ == Qt::AscendingOrder ? key(a) < key(b) : key(b) < key(a);
    });
    return rows;
}

void GridModel::sort(int column, Qt::SortOrder order) {
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    sortColumn_ = column;
    sortOrder_ = order;
    std::vector<int> shownAs(rows_.size());
    const std::vector<int> before = std::exchange(rows_, SortedRows());
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
