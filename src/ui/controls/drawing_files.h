#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace norvelis::ui {

/// The drawing last saved in this folder for a record, or for a whole schema under its own name; empty when
/// there is none.
QString SavedDrawing(const std::string& folder, std::string_view schema, std::string_view name);

}  // namespace norvelis::ui
