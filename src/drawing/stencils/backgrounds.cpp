#include "drawing/stencils/backgrounds.h"

namespace norvelis::drawing::stencils {

std::vector<Background> Backgrounds() {
    return {Steel(),     HighTech(), Stripes(),   Web(),     Rain(),       Leaf(),
            Orbit(),     Horizon(),  World(),     Compass(), Clouds(),     City(),
            Mountains(), None(),     Geometric(), Cosmic(),  Expedition(), Tranquil()};
}

}  // namespace norvelis::drawing::stencils
