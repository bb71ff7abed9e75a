#pragma once

#include <QPixmap>
#include <QPointer>
#include <QWidget>
#include <vector>

#include "ui/skins/picture.h"

namespace norvelis::ui {

class Form;

/// The main frame's client area: the skin's background, the forms on it with their shadows, and
/// which of them is the active one.
class ChildArea : public QWidget {
    Q_OBJECT

  public:
    explicit ChildArea(QWidget* parent);

    void SetBackground(const Picture& picture);

    /// A form that was made for this area. It belongs to the area; closed forms are destroyed unless `kept`.
    void Add(Form* form, bool kept);
    void Activate(Form* form);  ///< Shown, in front, with the keyboard.
    void Minimize(Form* form);
    void ActivateNext(int step);  ///< Round the open forms, forwards or backwards.

    /// Side by side, and so for every form that is opened, until a person arranges them otherwise.
    void Tile();
    void Cascade();  ///< Behind each other, at the sizes they open at.

    Form* Active() const;
    bool IsMinimized(const Form* form) const;
    /// All that have been made, the hidden ones among them.
    std::vector<Form*> Forms() const;
    /// Open forms in the order they were opened, the minimised ones among them.
    std::vector<Form*> OpenForms() const;

  signals:
    void FormsChanged();

  protected:
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent*) override;
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    struct Child {
        QPointer<Form> form;
        bool minimized = false;
        QPointer<QWidget> focus;  ///< Where the keyboard was last.
    };
    Child* Find(const Form* form);
    const Child* Find(const Form* form) const;
    void FocusMoved(QWidget* to);
    void Left(Form* form);                ///< It was closed.
    void ActivateFront();                 ///< The active form went: the one in front of the others follows.
    std::vector<Form*> Arranged() const;  ///< The forms that tiles and cascade are made of.
    void PlaceTiles();

    Picture background_;
    QPixmap painted_;  ///< The background at the area's size.
    std::vector<Child> children_;
    QPointer<Form> active_;
    bool tiled_ = false;
};

}  // namespace norvelis::ui
