#pragma once

#include <QKeySequence>
#include <QShortcut>

namespace norvelis::ui {

/// What keys do while the focus is in a form or in a control of it. The result lives as long as the form.
template <typename Act>
QShortcut* OnKeys(QWidget* form, const QKeySequence& keys, Act act) {
    auto* shortcut = new QShortcut(keys, form);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    QObject::connect(shortcut, &QShortcut::activated, form, act);
    return shortcut;
}

}  // namespace norvelis::ui
