#include <fcntl.h>
#include <fmt/format.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "store/connection.h"
#include "store/tables.h"
#include "testing/report_generator.h"
#include "testing/temporary_folder.h"

// How long an extraction takes, next to the time in which the store's own command shell bulk-loads the same
// rows into the same tables in one transaction; and how both the time and the memory grow with the report.
namespace norvelis {
namespace {

namespace fs = std::filesystem;

struct Cost {
    double seconds;
    double peakMegabytes;
};

/// Runs a program to its end, its standard input from a file, its words thrown away.
Cost Measure(std::vector<std::string> command, const std::string& input) {
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        dup2(open(input.c_str(), O_RDONLY), STDIN_FILENO);
        dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
        dup2(open("/dev/null", O_WRONLY), STDERR_FILENO);
        std::vector<char*> arguments;
        for (std::string& argument : command) arguments.push_back(argument.data());
        arguments.push_back(nullptr);
        execvp(arguments[0], arguments.data());
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    if (child < 0 || wait4(child, &status, 0, &usage) != child || status != 0) {
        throw std::runtime_error(fmt::format("{} failed (status {})", command.front(), status));
    }
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
    return {time.count(), static_cast<double>(usage.ru_maxrss) / 1024};
}

Cost Median(std::vector<Cost> costs) {
    const auto middle = costs.begin() + static_cast<std::ptrdiff_t>(costs.size() / 2);
    std::nth_element(costs.begin(), middle, costs.end(),
                     [](const Cost& a, const Cost& b) { return a.seconds < b.seconds; });
    return *middle;
}

/// What the shell needs before it can read the store.
constexpr const char* kOpenScript =
    "PRAGMA key = '2468024680';\n"
    ".mode csv\n";

/// One size of report: an application folder, the report, and the scripts for the shell.
class Contest {
  public:
    Contest(int records, int sets, int fields) {
        fs::create_directories(folder_.Path("app/Database"));
        fs::create_directories(folder_.Path("app/INI"));
        Write("report", GenerateSchemaReport(records, sets, fields, 1));
        Write("empty", "");
        std::string exportScript = kOpenScript, importScript = std::string(kOpenScript) + "BEGIN;\n";
        for (const TableDefinition& table : DictionaryTables()) {
            const std::string file = folder_.Path(fmt::format("{}.csv", table.name));
            exportScript += fmt::format(".output {}\nSELECT * FROM {} ORDER BY rowid;\n", file, table.name);
            importScript += fmt::format(".import {} {}\n", file, table.name);
        }
        Write("export.sql", exportScript);
        Write("import.sql", importScript + "COMMIT;\n");
    }

    double ReportMegabytes() const {
        return static_cast<double>(fs::file_size(folder_.Path("report"))) / (1024 * 1024);
    }

    Cost Extract() {
        EmptyStore();
        return Measure({NORVELIS_CLI, "--app", folder_.Path("app"), "extract", folder_.Path("report")},
                       folder_.Path("empty"));
    }

    /// After an extraction: its rows become the shell's files.
    void ExportRows() { Measure({"sqlcipher", Store()}, folder_.Path("export.sql")); }

    Cost Import() {
        EmptyStore();
        const Cost cost = Measure({"sqlcipher", Store()}, folder_.Path("import.sql"));
        CheckRows();
        return cost;
    }

    std::vector<long> CountRows() const {
        const auto connection = Connection::Open(ConnectionString(Store()));
        std::vector<long> counts;
        for (const TableDefinition& table : DictionaryTables()) {
            counts.push_back(connection->Count(fmt::format("Select count(*) FROM {}", table.name)));
        }
        return counts;
    }

    void RememberRows() { rows_ = CountRows(); }
    long Rows() const {
        long sum = 0;
        for (const long count : rows_) sum += count;
        return sum;
    }

  private:
    std::string Store() const { return folder_.Path("app/Database/records.mdb"); }
    void EmptyStore() const { Connection::CreateStore(Store()); }
    void Write(const std::string& name, const std::string& text) const {
        std::ofstream(folder_.Path(name), std::ios::binary) << text;
    }
    void CheckRows() const {
        if (CountRows() != rows_)
            throw std::runtime_error("the shell has not loaded the rows of the extraction");
    }

    TemporaryFolder folder_;
    std::vector<long> rows_;
};

/// What the program takes with a store open and no report read.
double BareMegabytes() {
    const TemporaryFolder folder;
    fs::create_directories(folder.Path("Database"));
    Connection::CreateStore(folder.Path("Database/records.mdb"));
    return Measure({NORVELIS_CLI, "--app", folder.Path(), "dump"}, "/dev/null").peakMegabytes;
}

/// The medians of runs that take turns, so that a busy moment of the machine strikes both sides.
Cost Compete(int records, int sets, int fields, int runs) {
    Contest contest(records, sets, fields);
    contest.Extract();
    contest.RememberRows();
    contest.ExportRows();
    std::vector<Cost> extracts, imports;
    for (int run = 0; run < runs; ++run) {
        extracts.push_back(contest.Extract());
        imports.push_back(contest.Import());
    }
    const Cost extract = Median(extracts), import = Median(imports);
    std::cout << fmt::format(
                     "| {:6} | {:6} | {:6.1f} | {:7} | {:8.3f} | {:8.3f} | {:5.2f} | {:7.1f} | {:6.2f} |\n",
                     records, sets, contest.ReportMegabytes(), contest.Rows(), extract.seconds,
                     import.seconds, extract.seconds / import.seconds, extract.peakMegabytes,
                     extract.peakMegabytes / contest.ReportMegabytes())
              << std::flush;
    return extract;
}

}  // namespace
}  // namespace norvelis

int main(int argc, char** argv) {
    CLI::App app("Extraction against the bulk load of the store's own shell (sqlcipher).");
    int records = 1000, sets = 2000, fields = 30, runs = 7;
    app.add_option("--records", records)->capture_default_str();
    app.add_option("--sets", sets)->capture_default_str();
    app.add_option("--fields", fields)->capture_default_str();
    app.add_option("--runs", runs, "Runs of each; the medians count")->capture_default_str();
    CLI11_PARSE(app, argc, argv);
    try {
        std::cout << fmt::format(
                         "The program with an open store takes {:.1f} MB, which the peaks include.\n\n",
                         norvelis::BareMegabytes())
                  << "| records | sets | report MB | rows | extract s | .import s | ratio | peak MB | "
                     "peak/report |\n"
                     "|---|---|---|---|---|---|---|---|---|\n";
        const norvelis::Cost once = norvelis::Compete(records, sets, fields, runs);
        const norvelis::Cost tenfold =
            norvelis::Compete(10 * records, 10 * sets, fields, std::max(1, runs / 2));
        std::cout << fmt::format("\nTen times the report takes {:.1f} times as long.\n",
                                 tenfold.seconds / once.seconds);
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
}
