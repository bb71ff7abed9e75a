#include "ui/controls/button_row.h"

#include "ui/controls/picture_controls.h"

namespace norvelis::ui {

ButtonRow::ButtonRow(QWidget* form) : form_(form) {
    setSpacing(kGap);
}

SkinButton* ButtonRow::Add(const QString& name, const QString& caption, const QString& toolTip,
                           const std::function<void()>& command) {
    auto* button = new SkinButton(name, caption, form_);
    button->setToolTip(toolTip);
    QObject::connect(button, &QPushButton::clicked, form_, command);
    addWidget(button);
    return button;
}

}  // namespace norvelis::ui
