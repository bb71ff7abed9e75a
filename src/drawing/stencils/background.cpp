#include "drawing/stencils/background.h"

namespace norvelis::drawing::stencils {

Layer Filled(Frame frame, Path outline, std::string color, Fill fill, std::string color2) {
    Layer layer;
    layer.frame = frame;
    layer.outline = std::move(outline);
    layer.fill = fill;
    layer.color = std::move(color);
    layer.color2 = std::move(color2);
    return layer;
}

Layer Drawn(Frame frame, Path outline, std::string color, double weight, int dash) {
    Layer layer;
    layer.frame = frame;
    layer.outline = std::move(outline);
    layer.line = std::move(color);
    layer.weight = weight;
    layer.dash = dash;
    return layer;
}

Layer Wash(std::string top, std::string bottom) {
    const Fill fill = bottom.empty() ? Fill::Solid : Fill::TopToBottom;
    return Filled(Frame::Page(), Path().Rectangle(0, 0, 1, 1), std::move(top), fill, std::move(bottom));
}

}  // namespace norvelis::drawing::stencils
