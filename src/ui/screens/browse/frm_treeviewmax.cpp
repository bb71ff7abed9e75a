#include "ui/screens/browse/frm_treeviewmax.h"

#include <QHBoxLayout>

#include "browse/tree_load.h"
#include "ui/controls/button_row.h"
#include "ui/skins/art/skin_files.h"

namespace norvelis::ui {

frm_Treeviewmax::frm_Treeviewmax(const ScreenContext& context)
    : TreeForm(context, "frm_Treeviewmax", "RECORDS TREEVIEW MAX", kLargeForm, kTreeviewMax) {
    auto* row = new QHBoxLayout;
    row->setSpacing(kMargin);
    row->addLayout(SearchRow(), 1);
    row->addLayout(TreeButtons());
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(kMargin, Body().top() + 12, kMargin, kMargin);
    column->setSpacing(8);
    column->addLayout(TreeAndPaging(), 1);
    column->addLayout(row);
}

void frm_Treeviewmax::Take(const ScreenRequest& request) {
    if (!std::holds_alternative<ShowLargerTree>(request)) return;
    const bool wasOpen = isVisible();
    App().host.OpenScreen(Screen::TreeviewMax, false);
    if (!wasOpen) RunLoad();
}

void frm_Treeviewmax::LoadINISettings() {
    SetTag2(kLargeFormTag);
}

}  // namespace norvelis::ui
