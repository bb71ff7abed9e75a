#include "diagram/draw_commands.h"

#include <algorithm>
#include <filesystem>

#include "base/failure.h"
#include "base/paths.h"
#include "base/text.h"
#include "core/places.h"
#include "core/settings.h"
#include "diagram/color.h"
#include "diagram/draw_chosen.h"
#include "diagram/draw_preparation.h"
#include "diagram/page_layout.h"
#include "diagram/record_choice.h"
#include "dictionary/schemas.h"

namespace norvelis {

namespace {

const std::string kDone = "Done Drawing. File saved as:";
const std::string kNoLocation = "You must select a location to store visio files.";

bool Confirmed(DrawingState& drawing, const std::string& text, const std::string& title) {
    return drawing.app.host.MessageBox({text, title, Buttons::YesNo, Icon::Information, Answer::No}) ==
           Answer::Yes;
}

bool WantsToWatch(DrawingState& drawing) {
    if (drawing.options.visible) return *drawing.options.visible;
    return drawing.app.host.MessageBox({"Want to View While Norvelis is drawing", "Hide or Show Visio",
                                        Buttons::YesNo, Icon::Question, Answer::Ok}) == Answer::Yes;
}

/// The folder of a file that the person picks becomes the setting. Empty when none was picked.
std::string AskVisioFolder(DrawingState& drawing) {
    const auto picked = drawing.app.host.OpenFileDialog("", "*.*");
    if (!picked) return {};
    const std::string folder(Trim(std::filesystem::path(NativePath(*picked)).parent_path().string()));
    setvisiolocation(drawing.app, folder);
    return folder;
}

std::vector<std::string> ParentsOf(DrawingState& drawing, const std::string& schema) {
    std::vector<std::string> names;
    auto row = dictionary::EntryRecords(drawing.store, schema);
    for (; !row.Eof(); row.MoveNext()) names.push_back(row.Text("recordname"));
    return names;
}

std::vector<std::string> TrimmedNames(Recordset row) {
    std::vector<std::string> names;
    for (; !row.Eof(); row.MoveNext()) names.emplace_back(Trim(row.Text("schemaname")));
    return names;
}

/// All parents of a schema on one page, each tree in a colour of its own. Further nodes of a name could add
/// nothing.
void AddAllParents(DrawingState& drawing, const DrawKind& kind, const PageRef& page,
                   const std::string& schema, const RecordTree* tree) {
    const std::vector<std::string> parents = ParentsOf(drawing, schema);
    ProgressSetMax(drawing, static_cast<int>(parents.size()));
    for (const std::string& parent : parents) {
        drawing.gOwnerColor = PickLightColor(drawing.app.random);
        ProgressStep(drawing);
        if (tree != nullptr) {
            const NodeIndex node = tree->FirstOf(parent, schema);
            if (node == kNoNode) continue;
            (drawing.screen.*kind.showParent)(node);
        }
        AddParentToPage(drawing, kind, page, parent);
    }
}

DrawOrder OrderOfSchema(DrawingState& drawing, const std::string& schema, const RecordTree* tree) {
    DrawOrder order;
    order.name = schema;
    order.subfolder = schema;
    order.pages = {{[&drawing, schema, tree](const PageRef& page) {
        drawing.gDrawSchema = schema;
        AddAllParents(drawing, kDrawSingle, page, schema, tree);
    }}};
    return order;
}

DrawOrder OrderOfRecord(DrawingState& drawing, const DrawKind& kind, const std::string& location,
                        const std::string& schema, const std::string& recordName, bool visible) {
    DrawOrder order;
    order.name = recordName;
    order.location = location;
    order.subfolder = schema;
    order.visible = visible;
    order.pages = {{[&drawing, &kind, schema, recordName](const PageRef& page) {
        drawing.gDrawSchema = schema;
        AddParentToPage(drawing, kind, page, recordName);
    }}};
    return order;
}

/// An engine that ends when the scope is left; null where there is none.
class HiddenEngine {
  public:
    explicit HiddenEngine(engine::DrawingEngine& engine)
        : application_(engine.CreateHidden().value_or(nullptr)) {}
    ~HiddenEngine() {
        if (application_) application_->Quit();
    }
    HiddenEngine(const HiddenEngine&) = delete;
    HiddenEngine& operator=(const HiddenEngine&) = delete;
    engine::Application* Get() const { return application_.get(); }

