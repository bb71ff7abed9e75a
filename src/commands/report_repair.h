#pragma once

#include <cstddef>
#include <string>

#include "core/app_state.h"

// Repair as it is offered to a person: the repaired report is written beside the file, which stays as it is,
// and becomes the report of the settings and gReportFile, so that from then on everything reads that one.
// False when repair does not help, was declined, or could not be written, which a box says.
namespace norvelis::commands {

/// For a file that was refused as no report, when repair makes one of it.
bool OfferRepairOfInvalid(AppState& app, const std::string& path);

/// For gReportFile, whose extraction had this many warnings, when it has fewer once repaired.
bool OfferRepairForWarnings(AppState& app, std::size_t warnings);

}  // namespace norvelis::commands
