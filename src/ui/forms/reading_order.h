#pragma once

#include <vector>

class QWidget;

namespace norvelis::ui {

/// The controls that the Tab key reaches, in the order in which the form's layouts have them: a column from
/// top to bottom, a row from left to right, and each part of the form before the next.
std::vector<QWidget*> ReadingOrder(QWidget& form);

/// Makes that order the one of the Tab key.
void SetReadingOrder(QWidget& form);

}  // namespace norvelis::ui
