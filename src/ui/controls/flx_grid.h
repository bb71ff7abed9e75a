#pragma once

#include <QAbstractTableModel>
#include <QColor>
#include <QTableView>
#include <array>
#include <string>
#include <vector>

namespace norvelis::ui {

/// Rows of text below headings, read-only.
class GridModel : public QAbstractTableModel {
  public:
    explicit GridModel(QObject* parent) : QAbstractTableModel(parent) {}

    /// Headings are split at the bars; the rows go.
    void SetHeadings(std::string_view headings);

    template <std::size_t Columns>
    void SetRows(const std::vector<std::array<std::string, Columns>>& rows) {
        beginResetModel();
        cells_.clear();
        for (const auto& row : rows) {
            for (const std::string& cell : row) cells_.push_back(QString::fromStdString(cell));
        }
        endResetModel();
    }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    /// The back colour of rows with an odd number, counted from 1 below the headings.
    void SetOddRowColor(const QColor& color);

    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    QStringList headings_;
    std::vector<QString> cells_;
    QColor oddRows_;
};

/// A grid of a browsing screen: fixed headings, columns as wide as their widest cell, every other row tinted
/// in the skin's colours.
class FlxGrid : public QTableView {
  public:
    FlxGrid(const QString& name, std::string_view headings, QWidget* parent);

    template <std::size_t Columns>
    void SetRows(const std::vector<std::array<std::string, Columns>>& rows) {
        model_->SetRows(rows);
        FitColumns();
    }

  protected:
    void changeEvent(QEvent*) override;

  private:
    void FitColumns();
    void MSFlexGridColors(const QColor& color) { model_->SetOddRowColor(color); }

    GridModel* model_;
};

}  // namespace norvelis::ui
