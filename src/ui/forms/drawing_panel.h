#pragma once

#include <QWidget>

#include "ui/controls/button_row.h"
#include "ui/forms/screen_context.h"

class QLabel;
class QLayout;

namespace norvelis::ui {

class DrawingControl2;
class LayoutTypes;

/// A drawing with its name and what the next one shall look like above it, its commands below it: layout,
/// draw, print, edit. A screen says what drawing means there; the rest is the panel's. Draw and print wait
/// while a long command runs.
class DrawingPanel : public QWidget {
    Q_OBJECT

  public:
    /// Where the panels of the screens differ.
    struct Words {
        const char *drawToolTip, *printToolTip;
        const char* editName;        ///< Of the control.
        const char* nothingToPrint;  ///< In a box, when there is no drawing on show.
    };

    DrawingPanel(const ScreenContext& context, const Words& words, QWidget* form);

    DrawingControl2& Drawing() const { return *DrawingControl2_; }
    int Layout() const;  ///< The chosen one's place in kLayoutTypes.
    /// During DrawWanted: whether the layout is to pay no heed to the drawing that is replaced.
    bool Fresh() const { return fresh_; }
    /// The commands, for what a screen adds to them.
    ButtonRow& Buttons() const { return *buttons_; }

    /// Offers to draw the schema by area for this reason, until another drawing is on show; nothing without
    /// one.
    void ProposeByArea(const std::string& reason, const std::string& schema);

  signals:
    void DrawWanted();  ///< By the button, or by a layout that the person picked.
    void ByAreaWanted(const std::string& schema);

  private:
    QLayout* NameRow();
    QWidget* Proposal();
    void ShowName(const QString& file);
    void Print(const std::string& file) const;
    void mnu_viewvisio();

    const ScreenContext& context_;
    const char* nothingToPrint_;
    QLabel* lblDrawing_;
    DrawingControl2* DrawingControl2_;
    LayoutTypes* LayoutTypes_;
    ButtonRow* buttons_;
    bool fresh_ = false;
    QWidget* proposal_;
    QLabel* lblProposal_;
    std::string proposed_;  ///< The schema that would be drawn by area.
    std::string toPrint_;   ///< What the name above said when the button was pressed.
};

}  // namespace norvelis::ui
