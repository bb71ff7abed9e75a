#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <chrono>

#include "base/paths.h"
#include "commands/compare_commands.h"
#include "commands/difference_drawing.h"
#include "compare/comparison_page.h"
#include "diagram/draw_commands.h"
#include "drawing/automation/create_engine.h"
#include "extract/driver.h"
#include "testing/report_generator.h"
#include "testing/test_store.h"

// How long a comparison takes, next to a drawing of the same schema: of two schemas in memory, of two report
// files with the page of HTML, and with the drawing of the differences. And how much longer an extraction
// takes that replaces a schema and says what changed.
namespace norvelis {
namespace {

template <class Work>
double Seconds(Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

std::string Replaced(std::string text, const std::string& former, const std::string& present) {
    for (std::size_t at = 0; (at = text.find(former, at)) != std::string::npos; at += present.size())
        text.replace(at, former.size(), present);
    return text;
}

double Extraction(TestApp& test, const std::string& report, bool comparesEditions) {
    ExtractionDriver driver = InteractiveDriver(test.app, {});
    driver.comparesEditions = comparesEditions;
    test.host.answers = {Answer::Yes};
    return Seconds([&] { process_Classic_Extract_Report(test.app, driver, ValidateReportFile(report)); });
}

void Run(int records, int sets, int fields) {
    TestApp test;
    const std::string former = test.folder.Path("former.txt"), present = test.folder.Path("present.txt");
    const std::string text = GenerateSchemaReport(records, sets, fields, 1);
    WriteFile(former, text);
    // A word in names of records and sets: a sixteenth of them is renamed.
    WriteFile(present, Replaced(text, "LEDGER-", "BINDER-"));
    const auto engine =
        drawing::MakeDrawingEngine({NORVELIS_APP "/Stencils", test.app.AppPath("\\Temp"), nullptr});
    const std::string drawings = test.folder.Path("drawings");

    Extraction(test, present, false);
    const double plain = Extraction(test, former, false), comparing = Extraction(test, present, true);

    DrawScreen noScreen;
    DrawingState draw(test.app, *test.app.gConnection, *engine, noScreen);
    draw.options.location = drawings;
    draw.options.visible = false;
    const double drawn = Seconds([&] { DrawVisioDiagramSingle(draw, test.app.gSchemaName, nullptr); });

    commands::EditionsCompared compared;
    const double reports = Seconds([&] {
        compared = commands::CompareEditions(commands::EditionInReport(test.app, former),
                                             commands::EditionInReport(test.app, present));
        WriteFile(test.folder.Path("page.html"), compare::HtmlPage(*compared.editions));
    });
    const auto& editions = *compared.editions;
    const double memory =
        Seconds([&] { compare::Compare(editions.former.contents, editions.present.contents); });
    const double marked = Seconds([&] { commands::DrawDifferences(test.app, *engine, editions, drawings); });

    fmt::print("{} records, {} fields each: {}\n\n", records, fields, compare::Summary(editions.differences));
    fmt::print("| what | s | to the drawing |\n|---|--:|--:|\n");
    const auto print = [drawn](const char* what, double seconds) {
        fmt::print("| {} | {:.3f} | {:.3f} |\n", what, seconds, seconds / drawn);
    };
    print("drawing of the schema", drawn);
    print("two schemas in memory", memory);
    print("two reports, with the page", reports);
    print("drawing of the differences", marked);
    fmt::print("\nExtraction over a schema: {:.3f} s, {:.3f} s with what changed, ratio {:.2f}\n", plain,
               comparing, comparing / plain);
}

}  // namespace
}  // namespace norvelis

int main(int argc, char** argv) {
    CLI::App program{"How long comparisons take, beside a drawing of the same schema"};
    int records = 2000, sets = 3200, fields = 20;
    program.add_option("--records", records)->capture_default_str();
    program.add_option("--sets", sets)->capture_default_str();
    program.add_option("--fields", fields)->capture_default_str();
    CLI11_PARSE(program, argc, argv);
    norvelis::Run(records, sets, fields);
    return 0;
}
