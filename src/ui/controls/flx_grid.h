#pragma once

#include <QTableView>
#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace norvelis {
class Host;
}

namespace norvelis::ui {

class GridModel;

/// A grid of text below fixed headings, columns as wide as their widest cell, the last one as wide as it
/// takes to fill the grid, every other row tinted in the skin's colors. A person selects cells, rows (by the
/// strip at their left), columns or all, copies them and saves the grid as a CSV file; the commands are in
/// its context menu.
class FlxGrid : public QTableView {
    Q_OBJECT

  public:
    /// The headings are split at the bars. The host, which asks for file names, must outlive the grid.
    FlxGrid(const QString& name, std::string_view headings, Host& host, QWidget* parent);

    /// Rows of one cell for each heading. Any number of rows: what is not in view costs its text alone.
    template <std::size_t Columns>
    void SetRows(const std::vector<std::array<std::string, Columns>>& rows) {
        std::vector<std::string> cells;
        cells.reserve(rows.size() * Columns);
        for (const auto& row : rows) cells.insert(cells.end(), row.begin(), row.end());
        SetCells(std::move(cells));
    }

    /// Rows that come little by little, below headings of their own; until the end they are shown as they
    /// come, and sorting waits.
    void BeginRows(const QStringList& headings);
    void AddRows(std::vector<std::string> cells);  ///< One row after the other.
    void EndRows();

    /// What paints a long text shorter; copies and files have it whole.
    void SetPainted(std::string (*painted)(const std::string&));
    /// Who does the sorting, copying and saving of very many rows: in the background, or not at all.
    using LongWork = std::function<void(const char* name, const std::function<void()>& work)>;
    void SetLongWork(const LongWork& longWork);

    /// For rows whose order says nothing: a click on a heading sorts by it, a second one the other way
    /// around, a third gives the first order back.
    void AllowSorting();

    /// The selected cells as tab-separated lines, each without the one blank at its left; what lies between
    /// them is empty. Rows of nothing at the end are left out.
    std::string SelectedText(bool withHeadings) const;
    /// The whole grid with its headings, as a CSV file.
    std::string Csv() const;

  protected:
    void changeEvent(QEvent*) override;
    void resizeEvent(QResizeEvent*) override;

  private:
    void SetCells(std::vector<std::string> cells);
    void MakeMenu();
    void FitColumns();
    void FillWithLastColumn();
    void MeasureRows(int from);
    void ApplyWidths();
    void DoWork(const char* name, const std::function<void()>& work);
    std::string TextOf(const QItemSelection& selection, bool withHeadings) const;
    void MSFlexGridColors(const QColor& color);
    std::string Heading(int column) const;

    void Copy(bool withHeadings);
    void SelectWholeRows();
    void SaveAsCsv();
    void Sort(Qt::SortOrder order);
    void OrderAsGiven();

    Host& host_;
    GridModel* model_;
    int lastColumnNeeds_ = 0;  ///< Points, for its widest cell.
    std::vector<int> widths_;  ///< Of the columns, as far as rows were measured.
    bool padded_ = true;       ///< Rows of nothing at the end mean nothing.
    LongWork longWork_;
};

}  // namespace norvelis::ui
