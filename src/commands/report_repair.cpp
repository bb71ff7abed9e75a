#include "commands/report_repair.h"

#include <filesystem>
#include <optional>

#include "base/failure.h"
#include "base/paths.h"
#include "base/text.h"
#include "core/settings.h"
#include "extract/driver.h"
#include "extract/findings.h"
#include "extract/report_file.h"

namespace norvelis::commands {

namespace {

const std::string kEnd(kLineBreak);

/// Nothing when the file needs no repair, or the machine can not do it.
std::optional<ReportFile> Repaired(const std::string& path) {
    try {
        ReportFile report = RepairReportFile(path, std::nullopt);
        if (report.check == ReportCheck::Valid && !report.changes.empty()) return report;
    } catch (const RuntimeFailure&) {
        // What can not be read or decoded stays as it was found to be.
    }
    return std::nullopt;
}

/// How many warnings an extraction of it would have; nothing when the report ends it.
std::optional<std::size_t> WarningsOf(AppState& app, const ReportFile& report) {
    try {
        return CountWarnings(FindingsIn(app, report, {}));
    } catch (const RuntimeFailure&) {
        return std::nullopt;
    }
}

/// "empschm-repaired.text", with a number when that is something else.
std::string PathForCopy(const ReportFile& report) {
    const std::filesystem::path file(report.path);
    for (int number = 1;; ++number) {
        const std::string name = file.stem().string() + "-repaired" +
                                 (number > 1 ? "-" + std::to_string(number) : "") + file.extension().string();
        std::string path = (file.parent_path() / name).string();
        if (!FileExists(path) || ReadFile(path) == report.bytes) return path;
    }
}

bool AskAndWrite(AppState& app, const ReportFile& repaired, const std::string& introduction) {
    try {
        const std::string path = PathForCopy(repaired);
        std::string question = introduction + kEnd;
        for (const auto& change : repaired.changes) question += "- " + change.words + kEnd;
        question += "Write the repaired report as " + path + " and take that?";
        if (app.host.MessageBox({question, {}, Buttons::YesNo, Icon::Question, Answer::Ok}) != Answer::Yes)
            return false;
        WriteFile(path, repaired.bytes);
        setreportlocation(app, path);
        app.gReportFile = path;
        return true;
    } catch (const RuntimeFailure& failure) {
        app.host.MessageBox(failure.what());
        return false;
    }
}

}  // namespace

bool OfferRepairOfInvalid(AppState& app, const std::string& path) {
    const auto repaired = Repaired(path);
    return repaired && AskAndWrite(app, *repaired, "Repair makes a schema report of this file:");
}

bool OfferRepairForWarnings(AppState& app, std::size_t warnings) {
    std::optional<ReportFile> repaired;
    std::size_t left = warnings;
    {
        const clsHourglass hourglass(app.host);
        repaired = Repaired(app.gReportFile);
        if (repaired) left = WarningsOf(app, *repaired).value_or(warnings);
    }
    return left < warnings && AskAndWrite(app, *repaired,
                                          "Repair leaves " + std::to_string(left) + " of the " +
                                              std::to_string(warnings) + " warnings of this report:");
}

}  // namespace norvelis::commands
