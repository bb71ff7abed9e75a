#pragma once

#include <QBoxLayout>

#include "ui/forms/screen_context.h"

namespace norvelis::ui {

/// Puts the button that cancels the running command at the end of a row of a form's progress. It is there
/// while a command runs; the row has its height at all times.
void AddCancelButton(const ScreenContext& context, QBoxLayout& row, QWidget* form);

}  // namespace norvelis::ui
