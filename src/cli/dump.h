#pragma once

#include <optional>
#include <string>

#include "core/settings.h"
#include "store/connection.h"

namespace norvelis::cli {

/// The six dictionary tables as one JSON object on standard output: {"tables": {name: [row, …], …}}, columns
/// in their classic spelling, null as null, rows in order of insertion.
void PrintDump(Connection& store, const std::optional<std::string>& schema);

std::string SettingJson(const std::string& name, const Setting& setting);

}  // namespace norvelis::cli
