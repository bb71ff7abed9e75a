#include "diagram/draw_sequence.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <system_error>

#include "base/failure.h"
#include "base/paths.h"
#include "base/text.h"
#include "core/places.h"
#include "core/settings.h"
#include "diagram/annotation.h"
#include "diagram/connectors.h"
#include "diagram/former_drawing.h"
#include "diagram/page_background.h"
#include "diagram/page_layout.h"
#include "diagram/record_shapes.h"
#include "diagram/shape_text.h"
#include "dictionary/records.h"

namespace norvelis {

namespace {

constexpr auto kSnapshotEvery = std::chrono::milliseconds(500);
constexpr int kSnapshotShare = 10;  // Of the time of a draw, one part goes into snapshots.

constexpr std::string_view kNotInstalled = "Visio is not installed. Please install Visio 2002 or better.";
constexpr std::string_view kMustHaveVisio = "You must have Visio installed to perform this functions";

}  // namespace

const DrawKind kDrawSingle{
    .colorsEachBox = false,
    .namesPage = true,
    .titleInCapitals = true,
    .showParent = &DrawScreen::EnsureVisible,
    .starting = "Creating Shapes....",
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
    .colorsEachBox = true,
    .namesPage = true,
    .titleInCapitals = false,
    .showParent = &DrawScreen::MarkNode,
    .starting = "",
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
    .colorsEachBox = true,
    .namesPage = false,
    .titleInCapitals = false,
    .showParent = &DrawScreen::SelectNode,
    .starting = "Creating Shapes......",
    .creating = "",
    .parentDone = "",
    .connecting = "Now Connecting Shapes..",
    .layingOut = "Arranging Shapes..",
    .arranging = "",
    .finished = "Done..",
    .engineFails = kMustHaveVisio,
    .engineIsNull = kMustHaveVisio,
};

const DrawKind kDrawChosen{
    .colorsEachBox = true,
    .namesPage = true,
    .titleInCapitals = false,
    .showParent = &DrawScreen::EnsureVisible,
    .starting = "Creating Shapes....",
    .creating = "",
    .parentDone = "",
    .connecting = "Now Connecting Shapes..",
    .layingOut = "Arranging Shapes..",
    .arranging = "",
    .finished = "Done..",
    .engineFails = kNotInstalled,
    .engineIsNull = kMustHaveVisio,
};

namespace {

std::string WithName(std::string_view text, const std::string& name) {
    return fmt::format(fmt::runtime(text), name);
}

void ShowStep(DrawingState& drawing, std::string_view text, const std::string& name) {
    if (!text.empty()) ShowText(drawing, WithName(text, name));
}

/// A name that is one file in its folder and cannot lead out of it.
bool IsFileName(const std::string& name) {
    return name != "." && name != ".." &&
           name.find_first_of(std::string_view("/\\\0", 3)) == std::string::npos;
}

/// The engine of one drawing; whichever way the drawing is left, the engine ends and the snapshots go.
class RunningEngine {
  public:
    RunningEngine(DrawingState& drawing, const DrawKind& kind, const DrawOrder& order) : drawing_(drawing) {
        const auto created =
            order.visible ? drawing.drawingEngine.CreateVisible() : drawing.drawingEngine.CreateHidden();
        if (!created) {
            drawing.report(std::string(kind.engineFails));
        } else if (!*created) {
            drawing.report(std::string(kind.engineIsNull));
        } else {
            drawing.VisioApp = *created;
            started_ = true;
        }
    }
    ~RunningEngine() {
        if (!started_) return;
        Quit();
        const std::string snapshots = drawing_.app.AppPath(places::kSnapshots);
        if (FolderExists(snapshots)) DeleteFolder(snapshots);
    }
    void Quit() {
        if (!drawing_.VisioApp) return;
        drawing_.VisioApp->Quit();
        drawing_.VisioApp.reset();
    }
    RunningEngine(const RunningEngine&) = delete;
    RunningEngine& operator=(const RunningEngine&) = delete;

