#include "ui/controls/layout_types.h"

#include <QWheelEvent>

#include "diagram/page_layout.h"

namespace norvelis::ui {

LayoutTypes::LayoutTypes(QWidget* parent) : QComboBox(parent) {
    setObjectName("LayoutTypes");
    setAccessibleName("Layout of the diagram");
    for (const LayoutType& type : kLayoutTypes)
        addItem(QString::fromUtf8(type.name.data(), static_cast<qsizetype>(type.name.size())));
}

void LayoutTypes::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

}  // namespace norvelis::ui
