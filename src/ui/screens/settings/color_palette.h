#pragma once

#include <QColor>
#include <QWidget>

#include "ui/skins/picture.h"

namespace norvelis::ui {

/// A picture to pick colors from: the mouse, or the arrow keys and the space bar, choose a point of it.
class ColorPalette : public QWidget {
    Q_OBJECT

  public:
    ColorPalette(const QString& name, const Picture& picture, QWidget* parent);

    QSize sizeHint() const override;

  signals:
    void Hovered(const QColor& color);
    void Picked(const QColor& color);

  protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void Reach(QPoint place, bool pick);

    Picture picture_;
    QPoint place_;
};

}  // namespace norvelis::ui
