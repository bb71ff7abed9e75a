#include "cli/findings_output.h"

#include <cstdio>
#include <string>

namespace norvelis::cli {

namespace {

constexpr std::size_t kMostWarnings = 20;

void Print(const Finding& finding) {
    std::fprintf(stderr, "%s: %s\n", std::string(NameOf(SeverityOf(finding.kind))).c_str(),
                 WordsOf(finding).c_str());
}

}  // namespace

void PrintFindings(const std::vector<Finding>& findings, bool notes) {
    std::size_t printed = 0;
    for (const Finding& finding : findings) {
        const bool isWarning = SeverityOf(finding.kind) == Severity::Warning;
        if (isWarning ? printed++ < kMostWarnings : notes) Print(finding);
    }
    if (printed > kMostWarnings)
        std::fprintf(stderr, "warning: %zu more warnings; --json lists them all\n", printed - kMostWarnings);
}

void PrintChanges(const std::vector<repair::Change>& changes) {
    for (const repair::Change& change : changes) {
        if (change.firstLine > 1) {
            std::fprintf(stderr, "repair: from line %zu on: %s\n", change.firstLine, change.words.c_str());
        } else {
            std::fprintf(stderr, "repair: %s\n", change.words.c_str());
        }
    }
}

void AddFindings(nlohmann::ordered_json& object, const std::vector<Finding>& findings,
                 const std::vector<repair::Change>& changes) {
    const std::size_t warnings = CountWarnings(findings);
    object["warnings"] = warnings;
    object["notes"] = findings.size() - warnings;
    auto& list = object["findings"] = nlohmann::ordered_json::array();
    for (const Finding& finding : findings) {
        list.push_back({{"severity", NameOf(SeverityOf(finding.kind))},
                        {"kind", NameOf(finding.kind)},
                        {"line", finding.line},
                        {"subject", finding.subject},
                        {"reason", finding.reason},
                        {"remedy", RemedyFor(finding.kind)}});
    }
    auto& repairs = object["repairs"] = nlohmann::ordered_json::array();
    for (const repair::Change& change : changes) {
        repairs.push_back({{"line", change.firstLine}, {"count", change.count}, {"change", change.words}});
    }
}

}  // namespace norvelis::cli