  private:
    DrawingState& drawing_;
    bool started_ = false;
};

engine::Ref<engine::Document> NewDrawing(engine::Application& application) {
    application.SetAlertResponse(1);
    const auto documents = application.Documents();
    if (!documents) return nullptr;
    documents->Add("Basic Flowchart (US Units).vst");
    return documents->Item(1);
}

void ResetDrawing(DrawingState& drawing, const DrawKind& kind) {
    drawing.colorsEachBox = kind.colorsEachBox;
    drawing.colored = drawing.options.color.value_or(getdiagramcolor(drawing.app) == "True");
    drawing.storeHasIndexRows = dictionary::HasIndexBoxes(drawing.store);
    drawing.pointsOnA0 = kLabelPoints;
    drawing.values.clear();
    drawing.owners.clear();
    drawing.nextSnapshot = drawing.steadyNow() + kSnapshotEvery;
}

void BeginPage(DrawingState& drawing) {
    drawing.formerPage = nullptr;
    drawing.gDrawnShapes = {};
    drawing.gShapeIds = {};
    drawing.references.clear();
    drawing.drawnLines.clear();
    drawing.walked.clear();
    drawing.drawnRecords = 0;
    drawing.drawnSets.clear();
    drawing.shownValues.clear();
}

engine::SaveResult Save(engine::Document& document, const DrawOrder& order) {
    try {
        order.MakeFolder();
    } catch (const RuntimeFailure& failure) {
        return {false, failure.what()};
    }
    return document.SaveAs(order.File());
}

/// Everything from the empty page to the finished one.
void DrawPage(DrawingState& drawing, const DrawKind& kind, const std::string& name, const PageOrder& order,
              const PageRef& page, std::optional<PageMasters>& masters, const FormerDrawing& former) {
    BeginPage(drawing);
    order.addShapes(page);
    drawing.formerPage = former.PageNamed(page->Name());
    ShowStep(drawing, kind.connecting, name);
    ConnectAllShapes(drawing, *page);
    ShowStep(drawing, kind.layingOut, name);
    const std::string title = order.title.empty() ? name : order.title;
    const auto document = page->Document();
    if (!masters && document) masters = PreparePageMasters(drawing, *document);
    ReserveNotes(drawing, *page);
    if (masters)
        formatPageBackground(drawing, page, *masters, kind.titleInCapitals ? UpperCase(title) : title);
    SnapshotDrawing(drawing, *page);
    ShowStep(drawing, kind.arranging, name);
    AnnotateShapes(drawing, page);
    FontChange(*page);
    drawing.app.host.Yield();
    SnapshotDrawing(drawing, *page);
    FormatConnectorLabels(*page);
    drawing.app.host.Yield();
    page->PlaceNotes();
    drawing.pointsOnA0 = std::min(drawing.pointsOnA0, PointsOnA0(*page));
}

/// Everything from the empty drawing to the file.
engine::SaveResult DrawPages(DrawingState& drawing, const DrawKind& kind, const DrawOrder& order) {
    const auto document = NewDrawing(*drawing.VisioApp);
    const auto pages = document ? document->Pages() : nullptr;
    PageRef page = pages ? pages->Item(1) : nullptr;
    if (page) ShowStep(drawing, kind.starting, order.name);
    std::optional<PageMasters> masters;
    const FormerDrawing former(*drawing.VisioApp, drawing.options.fresh ? std::string() : order.File());
    for (const PageOrder& each : order.pages) {
        if (&each != &order.pages.front()) page = pages->Add();
        if (!page) return {false, "the drawing engine gives no page"};
        DrawPage(drawing, kind, order.name, each, page, masters, former);
    }
    ShowStep(drawing, kind.finished, order.name);
    drawing.app.host.Yield();  // The last one at which nothing is written yet.
    return Save(*document, order);
}

void SayWhatCancelKeeps(DrawingState& drawing) {
    const int saved = drawing.savedFiles;
    drawing.app.host.SetAfterCancel(
        saved == 0   ? "All drawings are as they were before."
        : saved == 1 ? "One drawing was saved; all others are as they were before."
                     : std::to_string(saved) + " drawings were saved; all others are as they were before.");
}

}  // namespace

std::string DrawOrder::File() const {
    return Resolve(location + "\\" + subfolder + "\\" + name + ".vsd");
}

void DrawOrder::MakeFolder() const {
    for (const std::string& part : {subfolder, name}) {
        if (!IsFileName(part))
            throw RuntimeFailure(FailureNumber::PathFileAccess, "\"" + part + "\" is no file name");
    }
    const std::string folder = Resolve(location + "\\" + subfolder);
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (!FolderExists(folder))
        throw RuntimeFailure(FailureNumber::PathFileAccess, folder + ": " + error.message());
}

std::string NotWritten(const engine::SaveResult& result) {
    if (!result.saved) return "The drawing was not written: " + result.failure;
    if (result.failure.empty()) return {};
    return "The .vsdx copy of the drawing was not written: " + result.failure;
}

void ReportNotWritten(DrawingState& drawing) {
    constexpr std::size_t kMost = 10;  // A full disk refuses the drawings of hundreds of records.
    const std::vector<std::string>& lines = drawing.notWritten;
    if (lines.empty()) return;
    std::string text = lines.front();
    for (std::size_t i = 1; i < std::min(lines.size(), kMost); ++i) text.append(kLineBreak).append(lines[i]);
    if (lines.size() > kMost)
        text.append(kLineBreak).append("and " + std::to_string(lines.size() - kMost) + " more");
    drawing.report(text);
}

DrawResult DrawDrawing(DrawingState& drawing, const DrawKind& kind, const DrawOrder& order) {
    SayWhatCancelKeeps(drawing);
    RunningEngine engine(drawing, kind, order);
    if (!drawing.VisioApp) return DrawResult::NoEngine;
    ResetDrawing(drawing, kind);
    const engine::SaveResult result = DrawPages(drawing, kind, order);
    engine.Quit();
    const std::string file = order.File();
    if (std::string words = NotWritten(result); !words.empty())
        drawing.notWritten.push_back(std::move(words));
    drawing.screen.ShowFile(file);
    if (result.saved) {
        ++drawing.savedFiles;
        drawing.screen.DrawingSaved(file);
    }
    SayWhatCancelKeeps(drawing);
    return result.saved ? DrawResult::Saved : DrawResult::NotSaved;
}

void AddParentToPage(DrawingState& drawing, const DrawKind& kind, const PageRef& page,
                     const std::string& recordName) {
    if (Trim(recordName).empty()) return;
    if (kind.namesPage) page->SetName(recordName);
    ShowStep(drawing, kind.creating, recordName);
    DrawRecordTree(drawing, page, recordName);
    SnapshotDrawing(drawing, *page);
    ShowStep(drawing, kind.parentDone, recordName);
}

void SnapshotDrawing(DrawingState& drawing, engine::Page& page) {
    const auto begin = drawing.steadyNow();
    if (!drawing.takesSnapshots || begin < drawing.nextSnapshot) return;
    const std::string folder = drawing.app.AppPath(places::kSnapshots);
    CreateFolder(folder);
    const std::string file = NativePath(fmt::format("{}\\{:.7g}.vsd", folder, drawing.app.random.Rnd() * 10));
    const auto document = page.Document();
    if (document && document->SaveAs(file)) drawing.screen.ShowFile(file);
    const auto end = drawing.steadyNow();
    drawing.nextSnapshot = std::max(begin + kSnapshotEvery, end + kSnapshotShare * (end - begin));
}

}  // namespace norvelis
