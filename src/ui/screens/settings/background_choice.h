#pragma once

#include <QButtonGroup>
#include <QWidget>

#include "ui/skins/picture.h"

namespace norvelis::ui {

/// The choice of a drawing background: the eighteen backgrounds from one picture of six columns by three
/// rows, a radio button under each. A click on a background chooses it.
class BackgroundChoice : public QWidget {
    Q_OBJECT

  public:
    BackgroundChoice(const Picture& picBackground, QWidget* parent);

    int Chosen() const { return radios_.checkedId(); }  ///< -1 when none is chosen.
    void Choose(int index);                             ///< An index of no background changes nothing.

  signals:
    void ChosenByPerson();
    void NameChanged(const QString& name);  ///< Of the chosen one, whoever chose it.

  protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent* event) override;

  private:
    QRect Cell(int index) const;

    Picture picture_;
    QButtonGroup radios_;
};

}  // namespace norvelis::ui
