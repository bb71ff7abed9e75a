#pragma once

#include <QObject>
#include <QSize>
#include <array>
#include <functional>

class QWidget;

namespace norvelis::ui {

/// The form that the grips change, and what they say to it.
struct GrippedForm {
    QWidget& form;
    std::function<QSize()> smallestSize;
    std::function<void()> pressed;
    std::function<void()> dragged;  ///< Called before each change of its place or size.
};

/// The edges and corners by which a person drags a form to another size.
class EdgeGrips : public QObject {
  public:
    explicit EdgeGrips(GrippedForm gripped);

    void SetVisible(bool visible);
    void Follow();  ///< The form has another size.

  private:
    const GrippedForm gripped_;
    std::array<QWidget*, 8> grips_;
};

}  // namespace norvelis::ui
