#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <fstream>
#include <limits>
#include <set>

#include "browse/next_step.h"
#include "core/settings.h"
#include "diagram/draw_commands.h"
#include "drawing/arrange/page_arrangement.h"
#include "drawing/automation/create_engine.h"
#include "drawing/package/package.h"
#include "extract/driver.h"
#include "layout/dot.h"
#include "testing/report_generator.h"
#include "testing/test_store.h"

// How long drawings take: a whole schema from the store to the saved file, beside the time in which Graphviz
// dot places the same graph; one record and what is below it; and the engine alone, building and saving.
namespace norvelis {
namespace {

double Seconds(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// A generated schema in a store of its own, and the real engine.
struct Studio {
    Studio(int records, int sets) {
        const std::string report = test.folder.Path("report.txt");
        std::ofstream(report, std::ios::binary) << GenerateSchemaReport(records, sets, 3, 1);
        setreportlocation(test.app, report);
        process_Classic_Extract_Report(test.app, InteractiveDriver(test.app, {}),
                                       ValidateReportFile(getreportlocation(test.app)));
        draw.options.location = test.folder.Path("drawings");
        draw.gDrawSchema = test.app.gSchemaName;
        test.host.answers.assign(100000, Answer::No);
    }
    std::string File() const { return test.folder.Path("drawings/BULKSCHM/BULKSCHM.vsd"); }

    TestApp test;
    std::unique_ptr<engine::DrawingEngine> engine =
        drawing::MakeDrawingEngine({NORVELIS_APP "/Stencils", test.app.AppPath("\\Temp"), nullptr});
    DrawScreen screen;
    DrawingState draw{test.app, *test.app.gConnection, *engine, screen};
};

/// What a saved drawing shows, as dot is asked to place it.
layout::Graph GraphIn(const std::string& file) {
    drawing::Workshop workshop({});
    drawing::OpenDocument document(workshop, drawing::ReadPackageFile(file), "", false);
    drawing::Page& page = *document.model->pages.front();
    layout::Graph graph;
    std::map<int, int> boxes, begins;
    for (const auto& shape : page.shapes) {
        if (RoleOf(page, *shape) != drawing::Role::Box) continue;
        boxes[shape->id] = static_cast<int>(graph.boxes.size());
        const Rect block = BlockOf(document, page, *shape);
        graph.boxes.push_back({block.Width(), block.Height()});
    }
    for (const auto& connect : page.connects) {
        if (!boxes.contains(connect.toSheet)) continue;
        if (connect.fromCell == "BeginX") {
            begins[connect.fromSheet] = boxes[connect.toSheet];
        } else {
            const Rect label = LabelOf(document, page, *page.ById(connect.fromSheet));
            graph.lines.push_back(
                {begins[connect.fromSheet], boxes[connect.toSheet], label.Width(), label.Height()});
        }
    }
    return graph;
}

void WholeSchema(int records, int sets) {
    Studio studio(records, sets);
    const double ours = Seconds([&] { DrawVisioDiagramSingle(studio.draw, "BULKSCHM", nullptr); });
    const layout::Graph graph = GraphIn(studio.File());
    const auto dot = layout::DrawWithDot(graph, false);
    const double theirs = dot ? dot->seconds : 0;
    fmt::print("| {} | {} | {:.2f} | {} | {} |\n", graph.boxes.size(), graph.lines.size(), ours,
               dot ? fmt::format("{:.2f}", theirs) : "-", dot ? fmt::format("{:.2f}", ours / theirs) : "-");
}

/// Records that can be reached from one, up to a limit.
std::size_t Reach(Connection& store, const std::string& record, std::size_t limit) {
    std::set<std::string> seen{record};
    std::vector<std::string> open{record};
    while (!open.empty() && seen.size() <= limit) {
        const auto row = store.Select("Select * FROM Record_Details where recordname = ?", {open.back()});
        open.pop_back();
        if (row.Eof()) continue;
        for (const auto& member : SplitNextStep(row.Text("next_step"))) {
            if (seen.insert(member).second) open.push_back(member);
        }
    }
    return seen.size();
}

void SeparateFiles(int records, int sets) {
    constexpr std::size_t kOrdinary = 30;
    Studio studio(records, sets);
    Connection& store = *studio.test.app.gConnection;
    std::vector<std::string> chosen;
    std::size_t boxes = 0;
    for (auto row = store.Select("Select * FROM Parents"); !row.Eof() && chosen.size() < 60; row.MoveNext()) {
        const std::size_t reach = Reach(store, row.Text("recordname"), kOrdinary);
        if (reach < 4 || reach > kOrdinary) continue;
        boxes += reach;
        chosen.push_back(row.Text("recordname"));
    }
    const double seconds = Seconds([&] {
        for (const auto& record : chosen) DrawParentDrawing(studio.draw, record, false);
    });
    const auto files = static_cast<double>(chosen.size());
    fmt::print("| {} | {:.1f} | {:.1f} |\n", chosen.size(), static_cast<double>(boxes) / files,
               files / seconds);
}

/// Boxes with the text of record boxes and lines between them, without placement.
double BuildAndSave(engine::DrawingEngine& engine, int boxes, int lines, const std::string& file) {
    return Seconds([&] {
        const auto application = *engine.CreateHidden();
        const auto page = application->Documents()->Add("Basic Flowchart (US Units).vst")->Pages()->Item(1);
        const auto masters =
            application->Documents()->OpenEx("Basic Flowchart Shapes (US units).vss", 6)->Masters();
        const auto process = masters->Item("Process"), connector = masters->Item("Dynamic Connector");
        std::vector<engine::Ref<engine::Shape>> shapes;
        for (int i = 0; i < boxes; ++i) {
            const auto shape = page->Drop(process, i % 100, i / 100);
            const auto characters = shape->Characters();
            const std::string rule(52, '-');
            for (const auto& [text, color] : {std::pair{fmt::format("RECORD-{:05}", i), 2},
                                              {"\n" + rule, 0},
                                              {std::string("\n0415 | F | 116 | CALC"), 4},
                                              {"\n" + rule, 0},
                                              {std::string("\nEMP-ID-0415 | DN"), 4},
                                              {"\n" + rule, 0},
                                              {std::string("\nEMP-REGION"), 4}}) {
                characters->SetBegin(*characters->End());
                characters->SetText(text);
                characters->SetCharProps(engine::CharProperty::Color, color);
                characters->SetCharProps(engine::CharProperty::Style, 1);
                characters->SetCharProps(engine::CharProperty::Size, 8);
            }
            shape->Cells("Height")->SetFormula("Guard(TextHeight(TheText, Width))");
            shape->Cells("width")->SetFormula("Guard(TextWidth(TheText))");
            shapes.push_back(shape);
        }
        for (int i = 0; i < lines; ++i) {
            const auto line = page->Drop(connector, 0.5, 0.5);
            const auto box = [&](int k) {
                return shapes[static_cast<std::size_t>(k % boxes)]->CellsSRC(engine::kPinX);
            };
            line->CellsSRC(engine::kBeginX)->GlueTo(box(i));
            line->CellsSRC(engine::kEndX)->GlueTo(box(i * 7 + 1));
            line->SetText("SET-NAME\r\nNPO OA LAST");
            line->Cells("Char.Size")->SetFormula("=6 pt.");
        }
        page->Document()->SaveAs(file);
        application->Quit();
    });
}

void EngineAlone(int boxes, int lines) {
    TemporaryFolder folder;
    const auto engine = drawing::MakeDrawingEngine({NORVELIS_APP "/Stencils", folder.Path(), nullptr});
    // The fastest of the runs: what else the machine does can only add.
    const auto fastest = [&](int times) {
        double seconds = std::numeric_limits<double>::max();
        for (int run = 0; run < 5; ++run) {
            const std::string file = folder.Path("drawing.vsd");
            seconds = std::min(seconds, BuildAndSave(*engine, boxes * times, lines * times, file));
        }
        return seconds;
    };
    const double once = fastest(1), tenTimes = fastest(10);
    fmt::print("| {} | {} | {:.2f} | {:.2f} | {:.1f} |\n", boxes, lines, once, tenTimes, tenTimes / once);
}

}  // namespace
}  // namespace norvelis

int main(int argc, char** argv) {
    CLI::App program{"How long drawings take, beside Graphviz dot where it is installed"};
    int records = 1000, sets = 1600;
    program.add_option("--records", records)->capture_default_str();
    program.add_option("--sets", sets)->capture_default_str();
    std::string only;
    program.add_option("--only", only, "One of the three tables")
        ->check(CLI::IsMember({"whole", "separate", "engine"}));
    CLI11_PARSE(program, argc, argv);
    const auto wanted = [&only](const char* table) { return only.empty() || only == table; };
    if (wanted("whole")) {
        fmt::print(
            "| boxes | lines | store to file, s | dot's placement, s | ratio |\n|--:|--:|--:|--:|--:|\n");
        norvelis::WholeSchema(records, sets);
    }
    if (wanted("separate")) {
        fmt::print("\n| separate files | records in each | files a second |\n|--:|--:|--:|\n");
        norvelis::SeparateFiles(records, sets);
    }
    if (wanted("engine")) {
        fmt::print(
            "\n| boxes | lines | built and saved, s | ten times as many, s | times as long "
            "|\n|--:|--:|--:|--:|--:|\n");
        norvelis::EngineAlone(records, sets);
    }
}
