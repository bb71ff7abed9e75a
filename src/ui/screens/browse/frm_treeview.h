#pragma once

#include "core/host.h"
#include "ui/screens/browse/tree_form.h"

namespace norvelis::ui {

class DrawingControl2;
class LayoutTypes;
class vbalProgressBar;

/// The main screen: every schema of the dictionary with its records in a tree, beside it the drawing that
/// was last saved for what the mouse is over, and the commands that draw and print.
class frm_Treeview : public TreeForm {
    Q_OBJECT

  public:
    explicit frm_Treeview(mdiMainMenu& frame);

    void Load() override;
    void loadtreeform() override;

    /// Draws what the dictionary holds: all on one page, or a file for each parent.
    void DrawAll(bool singlePage);

    void ShowStatus(const QString& text);
    void ShowProgress(Bar bar, const ProgressBar& state);

  private:
    QBoxLayout* DrawingColumn();
    QBoxLayout* ProgressRow();
    void DrawSinglePage();
    void Print();
    void Maximize();

    DrawingControl2* DrawingControl2_;
    LayoutTypes* LayoutTypes_;
    QLabel *lblStatus_, *lblFile_;
    vbalProgressBar *vbalProgressBar1_, *vbalProgressBar3_;
};

}  // namespace norvelis::ui
