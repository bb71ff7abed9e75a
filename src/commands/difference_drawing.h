#pragma once

#include <optional>
#include <string>
#include <vector>

#include "compare/edition.h"
#include "core/app_state.h"
#include "diagram/draw_commands.h"

namespace norvelis::commands {

/// A drawing of differences, and in words what it lacks, if anything.
struct DrawnDifferences {
    DrawnFile drawn;
    std::vector<std::string> words;
};

/// Draws the present edition with what was added, removed, changed and renamed marked, removed records and
/// sets where they were, and a legend. The file is beside the schema's own drawing; `location` is the folder
/// of all drawings, else the one of the settings. Equal editions give equal drawings.
DrawnDifferences DrawDifferences(AppState& app, engine::DrawingEngine& engine,
                                 const compare::ComparedEditions& editions,
                                 const std::optional<std::string>& location);

}  // namespace norvelis::commands
