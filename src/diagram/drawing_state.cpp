#include "diagram/drawing_state.h"

#include "base/name_key.h"
#include "base/text.h"

namespace norvelis {

void ShowText(DrawingState& drawing, const std::string& text) {
    drawing.app.progress.SetText(Bar::BackgroundText, text);
    drawing.app.progress.SetText(Bar::TreeviewText, text);
    drawing.screen.ShowText(text);
    drawing.app.host.Yield();
}

bool IsOfDrawnSchema(const DrawingState& drawing, const Recordset& row) {
    return SameName(Trim(row.Text("schemaname")), drawing.gDrawSchema);
}

}  // namespace norvelis
