#pragma once

#include "ui/screens/browse/tree_form.h"

namespace norvelis::ui {

/// The larger tree screen: the same tree in the store's own order of records, without a drawing beside it.
class frm_Treeviewmax : public TreeForm {
    Q_OBJECT

  public:
    explicit frm_Treeviewmax(const ScreenContext& context);

    void Take(const ScreenRequest& request) override;  ///< ShowLargerTree.

  protected:
    void LoadINISettings() override;
};

}  // namespace norvelis::ui