  private:
    engine::Ref<engine::Application> application_;
};

}  // namespace

namespace {

const RecordChoice kByArea{.kind = RecordChoice::Kind::ByArea};

/// On one page, or on a page for each area, as the person chose.
void DrawDictionary(DrawingState& drawing, const std::string& schema, const RecordTree* tree) {
    if (!drawing.options.pageForEachArea) {
        DrawVisioDiagramSingle(drawing, schema, tree);
        return;
    }
    const DrawnFile drawn = DrawChosenRecords(drawing, schema, kByArea);
    if (!drawn.file.empty() && drawn.result != DrawResult::NoEngine) drawing.report(kDone + drawn.file);
}

}  // namespace

void DrawVisioDiagram(DrawingState& drawing, const RecordTree* tree) {
    drawing.app.progress.SetText(Bar::TreeviewText, "Preparing to Draw, Please Wait..");
    if (!drawing.gSingleDrawing) {
        DrawVisioDiagramSeparate(drawing, tree);
        return;
    }
    const std::string question =
        std::string("This Process may take some time.").append(kLineBreak).append("Do you want to continue?");
    if (!Confirmed(drawing, question, "Please Confirm")) return;
    for (const std::string& schema : TrimmedNames(dictionary::Schemas(drawing.store))) {
        if (Confirmed(drawing, "Draw diagram for dictionary " + schema + "?", schema)) {
            DrawDictionary(drawing, schema, tree);
        }
    }
}

namespace {

DrawResult DrawWhole(DrawingState& drawing, DrawOrder& order) {
    order.visible = WantsToWatch(drawing);
    order.location = DrawingLocation(drawing);
    return DrawDrawing(drawing, kDrawSingle, order);
}

}  // namespace

DrawResult DrawNamelessSchema(DrawingState& drawing, const std::string& name) {
    DrawOrder order = OrderOfSchema(drawing, {}, nullptr);
    order.name = order.subfolder = name;
    return DrawWhole(drawing, order);
}

DrawResult DrawVisioDiagramSingle(DrawingState& drawing, const std::string& schema, const RecordTree* tree) {
    drawing.BeginCommand();
    DrawResult result;
    DrawOrder order = OrderOfSchema(drawing, schema, tree);
    {
        const ShownBars bars = BarsFromNothing(drawing.app.progress);
        if (schema.empty()) {
            drawing.report("Request denied. Visio File to be generated must be named.");
            return DrawResult::NotSaved;
        }
        result = DrawWhole(drawing, order);
    }
    ReportNotWritten(drawing);
    if (result != DrawResult::NoEngine) {
        drawing.report(kDone + order.File());
    }
    return result;
}

DrawnFile DrawMarkedSchema(DrawingState& drawing, const std::string& schema) {
    drawing.BeginCommand();
    const ShownBars bars = BarsFromNothing(drawing.app.progress);
    DrawOrder order = OrderOfSchema(drawing, schema, nullptr);
    if (schema.empty()) order.subfolder = kNameless;
    order.name = order.subfolder + " differences";
    return {DrawWhole(drawing, order), order.File()};
}

void DrawVisioDiagramSeparate(DrawingState& drawing, const RecordTree* tree) {
    const bool visible = WantsToWatch(drawing);
    std::string location = ChosenLocation(drawing);
    if (location.empty()) location = AskVisioFolder(drawing);
    if (location.empty()) {
        drawing.report(kNoLocation);
        return;
    }
    for (const auto& schema : TrimmedNames(dictionary::SchemasByName(drawing.store))) {
        drawing.gDrawSchema = schema;
        if (DrawVisioDiagramSeparateParent(drawing, tree, visible).noEngine) return;
    }
    drawing.report(
        std::string("Done Drawing. Visio Files saved at folder:").append(kLineBreak).append(location));
}

namespace {

SeparateResult DrawParents(DrawingState& drawing, const RecordTree* tree, bool visible) {
    SeparateResult result;
    const ShownBars bars = BarsFromNothing(drawing.app.progress);
    const std::vector<std::string> parents = ParentsOf(drawing, drawing.gDrawSchema);
    ProgressSetMax(drawing, static_cast<int>(parents.size()));
    for (const std::string& parent : parents) {
        ProgressStep(drawing);
        if (tree != nullptr) {
            const NodeIndex node = tree->FirstOf(parent);
            if (node == kNoNode) continue;
            (drawing.screen.*kDrawSeparate.showParent)(node);
        }
        const std::string name(Trim(parent));
        if (name.empty()) continue;
        switch (DrawParentDrawing(drawing, name, visible)) {
            case DrawResult::Saved:
                ++result.saved;
                break;
            case DrawResult::NotSaved:
                result.notSaved.push_back(name);
                break;
            case DrawResult::NoEngine:
                result.noEngine = true;
                return result;
        }
    }
    return result;
}

}  // namespace

SeparateResult DrawVisioDiagramSeparateParent(DrawingState& drawing, const RecordTree* tree, bool visible) {
    drawing.BeginCommand();
    SeparateResult result = DrawParents(drawing, tree, visible);
    ReportNotWritten(drawing);
    return result;
}

DrawResult DrawParentDrawing(DrawingState& drawing, const std::string& recordName, bool visible) {
    std::string location = ChosenLocation(drawing);
    if (location.empty()) {
        location = DefaultLocation(drawing);
        setvisiolocation(drawing.app, location);
    }
    drawing.gDrawFileName = recordName;
    return DrawDrawing(
        drawing, kDrawSeparate,
        OrderOfRecord(drawing, kDrawSeparate, location, drawing.gDrawSchema, recordName, visible));
}

DrawResult DrawScheduledDiagram(DrawingState& drawing, const std::string& schema, const std::string& job) {
    drawing.BeginCommand();
    DrawOrder order = OrderOfSchema(drawing, schema, nullptr);
    if (schema.empty()) order.name = kNameless;
    order.location = drawing.app.AppPath(places::kBatchJobs);
    order.subfolder = job;
    drawing.takesSnapshots = false;
    const DrawResult result = DrawDrawing(drawing, kDrawSingle, order);
    ReportNotWritten(drawing);
    return result;
}

DrawResult ProcessSingle(DrawingState& drawing, const std::string& schema, const RecordTree& Tviewrec) {
    drawing.BeginCommand();
    try {
        ShowText(drawing, "Preparing to Draw, Please Wait..");
        std::string location = ChosenLocation(drawing);
        if (location.empty()) location = AskVisioFolder(drawing);
        if (location.empty()) {
            drawing.report(kNoLocation);
            return DrawResult::NoEngine;
        }
        const std::string target = Tviewrec.Size() > 0 ? Tviewrec.Text(0) : "";
        DrawOrder order = OrderOfRecord(drawing, kDrawIsolated, location, schema, target, false);
        if (target.empty()) return DrawResult::NoEngine;
        if (target == schema && drawing.options.pageForEachArea)
            return DrawChosenRecords(drawing, schema, kByArea).result;
        order.MakeFolder();
        order.visible = WantsToWatch(drawing);
        if (target == schema) {
            order.pages = {{[&](const PageRef& page) {
                drawing.gDrawSchema = schema;
                AddAllParents(drawing, kDrawIsolated, page, schema, &Tviewrec);
            }}};
        }
        const DrawResult result = DrawDrawing(drawing, kDrawIsolated, order);
        ReportNotWritten(drawing);
        if (result != DrawResult::NotSaved) return result;
    } catch (const RuntimeFailure& failure) {
        drawing.report(NotWritten({false, failure.what()}));
    }
    drawing.report("Error has been encountered. Close visio and try again.");
    return DrawResult::NotSaved;
}

DrawResult DrawIsolatedRecord(DrawingState& drawing, const std::string& schema, const std::string& recordName,
                              bool visible) {
    drawing.BeginCommand();
    const DrawResult result = DrawDrawing(
        drawing, kDrawIsolated,
        OrderOfRecord(drawing, kDrawIsolated, DrawingLocation(drawing), schema, recordName, visible));
    ReportNotWritten(drawing);
    return result;
}

engine::SaveResult ApplyLayoutToFile(DrawingState& drawing, const std::string& file) {
    if (file.empty() || !FileExists(file)) return {};
    Host& host = drawing.app.host;
    host.SetAfterCancel("The drawing is as it was before.");
    const clsHourglass hourglass(host);
    const HiddenEngine engine(drawing.drawingEngine);
    if (!engine.Get()) return {};
    const std::string path = Resolve(file);
    const auto documents = engine.Get()->Documents();
    const auto document = documents ? documents->Open(path) : nullptr;
    if (!document) return {false, path + " can be shown, not rewritten"};
    const auto pages = document->Pages();
    const int count = pages ? pages->Count() : 0;
    if (count == 0) return {};
    for (int i = 1; i <= count; ++i) {
        const PageRef page = pages->Item(i);
        if (!page) return {};
        ApplyLayout(host, *page, drawing.options.layout);
        page->PlaceNotes();
        host.Yield();
    }
    return document->SaveAs(path);
}

}  // namespace norvelis
