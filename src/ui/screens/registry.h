#pragma once

#include <span>

#include "ui/forms/screen_entry.h"

namespace norvelis::ui {

/// Every screen of the program, once. The main frame makes them from here and knows none of them by class.
std::span<const ScreenEntry> AllScreens();

}  // namespace norvelis::ui
