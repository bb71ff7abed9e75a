#pragma once

#include "core/host.h"
#include "ui/form.h"

class QTreeView;

namespace norvelis::ui {

class RecordTreeModel;
class SkinButton;
class vbalProgressBar;

/// The record tree: every schema of the dictionary, its entry records, and below each record its members.
class frm_Treeview : public Form {
    Q_OBJECT

  public:
    explicit frm_Treeview(mdiMainMenu& frame);

    void loadtreeform();     ///< Fills the tree from the store, under the wait cursor.
    void process_Refresh();  ///< The same without wait cursor and log.

    void ShowStatus(const QString& text);
    void ShowProgress(Bar bar, const ProgressBar& state);

  private:
    QTreeView* Tview_;
    RecordTreeModel* model_;
    QLabel* lblStatus_;
    vbalProgressBar *vbalProgressBar1_, *vbalProgressBar3_;
};

}  // namespace norvelis::ui
