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

namespace {

int PageCountOf(engine::Document& document) {
    const auto pages = document.Pages();
    return pages ? pages->Count() : 0;
}

bool PrintEveryNthPage(engine::Document& document, int step) {
    const int count = PageCountOf(document);
    for (int page = 1; page <= count; page += step) {
        if (!PrintPage(document, page)) return false;
    }
    return count > 0;
}

bool Print(engine::Document& document, PrintMode mode, int step) {
    switch (mode) {
        case PrintMode::EveryNthPage:
            return PrintEveryNthPage(document, step);
        case PrintMode::OddPages:
            return PrintEveryNthPage(document, 2);
        case PrintMode::Document:
            break;
    }
    return document.Print();
}

}  // namespace

bool PrintPage(engine::Document& document, int page) {
    return page > PageCountOf(document) || document.PrintPage(page);
}

bool PrintDocument(Host& host, engine::Document& document, PrintMode mode, int step) {
    if (!Print(document, mode, step)) return false;
    host.MessageBox("Visio document has been sent to the Print");
    return true;
}

}  // namespace norvelis
