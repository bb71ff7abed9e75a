#include "diagram/drawing_state.h"

namespace norvelis {

void ShowText(DrawingState& drawing, const std::string& text) {
    drawing.app.progress.SetText(Bar::BackgroundText, text);
    drawing.app.progress.SetText(Bar::TreeviewText, text);
    drawing.screen.ShowText(text);
    drawing.app.host.Yield();
}

}  // namespace norvelis
