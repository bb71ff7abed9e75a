// A very large report in the viewer: how soon its first lines are there, how long the index takes and its
// longest step, jumps to random places, a search through all of it, and the memory of it all. A line of 10 MB
// is in the middle. The yardstick is reading the file once.
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <fstream>
#include <random>

#include "testing/report_generator.h"
#include "testing/resident_memory.h"
#include "testing/temporary_folder.h"
#include "viewer/report_lines.h"
#include "viewer/report_search.h"

namespace norvelis::viewer {
namespace {

constexpr std::size_t kWindow = 60;  // Lines.

double Milliseconds(std::chrono::steady_clock::time_point since) {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - since).count();
}

void WriteReport(const std::string& path, std::size_t bytes) {
    const std::string report = GenerateSchemaReport(1000, 2000, 30, 1);
    std::ofstream file(path);
    std::size_t written = 0;
    for (bool longLine = false; written < bytes; written += report.size()) {
        file << report;
        if (longLine || written < bytes / 2) continue;
        file << std::string(10'000'000, 'x') << '\n';
        longLine = true;
    }
}

double ReadOnce(const FileReader& file) {
    const auto start = std::chrono::steady_clock::now();
    std::uint64_t sum = 0;
    for (std::uint64_t offset = 0; offset < file.Size(); offset += 1 << 20) {
        const std::string bytes = file.Read(offset, 1 << 20);
        sum += static_cast<unsigned char>(bytes.back());
    }
    return sum > 0 ? Milliseconds(start) : 0;
}

void Measure(const std::string& path) {
    const double before = ResidentMegabytes();
    auto start = std::chrono::steady_clock::now();
    ReportLines report(path);
    report.Read(0, kWindow);
    const double first = Milliseconds(start);

    double longestStep = 0;
    start = std::chrono::steady_clock::now();
    for (bool more = true; more;) {
        const auto step = std::chrono::steady_clock::now();
        more = report.Step();
        longestStep = std::max(longestStep, Milliseconds(step));
    }
    const double index = Milliseconds(start);

    std::mt19937_64 random(1);
    double longestJump = 0;
    for (int i = 0; i < 200; ++i) {
        const std::uint64_t line = random() % report.Count();
        start = std::chrono::steady_clock::now();
        report.Read(line, kWindow);
        longestJump = std::max(longestJump, Milliseconds(start));
    }
    start = std::chrono::steady_clock::now();
    TextSearch("THERE IS NO SUCH TEXT").FindNext(report.File(), 0);
    const double search = Milliseconds(start);
    const double grown = ResidentMegabytes() - before;
    fmt::print("| {:.0f} | {} | {} | {:.1f} | {:.0f} | {:.1f} | {:.1f} | {:.0f} | {:.0f} | {:.0f} |\n",
               static_cast<double>(report.File().Size()) / 1e6, report.Count(), report.Sections().size(),
               first, index, longestStep, longestJump, search, ReadOnce(report.File()), grown);
}

}  // namespace
}  // namespace norvelis::viewer

int main(int argc, char** argv) {
    CLI::App program;
    std::size_t megabytes = 300;
    program.add_option("--megabytes", megabytes);
    CLI11_PARSE(program, argc, argv);
    const norvelis::TemporaryFolder folder;
    norvelis::viewer::WriteReport(folder.Path("report"), megabytes * 1'000'000);
    fmt::print(
        "| MB | lines | records | first lines ms | index ms | longest step ms | longest of 200 jumps ms "
        "| search through all ms | read once ms | grown MB |\n|--:|--:|--:|--:|--:|--:|--:|--:|--:|--:|\n");
    norvelis::viewer::Measure(folder.Path("report"));
}
