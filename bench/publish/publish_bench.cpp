#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <chrono>
#include <filesystem>

#include "commands/publish_commands.h"
#include "core/places.h"
#include "diagram/draw_commands.h"
#include "drawing/automation/create_engine.h"
#include "drawing/export/export.h"
#include "testing/extracted_schema.h"
#include "testing/report_generator.h"

// How long it takes to publish a generated schema as a page for the browser, beside drawing it, which is part
// of that: twice as long is the limit.
namespace norvelis {
namespace {

double Seconds(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void Measure(int records, int sets, int fields) {
    TestApp test;
    ExtractInto(test, GenerateSchemaReport(records, sets, fields, 1));
    const auto engine =
        drawing::MakeDrawingEngine({NORVELIS_APP "/Stencils", test.app.AppPath("\\Temp"), nullptr});

    DrawScreen screen;
    DrawingState draw(test.app, *test.app.gConnection, *engine, screen);
    draw.options.location = test.folder.Path("drawings");
    draw.options.visible = false;
    const double drawn = Seconds([&] { DrawVisioDiagramSingle(draw, "BULKSCHM", nullptr); });

    const std::string folder = test.folder.Path("edition");
    const double published = Seconds([&] {
        commands::PublishSchema(test.app, {*engine, drawing::render::LinkedSvg}, "BULKSCHM", folder);
    });
    const auto megabytes = [&folder](const char* name) {
        return static_cast<double>(std::filesystem::file_size(folder + "/" + name)) / 1e6;
    };
    fmt::print("| {} | {} | {:.2f} | {:.2f} | {:.2f} | {:.1f} | {:.1f} |\n", records, fields, drawn,
               published, published / drawn, megabytes("index.html"), megabytes("edition.json"));
}

}  // namespace
}  // namespace norvelis

int main(int argc, char** argv) {
    CLI::App program{"How long it takes to publish a schema, beside drawing it"};
    int records = 2000, sets = 3200, fields = 20;
    program.add_option("--records", records)->capture_default_str();
    program.add_option("--sets", sets)->capture_default_str();
    program.add_option("--fields", fields, "Of each record")->capture_default_str();
    CLI11_PARSE(program, argc, argv);
    fmt::print("| records | fields of each | draw, s | publish, s | ratio | page, MB | edition, MB |\n");
    fmt::print("|--:|--:|--:|--:|--:|--:|--:|\n");
    norvelis::Measure(records, sets, fields);
}
