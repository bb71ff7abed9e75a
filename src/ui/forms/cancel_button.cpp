#include "ui/forms/cancel_button.h"

#include "ui/controls/picture_controls.h"

namespace norvelis::ui {

void AddCancelButton(const ScreenContext& context, QBoxLayout& row, QWidget* form) {
    auto* button = new SkinButton("cmdCancel", "CANCEL", form);
    button->setToolTip("Cancel the running command (Escape)");
    context.commands.CancelsBy(button);
    row.addWidget(button);
    row.addStrut(button->sizeHint().height());
}

}  // namespace norvelis::ui
