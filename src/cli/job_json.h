#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "scheduler/jobs.h"

namespace norvelis::cli {

/// A row of schedules with its columns by name; texts that are null stay null.
nlohmann::ordered_json JsonOf(const Job& job);

/// In one line; bytes that are no UTF-8 are replaced.
std::string TextOf(const nlohmann::ordered_json& json);

}  // namespace norvelis::cli
