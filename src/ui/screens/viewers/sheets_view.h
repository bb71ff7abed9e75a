#pragma once

#include <QPixmap>
#include <QWidget>
#include <vector>

namespace norvelis::ui {

class DrawingSheets;

/// Sheets of paper laid out as they belong together, each page of the drawing below the one before. A click
/// on a sheet asks for it; the sheets that are not chosen are pale.
class SheetsView : public QWidget {
    Q_OBJECT

  public:
    SheetsView(const QString& name, QWidget* parent);

    /// The sheets must outlive their use here; null shows `words` instead.
    void Show(const DrawingSheets* sheets, const QString& words = {});
    void SheetsChanged();
    void Choose(std::vector<int> sheets);

  signals:
    void SheetClicked(int sheet);  ///< From 1.

  protected:
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent*) override;
    void mousePressEvent(QMouseEvent*) override;
    QSize sizeHint() const override { return {500, 400}; }

  private:
    void Arrange();
    QPixmap Picture() const;
    bool IsChosen(int sheet) const;

    const DrawingSheets* sheets_ = nullptr;
    QString words_;
    std::vector<int> chosen_;     ///< Sorted; empty is all.
    std::vector<QRectF> places_;  ///< In pixels.
    double scale_ = 1;            ///< Pixels to the millimetre.
    QPixmap picture_;             ///< Null until it is needed.
};

}  // namespace norvelis::ui
