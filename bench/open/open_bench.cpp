#include <fmt/format.h>
#include <librevenge-generators/librevenge-generators.h>
#include <librevenge-stream/librevenge-stream.h>
#include <libvisio/libvisio.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <functional>

#include "drawing/package/package.h"
#include "drawing/render/build_scene.h"
#include "drawing/render/open.h"
#include "drawing/render/paint.h"
#include "testing/small_drawing.h"

// How long a person waits until a drawing of many boxes and lines is seen: unpacked and read, made ready, and
// painted as a whole; beside the time in which libvisio reads the same file to a picture.
namespace norvelis::drawing {
namespace {

constexpr int kRuns = 7;
constexpr double kPixelsPerInch = 20;

double Median(const std::function<void()>& work) {
    std::vector<double> seconds;
    for (int i = 0; i < kRuns; ++i) {
        const auto start = std::chrono::steady_clock::now();
        work();
        seconds.push_back(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    std::nth_element(seconds.begin(), seconds.begin() + kRuns / 2, seconds.end());
    return seconds[kRuns / 2];
}

/// The texts of a record box, each piece with its own format.
void AddRecordText(Document& document, Shape& box, int number) {
    const std::string rule = "\n" + std::string(52, '-');
    const std::pair<std::string, int> pieces[] = {{fmt::format("RECORD-{:05}", number), 2},
                                                  {rule, 0},
                                                  {"\n0415 | F | 116 | CALC", 4},
                                                  {rule, 0},
                                                  {"\nEMP-ID-0415 | DN", 4},
                                                  {rule, 0},
                                                  {"\nEMP-REGION", 4}};
    box.text = TextRuns();
    for (const auto& [text, color] : pieces) {
        const int row = static_cast<int>(box.text->size()) + 1;
        box.text->push_back({text, row});
        box.At(Name::Character)
            .At(RowKey::Number(row))
            .cells.Set(Name::Font, document.FontIndex("Arial"))
            .Set(Name::Color, color)
            .Set(Name::Style, 1)
            .Set(Name::Size, 8.0 / 72);
    }
}

/// A line between two points over a corner, with a label in two formats.
void AddLine(Document& document, Page& page, double x0, double y0, double x1, double y1) {
    auto line = std::make_unique<Shape>();
    line->lineStyle = line->fillStyle = line->textStyle = document.FindStyle("Connector");
    line->cells.Set(Name::PinX, (x0 + x1) / 2).Set(Name::PinY, (y0 + y1) / 2);
    line->cells.Set(Name::Width, x1 - x0).Set(Name::Height, y1 - y0);
    line->cells.Set(Name::LocPinX, (x1 - x0) / 2).Set(Name::LocPinY, (y1 - y0) / 2);
    line->cells.Set(Name::BeginX, x0).Set(Name::BeginY, y0).Set(Name::EndX, x1).Set(Name::EndY, y1);
    line->cells.Set(Name::EndArrow, 13).SetText(Name::LineColor, "#336699");
    Section& route = line->At(Name::Geometry);
    route.cells.Set(Name::NoFill, 1);
    const std::pair<double, double> corners[] = {
        {0, 0}, {0, (y1 - y0) / 2}, {x1 - x0, (y1 - y0) / 2}, {x1 - x0, y1 - y0}};
    int number = 0;
    for (const auto& [x, y] : corners) {
        Row& row = route.At(RowKey::Number(++number));
        row.type = number == 1 ? Name::MoveTo : Name::LineTo;
        row.cells.Set(Name::X, x).Set(Name::Y, y);
    }
    line->text = TextRuns{{"SET-NAME\n", 1}, {"NPO OA LAST", 2}};
    for (int row = 1; row <= 2; ++row)
        line->LocalAt({Name::Character, 0, RowKey::Number(row), Name::Size}).SetNumber(6.0 / 72);
    page.Add(std::move(line));
}

std::string DrawingOf(int boxes, int lines) {
    constexpr int kColumns = 40;
    Document document;
    AddStandardStyles(document);
    Master& master = AddBoxMaster(document, "Process");
    Page& page = document.AddPage("Page-1");
    StatePage(document, page.sheet, kColumns * 4.0, boxes / kColumns * 3.0 + 3);
    const auto x = [](int box) { return 2 + box % kColumns * 4.0; };
    const auto y = [](int box) { return 2 + box / kColumns * 3.0; };
    for (int i = 0; i < boxes; ++i) {
        Shape& box = DropInstance(page, master, x(i), y(i));
        box.cells.Set(Name::Width, 2.6)
            .Set(Name::Height, 1.4)
            .Set(Name::LocPinX, 1.3)
            .Set(Name::LocPinY, 0.7);
        AddRecordText(document, box, i);
    }
    for (int i = 0; i < lines; ++i) {
        const int from = i % boxes, to = (i * 7 + 1) % boxes;
        AddLine(document, page, x(from), y(from), x(to), y(to));
    }
    return WritePackage(document);
}

bool ReadWithLibvisio(const std::string& bytes) {
    librevenge::RVNGStringStream stream(reinterpret_cast<const unsigned char*>(bytes.data()),
                                        static_cast<unsigned>(bytes.size()));
    librevenge::RVNGStringVector pages;
    librevenge::RVNGSVGDrawingGenerator generator(pages, "");
    return libvisio::VisioDocument::parse(&stream, &generator) && !pages.empty();
}

void Measure(int boxes, int lines) {
    const std::string bytes = DrawingOf(boxes, lines);
    const double read = Median([&] { ReadPackage(bytes); });
    const auto document = ReadPackage(bytes);
    render::Scene scene;
    const double ready = Median([&] {
        FontLibrary fonts;
        scene = render::BuildScene(fonts, *document, *document->pages.front());
    });
    const double painted = Median([&] { render::Picture(scene, kPixelsPerInch); });
    const double theirs = Median([&] { ReadWithLibvisio(bytes); });
    fmt::print("| {} | {} | {:.1f} | {:.3f} | {:.3f} | {:.3f} | {:.3f} | {:.3f} | {:.2f} |\n", boxes, lines,
               static_cast<double>(bytes.size()) / 1e6, read, ready, painted, read + ready + painted, theirs,
               (read + ready) / theirs);
}

}  // namespace
}  // namespace norvelis::drawing

int main(int argc, char** argv) {
    CLI::App program{"How long it takes to open a drawing for showing, beside libvisio"};
    int boxes = 1000, lines = 1600;
    program.add_option("--boxes", boxes)->capture_default_str();
    program.add_option("--lines", lines)->capture_default_str();
    CLI11_PARSE(program, argc, argv);
    norvelis::drawing::render::NeedFonts();
    fmt::print(
        "| boxes | lines | file MB | read, s | made ready, s | painted, s | together, s | libvisio, s "
        "| read and ready to libvisio |\n|--:|--:|--:|--:|--:|--:|--:|--:|--:|\n");
    norvelis::drawing::Measure(boxes, lines);
    norvelis::drawing::Measure(boxes * 10, lines * 10);
}
