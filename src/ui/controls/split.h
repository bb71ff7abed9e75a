#pragma once

#include <QSplitter>

namespace norvelis::ui {

/// Two parts of a screen with a handle between them, by which a person makes one larger at the cost of the
/// other; neither can be dragged away. Sizes are in points along the orientation.
inline QSplitter* Split(Qt::Orientation orientation, QWidget* first, QWidget* second, int firstSize,
                        int secondSize) {
    auto* parts = new QSplitter(orientation);
    parts->setChildrenCollapsible(false);
    parts->setHandleWidth(orientation == Qt::Vertical ? 8 : 10);
    parts->addWidget(first);
    parts->addWidget(second);
    parts->setSizes({firstSize, secondSize});
    return parts;
}

}  // namespace norvelis::ui
