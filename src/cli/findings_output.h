#pragma once

#include <nlohmann/json.hpp>
#include <vector>

#include "extract/findings.h"
#include "extract/repair/repair.h"

namespace norvelis::cli {

/// Warnings on standard error, the first twenty and then a count; all notes too when they are wanted.
void PrintFindings(const std::vector<Finding>& findings, bool notes);

/// What repair did, on standard error.
void PrintChanges(const std::vector<repair::Change>& changes);

/// Keys warnings, notes (counts), findings and changes, for the JSON object of a command.
void AddFindings(nlohmann::ordered_json& object, const std::vector<Finding>& findings,
                 const std::vector<repair::Change>& changes);

}  // namespace norvelis::cli
