#pragma once

#include <QLabel>
#include <QMouseEvent>
#include <functional>

namespace norvelis::ui {

/// A label that takes a click for the control beside it, which is the one that the keyboard reaches.
class ClickLabel : public QLabel {
  public:
    ClickLabel(const QString& name, const QString& text, QWidget* parent, std::function<void()> click)
        : QLabel(text, parent), click_(std::move(click)) {
        setObjectName(name);
    }

  protected:
    void mousePressEvent(QMouseEvent* event) override {
        if (event->button() == Qt::LeftButton) click_();
    }

  private:
    std::function<void()> click_;
};

}  // namespace norvelis::ui
