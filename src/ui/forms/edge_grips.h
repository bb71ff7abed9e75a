#pragma once

#include <QObject>
#include <array>

class QWidget;

namespace norvelis::ui {

class Form;

/// The edges and corners by which a person drags a form to another size.
class EdgeGrips : public QObject {
  public:
    explicit EdgeGrips(Form& form);

    void SetVisible(bool visible);
    void Follow();  ///< The form has another size.

  private:
    Form& form_;
    std::array<QWidget*, 8> grips_;
};

}  // namespace norvelis::ui
