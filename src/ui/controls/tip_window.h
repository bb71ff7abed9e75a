#pragma once

#include <QLabel>
#include <QWidget>

namespace norvelis::ui {

/// The base of the tool-tip forms: a small borderless window in Verdana that neither takes the keyboard nor
/// catches the mouse.
class TipWindow : public QWidget {
  public:
    /// Shows the window at this place of the screen, moved as far as it takes to be whole.
    void ShowAt(QPoint place);

  protected:
    TipWindow(const QString& name, QWidget* owner);

    QLabel* AddLabel(const QString& name, const QString& spoken);
    QLabel* AddHeading(const QString& name, const QString& spoken);  ///< The same in bold.
    void paintEvent(QPaintEvent*) override;
};

}  // namespace norvelis::ui
