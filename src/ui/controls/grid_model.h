#pragma once

#include <QAbstractTableModel>
#include <QColor>
#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace norvelis::ui {

/// Rows of text below headings, read-only, in the order given or sorted by a column. A cell costs its text
/// alone, and is looked at only when it is shown.
class GridModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    explicit GridModel(QObject* parent) : QAbstractTableModel(parent) {}

    /// Headings are split at the bars; the rows go.
    void SetHeadings(std::string_view headings);

    /// The rows' cells (UTF-8) one after another, as many to a row as there are headings. A sorted grid
    /// shows them sorted.
    void SetCells(std::vector<std::string> cells);

    /// The back colour of rows with an odd number, counted from 1 below the headings.
    void SetOddRowColor(const QColor& color);

    /// A cell as other programs get it: without the one blank that cells may have at their left.
    std::string_view CellText(int row, int column) const;

    /// The cell with the widest text, by the widths of its single characters; -1 without rows.
    int WidestRow(int column, const std::array<int, 128>& characterWidths) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// Numbers by value before texts by letter; rows with equal cells stay in the order given. A column below
    /// 0 is the order given.
    void sort(int column, Qt::SortOrder order) override;

  private:
    const std::string& Cell(int row, int column) const;
    std::vector<int> SortedRows() const;

    QStringList headings_;
    std::vector<std::string> cells_;
    std::vector<int> rows_;  ///< The given number of each row shown.
    int sortColumn_ = -1;
    Qt::SortOrder sortOrder_ = Qt::AscendingOrder;
    QColor oddRows_;
};

}  // namespace norvelis::ui
