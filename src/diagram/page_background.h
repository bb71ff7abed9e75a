#pragma once

#include <string>

#include "diagram/drawing_state.h"
#include "diagram/legend.h"

// The look of a page: the chosen background, a title block in the upper left corner, both on a locked layer.
namespace norvelis {

/// What the looks of a drawing's pages are made of. Without the title's stencil nothing is.
struct PageMasters {
    engine::Ref<engine::Master> background, title;
    LegendMasters legend;
    bool complete = false;
};
PageMasters PreparePageMasters(DrawingState& drawing, engine::Document& document);

/// Background and title of one page, then its layout by the chosen type.
void formatPageBackground(DrawingState& drawing, const PageRef& page, const std::string& title);
/// The same for one of several pages, whose masters are prepared once.
void formatPageBackground(DrawingState& drawing, const PageRef& page, const PageMasters& masters,
                          const std::string& title);

/// Background and title of every page of a drawing, and the date and time in its printed footer; no layout.
void formatBackgroundAndTitle(DrawingState& drawing, engine::Document& document, const std::string& title);

/// A finished drawing with background and title, its own title being the file's name, saved.
engine::SaveResult SaveWithBackground(DrawingState& drawing, engine::Document& document,
                                      const std::string& fileName);

}  // namespace norvelis
