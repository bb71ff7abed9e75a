#pragma once

#include <string>
#include <string_view>

#include "core/app_state.h"

namespace norvelis::ui {

/// The drawing last saved for a record, or for a whole schema under its own name; empty when there is none.
std::string SavedDrawing(AppState& app, std::string_view schema, std::string_view name);

}  // namespace norvelis::ui
