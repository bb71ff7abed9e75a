#pragma once

#include <string>

#include "engine/drawing_engine.h"

namespace norvelis {

/// The drawing that a draw replaces, whose layout the new one goes by so that readers find everything again.
/// It is only read. A file that is not there, or is no drawing of ours, has no pages.
class FormerDrawing {
  public:
    /// An empty file name: there is none.
    FormerDrawing(engine::Application& application, const std::string& file);

    /// The page of this name; of a drawing of one page that one, since it is named after what was drawn last.
    engine::Ref<engine::Page> PageNamed(const std::string& name) const;

  private:
    engine::Ref<engine::Pages> pages_;
};

}  // namespace norvelis
