#include "diagram/draw_sequence.h"

#include <fmt/format.h>

#include <filesystem>

#include "core/paths.h"
#include "core/text.h"
#include "diagram/annotation.h"
#include "diagram/connectors.h"
#include "diagram/page_background.h"
#include "diagram/record_shapes.h"
#include "diagram/shape_text.h"
#include "store/settings.h"

namespace norvelis {

namespace {

constexpr auto kSnapshotEvery = std::chrono::milliseconds(500);

constexpr std::string_view kNotInstalled = "Visio is not installed. Please install Visio 2002 or better.";
constexpr std::string_view kMustHaveVisio = "You must have Visio installed to perform this functions";

}  // namespace

const DrawKind kDrawSingle{
    .gSingleDrawing = true,
    .titleInCapitals = true,
    .creating = "Creating Shapes....",
    .parentDone = "Connecting Shapes..",
    .connecting = "",
    .layingOut = "",
    .arranging = "",
    .finished = "",
    .engineFails = kNotInstalled,
    .engineIsNull = kMustHaveVisio,
};

const DrawKind kDrawSeparate{
    .gSingleDrawing = false,
    .titleInCapitals = false,
    .creating = "Creating Shapes from shape: {}",
    .parentDone = "",
    .connecting = "Now Connecting the Shapes..",
    .layingOut = "Layingout the Shapes..",
    .arranging = "Arranging the Shapes..",
    .finished = "Finished Drawing shapes from: {}",
    .engineFails = kNotInstalled,
    .engineIsNull = kMustHaveVisio,
};

const DrawKind kDrawIsolated{
    .gSingleDrawing = false,
    .titleInCapitals = false,
    .creating = "Creating Shapes......",
    .parentDone = "",
    .connecting = "Now Connecting Shapes..",
    .layingOut = "Arranging Shapes..",
    .arranging = "",
    .finished = "Done..",
    .engineFails = kMustHaveVisio,
    .engineIsNull = kMustHaveVisio,
};

namespace {

std::string WithName(std::string_view text, const std::string& name) {
    return fmt::format(fmt::runtime(text), name);
}

void ShowStep(DrawingState& drawing, std::string_view text, const std::string& name) {
    if (!text.empty()) ShowText(drawing, WithName(text, name));
}

/// A name that stands for one file in its folder and cannot lead out of it.
bool IsFileName(const std::string& name) {
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of(std::string_view("/\\\0", 3)) == std::string::npos;
}

/// The engine of one drawing; whichever way the drawing is left, the engine ends and the snapshots go.
class RunningEngine {
  public:
    RunningEngine(DrawingState& drawing, const DrawKind& kind, const DrawOrder& order) : drawing_(drawing) {
        const auto created =
            order.visible ? drawing.drawingEngine.CreateVisible() : drawing.drawingEngine.CreateHidden();
        if (!created) {
            order.tell(std::string(kind.engineFails));
        } else if (!*created) {
            order.tell(std::string(kind.engineIsNull));
        } else {
            drawing.VisioApp = *created;
        }
    }
    ~RunningEngine() {
        if (!drawing_.VisioApp) return;
        drawing_.VisioApp->Quit();
        drawing_.VisioApp.reset();
        const std::string snapshots = drawing_.app.AppPath("\\Temp");
        if (FolderExists(snapshots)) DeleteFolder(snapshots);
    }
    RunningEngine(const RunningEngine&) = delete;
    RunningEngine& operator=(const RunningEngine&) = delete;

  private:
    DrawingState& drawing_;
};

engine::Ref<engine::Document> NewDrawing(engine::Application& application) {
    application.SetAlertResponse(1);
    const auto documents = application.Documents();
    if (!documents) return nullptr;
    documents->Add("Basic Flowchart (US Units).vst");
    return documents->Item(1);
}

void ResetDrawing(DrawingState& drawing, const DrawKind& kind) {
    drawing.gSingleDrawing = kind.gSingleDrawing;
    drawing.colored = drawing.options.color.value_or(getdiagramcolor(drawing.app) == "True");
    drawing.gDrawnShapes = {};
    drawing.gShapeIds = {};
    drawing.walked.clear();
    if (drawing.lastSnapshot == std::chrono::steady_clock::time_point{}) {
        drawing.lastSnapshot = drawing.steadyNow();
    }
}

bool Save(engine::Document& document, const DrawOrder& order) {
    if (!IsFileName(order.subfolder) || !IsFileName(order.name)) return false;
    const std::string file = order.File();
    CreateFolder(std::filesystem::path(file).parent_path().string());
    return document.SaveAs(file);
}

}  // namespace

std::string DrawOrder::File() const {
    return NativePath(location + "\\" + subfolder + "\\" + name + ".vsd");
}

DrawResult DrawDrawing(DrawingState& drawing, const DrawKind& kind, const DrawOrder& order) {
    const RunningEngine engine(drawing, kind, order);
    if (!drawing.VisioApp) return DrawResult::NoEngine;
    ResetDrawing(drawing, kind);
    const auto document = NewDrawing(*drawing.VisioApp);
    const auto pages = document ? document->Pages() : nullptr;
    const PageRef page = pages ? pages->Item(1) : nullptr;
    if (!page) return DrawResult::NotSaved;

    order.addShapes(page);
    ShowStep(drawing, kind.connecting, order.name);
    ConnectAllShapes(drawing, *page);
    ShowStep(drawing, kind.layingOut, order.name);
    formatPageBackground(drawing, page, kind.titleInCapitals ? UpperCase(order.name) : order.name);
    SnapshotDrawing(drawing, *page);
    ShowStep(drawing, kind.arranging, order.name);
    AnnotateShapes(drawing, page);
    FontChange(*page);
    SnapshotDrawing(drawing, *page);
    FormatConnectorLabels(*page);
    page->PlaceNotes();
    ShowStep(drawing, kind.finished, order.name);

    const bool saved = Save(*document, order);
    drawing.screen.ShowFile(order.File());
    return saved ? DrawResult::Saved : DrawResult::NotSaved;
}

void AddParentToPage(DrawingState& drawing, const DrawKind& kind, const PageRef& page,
                     const std::string& recordName) {
    if (Trim(recordName).empty()) return;
    page->SetName(recordName);
    ShowStep(drawing, kind.creating, recordName);
    DrawRecordTree(drawing, page, recordName);
    SnapshotDrawing(drawing, *page);
    ShowStep(drawing, kind.parentDone, recordName);
}

void SnapshotDrawing(DrawingState& drawing, engine::Page& page) {
    const auto now = drawing.steadyNow();
    if (now - drawing.lastSnapshot < kSnapshotEvery) return;
    drawing.lastSnapshot = now;
    const std::string folder = drawing.app.AppPath("\\Temp");
    CreateFolder(folder);
    const std::string file = NativePath(fmt::format("{}\\{:.7g}.vsd", folder, drawing.app.random.Rnd() * 10));
    const auto document = page.Document();
    if (document && document->SaveAs(file)) drawing.screen.ShowFile(file);
}

}  // namespace norvelis
