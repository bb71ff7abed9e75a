#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <vector>

#include "base/paths.h"
#include "extract/report.h"
#include "extract/report_file.h"
#include "testing/report_generator.h"
#include "testing/temporary_folder.h"

// The reader alone, from the file to the places of its keywords, next to the time in which grep counts the
// lines that hold one word of the same file.
namespace norvelis {
namespace {

template <typename Work>
double SecondsOf(Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double Median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2),
                     values.end());
    return values[values.size() / 2];
}

std::size_t LinesRead(const std::string& path) {
    const Report report(ValidateReportFile(path).bytes);
    return report.Lines().size();
}

int Compete(int records, int runs) {
    const TemporaryFolder folder;
    const std::string path = folder.Path("report");
    WriteFile(path, GenerateSchemaReport(records, 2 * records, 30, 1));
    // It stops at the first line when it sees that nobody reads its count.
    const std::string grep = "grep -c SET '" + path + "' | cat >/dev/null";
    std::vector<double> readers, greps;
    for (int run = 0; run < runs; ++run) {
        greps.push_back(SecondsOf([&] {
            if (std::system(grep.c_str()) != 0) std::exit(1);
        }));
        readers.push_back(SecondsOf([&] {
            if (LinesRead(path) == 0) std::exit(1);
        }));
    }
    const double megabytes = static_cast<double>(ReadFile(path).size()) / (1024 * 1024);
    const double share = Median(greps) / Median(readers);
    std::cout << fmt::format(
        "| report MB | reader s | grep s | speed against grep |\n|---|---|---|---|\n"
        "| {:.1f} | {:.3f} | {:.3f} | {:.2f} |\n",
        megabytes, Median(readers), Median(greps), share);
    return share >= 1.0 / 3 ? 0 : 1;
}

}  // namespace
}  // namespace norvelis

int main(int argc, char** argv) {
    CLI::App app("The reader of schema reports against grep.");
    int records = 100'000, runs = 3;
    app.add_option("--records", records, "Of the report; 100,000 are 500 MB")->capture_default_str();
    app.add_option("--runs", runs, "Of each; the medians count")->capture_default_str();
    CLI11_PARSE(app, argc, argv);
    return norvelis::Compete(records, runs);
}
