#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <iostream>

#include "base/failure.h"
#include "extract/driver.h"
#include "extract/report.h"
#include "extract/report_checks.h"
#include "testing/damaged_report.h"
#include "testing/literal_extraction.h"
#include "testing/report_generator.h"
#include "testing/test_store.h"

// How many damaged reports are reported, and how many repair makes good, for each kind of damage. A report
// counts when its damage changes the rows of the dictionary.
namespace norvelis {
namespace {

literal::Dictionary RowsOf(const std::string& report) {
    literal::Dictionary dictionary;
    const auto lines = literal::SplitLines(report);
    if (literal::ValidateReport(lines)) literal::ExtractReport(lines, dictionary);
    return dictionary;
}

class Recall {
  public:
    bool IsReported(const std::string& report) {
        if (!CheckForm(report).empty()) return true;
        if (!IsSchemaReport(report)) return true;
        try {
            return CountWarnings(FindingsIn(test_.app, {"report", ReportCheck::Valid, report, {}, {}}, {})) >
                   0;
        } catch (const RuntimeFailure&) {
            return true;
        }
    }

    // True when the kind keeps what is promised of it.
    bool Measure(const DamageKind& kind, std::uint64_t reports) {
        std::uint64_t harmed = 0, reported = 0, repaired = 0;
        for (std::uint64_t seed = 1; seed <= reports; ++seed) {
            const std::string report = GenerateSchemaReport(12, 20, 5, seed);
            const std::string damaged = DamageReport(report, kind.damage, seed);
            const literal::Dictionary rows = RowsOf(report);
            if (RowsOf(damaged) == rows) continue;
            ++harmed;
            reported += IsReported(damaged);
            repaired += RowsOf(repair::RepairReport(damaged).bytes) == rows;
        }
        const auto share = [&](std::uint64_t count) {
            return harmed == 0 ? 1.0 : static_cast<double>(count) / static_cast<double>(harmed);
        };
        std::cout << fmt::format("| {} | {} | {:.1f} | {:.1f} |\n", kind.name, harmed, 100 * share(reported),
                                 100 * share(repaired))
                  << std::flush;
        return share(reported) >= kind.reported && share(repaired) >= kind.repaired;
    }

    std::uint64_t FalseAlarms(std::uint64_t reports) {
        std::uint64_t alarms = 0;
        for (std::uint64_t seed = 1; seed <= reports; ++seed)
            alarms += IsReported(GenerateSchemaReport(12, 20, 5, seed));
        return alarms;
    }

  private:
    TestApp test_;
};

}  // namespace
}  // namespace norvelis

int main(int argc, char** argv) {
    CLI::App app("How many damaged reports are reported and repaired.");
    std::uint64_t reports = 370;
    app.add_option("--reports", reports, "Of each kind of damage")->capture_default_str();
    CLI11_PARSE(app, argc, argv);
    norvelis::Recall recall;
    bool isKept = true;
    std::cout
        << "| damage | reports that it harms | reported in 100 | repaired in 100 |\n|---|---|---|---|\n";
    for (const norvelis::DamageKind& kind : norvelis::kDamageKinds)
        isKept = recall.Measure(kind, reports) && isKept;
    const std::uint64_t alarms = recall.FalseAlarms(reports);
    std::cout << fmt::format("\nUndamaged reports with a warning: {} of {}\n", alarms, reports);
    return isKept && alarms == 0 ? 0 : 1;
}
