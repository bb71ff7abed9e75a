#pragma once

#include <QAbstractTableModel>
#include <QColor>
#include <array>
#include <deque>
#include <functional>
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

    /// The rows go.
    void SetHeadings(const QStringList& headings);

    /// The rows' cells (UTF-8) one after another, as many to a row as there are headings. A sorted grid
    /// shows them sorted.
    void SetCells(std::vector<std::string> cells);

    /// Rows that come little by little: until the end they are shown as they come, and sorting waits.
    void BeginRows(const QStringList& headings);
    void AddRows(std::vector<std::string> cells);
    void EndRows();

    /// How a long text is painted; at first as it is.
    void SetPainted(std::string (*painted)(const std::string&)) { painted_ = painted; }

    /// Does the work that takes long when there are many rows; while it does, nobody changes the model. Work
    /// that it does not do leaves the model as it was.
    using Worker = std::function<void(const std::function<void()>& work)>;
    void SetSorter(Worker sorter) { sorter_ = std::move(sorter); }

    /// The back colour of rows with an odd number, counted from 1 below the headings.
    void SetOddRowColor(const QColor& color);

    /// A cell as other programs get it: without the one blank that cells may have at their left.
    std::string_view CellText(int row, int column) const;

    /// The cell with the widest text from this row on, by the widths of its single characters, of which no
    /// more count than fill `most`; -1 without rows.
    int WidestRow(int column, const std::array<int, 128>& characterWidths, int from, int most) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    /// Numbers by value before texts by letter; rows with equal cells stay in the order given. A column below
    /// 0 is the order given.
    void sort(int column, Qt::SortOrder order) override;

  private:
    const std::string& Cell(int row, int column) const;
    std::vector<int> SortedRows(int column, Qt::SortOrder order) const;
    void Reorder(std::vector<int> rows);

    QStringList headings_;
    std::deque<std::string> cells_;  ///< Which stay where they are when others come.
    std::vector<int> rows_;          ///< The given number of each row shown.
    int sortColumn_ = -1;
    Qt::SortOrder sortOrder_ = Qt::AscendingOrder;
    bool coming_ = false;  ///< More rows are on their way.
    std::string (*painted_)(const std::string&) = nullptr;
    Worker sorter_;
    QColor oddRows_;
};

}  // namespace norvelis::ui
