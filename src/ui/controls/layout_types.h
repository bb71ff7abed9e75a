#pragma once

#include <QComboBox>

namespace norvelis::ui {

/// The list of layouts, the first chosen. The arrow keys on the closed list only choose; a draw takes the
/// choice.
class LayoutTypes : public QComboBox {
    Q_OBJECT

  public:
    explicit LayoutTypes(QWidget* parent);

  signals:
    void Picked();  ///< A click in the open list, or Return.

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    bool closedListHasKeys_ = false;
};

}  // namespace norvelis::ui
