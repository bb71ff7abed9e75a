#include "diagram/print_drawing.h"

#include "base/paths.h"
#include "base/text.h"

namespace norvelis {

void PrintDrawing(AppState& app, engine::DrawingEngine& drawingEngine, const std::string& file,
                  const std::string& nothingToPrint) {
    const clsHourglass hourglass(app.host);
    if (Trim(file).empty() || !FileExists(file)) {
        app.host.MessageBox(nothingToPrint);
        return;
    }
    const auto application = drawingEngine.CreateHidden().value_or(nullptr);
    if (!application) {
        app.host.MessageBox("You must have Visio installed to perform this functions");
        return;
    }
    const auto documents = application->Documents();
    const auto document = documents ? documents->Open(file) : nullptr;
    if (document) {
        PrintDocument(app.host, *document);
    } else {
        app.host.MessageBox("This drawing can not be printed: " + file);
    }
    application->Quit();
}

bool PrintDocument(Host& host, engine::Document& document) {
    if (!document.Print()) return false;
    host.MessageBox("Visio document has been sent to the Print");
    return true;
}

}  // namespace norvelis
