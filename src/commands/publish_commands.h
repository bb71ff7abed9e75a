#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/app_state.h"
#include "engine/drawing_engine.h"
#include "engine/shape_links.h"

// A schema of the dictionary as a folder for the browser, drawing included.
namespace norvelis::commands {

/// A drawing file as SVG in which shapes lead elsewhere; RuntimeFailure when it cannot be read.
using DrawingAsSvg = std::function<std::string(const std::string& drawing, const engine::ShapeLinks& links)>;

/// What publishing draws with.
struct PublishTools {
    engine::DrawingEngine& engine;
    DrawingAsSvg asSvg;
};

struct Published {
    std::string page;                  ///< Path of the page.
    std::vector<std::string> missing;  ///< What the drawing lacks, in words; as a rule nothing.
};

/// Publishes a schema under the name that the dictionary has for it. Equal dictionaries give equal pages: the
/// drawing comes from a seed of its own. RuntimeFailure with words for a folder that cannot be taken or
/// written, and when nothing can be drawn; the folder is then as it was.
Published PublishSchema(AppState& app, const PublishTools& tools, const std::string& schema,
                        const std::string& folder);

/// The menu entry: asks which schema, when there are several, and for a folder, in which the schema gets one
/// of its name unless the folder is an edition of it. Gives the page when the person wants to see it.
std::optional<std::string> mnu_Publish(AppState& app, const PublishTools& tools);

}  // namespace norvelis::commands
