#pragma once

#include <QComboBox>

namespace norvelis::ui {

/// The list of layouts, the first chosen. `activated` reports a person's choice alone.
class LayoutTypes : public QComboBox {
  public:
    explicit LayoutTypes(QWidget* parent);

  protected:
    /// A choice starts a drawing; a wheel that passes over is none.
    void wheelEvent(QWheelEvent* event) override;
};

}  // namespace norvelis::ui
