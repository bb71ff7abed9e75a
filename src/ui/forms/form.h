#pragma once

#include <QLabel>
#include <QPoint>
#include <QString>
#include <QWidget>
#include <optional>

#include "ui/forms/screen_context.h"
#include "ui/skins/picture.h"

namespace norvelis::ui {

class EdgeGrips;
class ProgressView;
class WindowButton;

/// The base of every screen: a borderless window drawn from a skin's pictures, with caption, minimise,
/// maximise and close. It is inside the main frame, or as a window of its own when it waits for an answer.
///
/// A screen makes its controls in its constructor below the caption, names them, puts them into layouts,
/// which also say in which order the Tab key reaches them, and gives them Tags; whoever makes the screen then
/// calls Load, which loads settings and skin, gives it its size and places it. Sizes are those for the
/// desktop's usual text; with larger text a form is larger.
class Form : public QWidget {
    Q_OBJECT

  public:
    Form(const ScreenContext& context, const QString& name, const QString& caption, QSize size);
    ~Form() override;

    /// LoadINISettings, LoadSkins, SetColors, size, place.
    virtual void Load();
    /// To the size and place, maximised or not, that a person left it at; nothing when that was its first
    /// size.
    void RestoreGeometry();
    /// Takes pictures and colors, or colors alone, of the effective skin.
    void ApplySkin();
    void ApplyColors();

    /// The size tag: names the skin's background and its section of places.
    const QString& Tag2() const { return tag2_; }
    void SetTag2(const QString& tag) { tag2_ = tag; }

    void SetPicture(const Picture& picture);

    /// Shows the form as a window of its own and waits until it is closed.
    void ShowAndWait();

    /// Moves the form; inside the main frame its caption stays within reach.
    void MoveTo(QPoint place);
    /// Moves it wholly inside the main frame, in each direction in which that has room for it.
    void MoveInside();
    /// Back to the place where a form is at first.
    virtual void Place();

    /// False for a form of a few words, which has one size.
    virtual bool Grows() const { return true; }
    /// The size that it opens at.
    QSize OriginalSize() const;
    QSize SmallestSize() const;
    /// A person's wish: back to size and place that it had at first, and Local.Ini forgets the others.
    void BackToOriginalSize();
    bool IsMaximized() const { return beforeMaximized_.has_value(); }
    void SetMaximized(bool maximized);
    void ToggleMaximized();  ///< A person's wish.
    void FillArea();         ///< A maximised form takes the whole of the main frame's area.

    /// False when the form must stay: the person was asked and wants it so.
    virtual bool QueryUnload() { return true; }
    /// After QueryUnload has refused: the screen closes by itself once it has come to an end.
    virtual bool ClosesLater() const { return false; }
    /// Closes the form without asking.
    void Unload();

    /// What the frame or another screen asks of this one; a screen takes the requests that name it.
    virtual void Take(const ScreenRequest&) {}
    /// The control that has the keyboard when the form is opened first; null for the first in reading order.
    virtual QWidget* OpensAt() const { return nullptr; }
    /// Where commands that name this screen show their progress; null for nowhere.
    virtual ProgressView* Progress() { return nullptr; }

    const ScreenContext& Context() const { return context_; }
    AppState& App() const { return context_.app; }

  signals:
    void Touched();           ///< Pressed somewhere: it wants to be the active one.
    void ArrangedByPerson();  ///< Moved, dragged to another size, or maximised.
    void Minimized();
    void Closed();

  protected:
    virtual void LoadINISettings();
    virtual void SaveINISettings() {}
    /// The form has new pictures or colors.
    virtual void SkinApplied() {}
    /// Where ShowAndWait puts the form on the screen.
    virtual QPoint WaitingPlace();

    QColor CaptionColor() const;  ///< Of the background behind the caption.

    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent*) override;
    void mouseMoveEvent(QMouseEvent*) override;
    void mouseReleaseEvent(QMouseEvent*) override;
    void mouseDoubleClickEvent(QMouseEvent*) override;
    void resizeEvent(QResizeEvent*) override;
    void keyPressEvent(QKeyEvent*) override;
    void closeEvent(QCloseEvent*) override;

    /// The space below the caption, at the size that the form opens at.
    QRect Body() const;

  private:
    /// The mouse was pressed on the form's background: the form follows it.
    void StartFormDrag(QPoint globalPlace);
    void ShowRestoreButton();
    /// The window buttons are this far to the right of where the skin has them.
    void ShiftWindowButtons(int by);
    void SaveGeometry() const;

    const ScreenContext& context_;
    QString tag2_;
    QSize size_;  ///< Of its background without larger text.
    Picture picture_;
    QLabel* lblCaption_;
    WindowButton *imgClose_, *imgRestore_, *imgMinimize_;
    EdgeGrips* grips_;
    int shift_ = 0;                   ///< Of the window buttons.
    std::optional<QPoint> dragFrom_;  ///< Where in the window the mouse holds it.
    std::optional<QRect> beforeMaximized_;
    bool unloading_ = false;
};

inline constexpr QSize kLargeForm(1040, 620);

/// A label on a form; Tag may be empty.
QLabel* MakeLabel(QWidget* parent, const QString& name, const QString& text, const QString& tag = {});

}  // namespace norvelis::ui
