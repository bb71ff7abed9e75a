#include "ui/controls/layout_types.h"

#include <QKeyEvent>

#include "diagram/page_layout.h"

namespace norvelis::ui {

LayoutTypes::LayoutTypes(QWidget* parent) : QComboBox(parent) {
    setObjectName("LayoutTypes");
    setAccessibleName("Layout of the diagram");
    for (const LayoutType& type : kLayoutTypes)
        addItem(QString::fromUtf8(type.name.data(), static_cast<qsizetype>(type.name.size())));
    connect(this, &QComboBox::activated, this, [this] {
        if (!closedListHasKeys_) emit Picked();
    });
}

// The open list takes its keys itself.
void LayoutTypes::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        emit Picked();
        return;
    }
    closedListHasKeys_ = true;
    QComboBox::keyPressEvent(event);
    closedListHasKeys_ = false;
}

}  // namespace norvelis::ui
