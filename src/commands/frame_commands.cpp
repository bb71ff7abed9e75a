#include "commands/frame_commands.h"

#include <utility>

#include "base/paths.h"
#include "base/text.h"
#include "commands/report_repair.h"
#include "core/settings.h"
#include "extract/driver.h"

namespace norvelis::commands {

namespace {

struct ReportWords {
    std::string missing, invalid, notSet;
};
const ReportWords kExtracting = {
    "Report File :", "Invalid IDMS Report File :", "IDMS Report file has not been set."};
const ReportWords kViewing = {"IDMS Schema Report File :", "Invalid IDMS Schema Report File :",
                              "IDMS Schema Report file has not been set."};

/// Takes the report of the settings, which was checked, or its repaired copy as gReportFile; false after
/// words about what is wrong with it.
bool TakeReport(AppState& app, const std::string& path, ReportCheck check, const ReportWords& words) {
    const std::string end(kLineBreak);
    app.gReportFile = path;
    switch (check) {
        case ReportCheck::NotNamed:
            app.host.MessageBox(words.notSet);
            app.host.OpenScreen(Screen::Settings, false);
            return false;
        case ReportCheck::Missing:
            app.host.MessageBox(words.missing + path + end + "does not exist. Please set it.");
            app.host.OpenScreen(Screen::Settings, false);
            return false;
        case ReportCheck::NoReport:
            app.host.MessageBox(words.invalid + path + end + "Action terminated");
            app.gReportFile.clear();
            return OfferRepairOfInvalid(app, path);
        case ReportCheck::Valid:
            break;
    }
    return true;
}

bool Agreed(AppState& app, const std::string& question, const std::string& title) {
    return app.host.MessageBox({question, title, Buttons::YesNo, Icon::None, Answer::Ok}) == Answer::Yes;
}

}  // namespace

std::size_t mnu_Classic_Extract_Report(AppState& app, const std::function<void()>& refresh) {
    ReportFile report = ValidateReportFile(getreportlocation(app));
    if (!TakeReport(app, report.path, report.check, kExtracting)) return 0;
    if (!Agreed(app, "Are you sure you want to extract IDMS report?", "Extract Confirmation")) return 0;
    if (report.check != ReportCheck::Valid) report = ValidateReportFile(app.gReportFile);  // Repaired.
    return ExtractReport(app, std::move(report), refresh);
}

std::size_t ExtractReport(AppState& app, ReportFile report, const std::function<void()>& refresh) {
    const ShownBars bars(app.progress, kTreeBars);
    app.host.OpenScreen(Screen::Treeview, false);
    const ExtractionResult result =
        process_Classic_Extract_Report(app, InteractiveDriver(app, refresh), std::move(report));
    if (!result.differences.empty())
        app.host.Status("Since the former edition of schema " + app.gSchemaName + ": " + result.differences);
    return CountWarnings(result.findings);
}

bool mnu_View_IDMS_Report_File(AppState& app) {
    const std::string path = getreportlocation(app);
    if (!TakeReport(app, path, CheckReportFile(path), kViewing)) return false;
    app.host.OpenScreen(Screen::ReportViewer, false);
    return true;
}

std::optional<std::string> mnu_viewvisio(Host& host) {
    const auto refuse = [&host](const char* words) {
        host.MessageBox(words);
        return std::nullopt;
    };
    auto file = host.OpenFileDialog("", "*.vsd");
    if (!file || file->empty()) return refuse("Request denied. File not selected");
    if (file->size() < 4 || UpperCase(file->substr(file->size() - 4)) != ".VSD")
        return refuse("Request denied. Must be a VISIO (.VSD) file.");
    if (!FileExists(*file)) return refuse("There are no visio drawing to view");
    return file;
}

void DrawSinglePage(AppState& app, const DrawAll& draw) {
    const ShownBars bars(app.progress, kTreeBars);
    draw(true);
}

void mnu_Draw_Fancy_Single(AppState& app, const DrawAll& draw) {
    if (getvisiolocation(app).empty()) {
        app.host.MessageBox("Please set where to drop Visio files.");
        app.host.OpenScreen(Screen::Settings, false);
        return;
    }
    app.host.OpenScreen(Screen::Treeview, false);
    DrawSinglePage(app, draw);
}

void mnu_Draw_Fancy_Separate(AppState& app, const DrawAll& draw) {
    app.host.OpenScreen(Screen::Treeview, false);
    const ShownBars bars(app.progress, kTreeBars);
    draw(false);
}

bool AskToExit(AppState& app) {
    return Agreed(app, "Are you sure you want to exit the system?", "Exit System...");
}

}  // namespace norvelis::commands
