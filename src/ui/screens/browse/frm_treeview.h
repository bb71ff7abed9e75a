#pragma once

#include "ui/forms/progress_view.h"
#include "ui/screens/browse/tree_form.h"

namespace norvelis::ui {

class DrawingPanel;
class vbalProgressBar;

/// The main screen: every schema of the dictionary with its records in a tree, beside it the drawing that
/// was last saved for what the mouse is over, and the commands that draw and print.
class frm_Treeview : public TreeForm, private ProgressView {
    Q_OBJECT

  public:
    explicit frm_Treeview(const ScreenContext& context);

    void Load() override;
    /// LoadTree, RefreshTree, DrawDictionary, DrawChosen, ShowInTree.
    void Take(const ScreenRequest& request) override;
    ProgressView* Progress() override { return this; }

  private:
    void ShowStatus(const QString& text) override;
    void ShowProgress(Bar bar, const ProgressBar& state) override;

    void loadtreeform() override;
    void DrawAll(bool singlePage);
    void DrawPart(const DrawChosen& part);
    void Show(const FoundName& found);
    void ShowInDrawing(const FoundName& found);
    QBoxLayout* ProgressRow();
    void DrawSinglePage();
    void Maximize();

    DrawingPanel* panel_;
    QLabel *lblStatus_, *lblFile_;
    vbalProgressBar *vbalProgressBar1_, *vbalProgressBar3_;
};

}  // namespace norvelis::ui
