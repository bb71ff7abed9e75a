#pragma once

#include <QColor>

// Colours as numbers: red in the lowest byte, then green and blue.
namespace norvelis::ui {

inline int ColorNumber(const QColor& color) {
    return color.red() + color.green() * 0x100 + color.blue() * 0x10000;
}

inline QColor ColorOf(int number) {
    return QColor(number & 0xFF, (number >> 8) & 0xFF, (number >> 16) & 0xFF);
}

/// One of the sixteen classic colours; any other index is black.
QColor ClassicColor(int index);

}  // namespace norvelis::ui
