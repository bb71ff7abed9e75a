#pragma once

#include <QImage>
#include <QWidget>

namespace norvelis::ui {

/// The whole page, small, with a frame around what the drawing shows of it. A click or a drag moves the view.
class DrawingMap : public QWidget {
    Q_OBJECT

  public:
    explicit DrawingMap(QWidget* parent);

    /// The picture of a page of that size, in page units; null for none.
    void SetPage(const QImage& overview, QSizeF page);
    /// In page units: what is seen of the page, and places that are pointed out.
    void Mark(const QRectF& seen, const QList<QPointF>& places);

    QSize sizeHint() const override;

  signals:
    void Pointed(QPointF onPage, bool dragged);

  protected:
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent*) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

  private:
    double Scale() const { return picture_.isNull() ? 1 : width() / page_.width(); }
    void Point(QPointF pixel, bool dragged);

    QImage overview_, picture_;  ///< As it came; at the map's size.
    QSizeF page_{1, 1};
    QRectF seen_;
    QList<QPointF> places_;
};

}  // namespace norvelis::ui
