#include "commands/start_up.h"

#include <array>
#include <string>

#include "base/failure.h"
#include "base/ini.h"
#include "base/paths.h"
#include "base/text.h"
#include "core/log.h"
#include "core/places.h"
#include "core/settings.h"
#include "extract/report_file.h"
#include "store/connection.h"

namespace norvelis::commands {

namespace {

const std::string kEnd(kLineBreak);

void Log(AppState& app, std::string_view message) {
    WriteToProcessLog(app, "Startup", "Sub Main", message);
}

void LogFrame(AppState& app, std::string_view message) {
    WriteToProcessLog(app, "mdiMainmenu", "Load main Form", message);
}

/// A failure with its text as it is and, on a line of its own, what helps to mend the cause.
class WithHint : public RuntimeFailure {
  public:
    WithHint(const RuntimeFailure& failure, const std::string& hint)
        : RuntimeFailure(failure), text_(failure.what() + kEnd + hint) {}
    const char* what() const noexcept override { return text_.c_str(); }

  private:
    std::string text_;
};

void ReadUseSkins(AppState& app) {
    const std::string text = ReadINIValue("Skins", "UseSkins", app.gLocalIni);
    try {
        app.gUseSkins = ToBoolean(text);
    } catch (const RuntimeFailure& failure) {
        const std::string file = app.AppPath(places::kLocalIni);
        throw WithHint(failure, app.gLocalIni.empty()
                                    ? "The file is missing: " + file
                                    : "UseSkins of section Skins must be True or False: " + file);
    }
}

void ReadSkinScheme(AppState& app) {
    app.gSkinScheme = ReadINIValue("Skins", "SkinScheme", app.gLocalIni);
    const bool named = !Trim(app.gSkinScheme).empty();
    if (named && FolderExists(app.AppPath(places::Skin(app.gSkinScheme)))) return;
    app.host.MessageBox(
        {"Unable to use the Skin \"" + app.gSkinScheme +
             "\". The skin folder doesn't exist. You can go to the \"Colors Screen\" and specify "
             "another \"Color Scheme\" and \"Skin Scheme\" from there.",
         "Skin Folder...", Buttons::Ok, Icon::Information, Answer::Ok});
    app.gSkinScheme.clear();
    app.gUseSkins = false;
}

struct FirstScreen {
    std::string_view name;  // as the setting startupform has it
    Screen screen;
    std::array<std::string_view, 3> log;  // before loading, showing, filling
};
constexpr std::array<FirstScreen, 5> kFirstScreens = {
    {{"",
      Screen::Treeview,
      {"1. Load frm_Treeview", "2. Show frm_Treeview", "3. Call frm_Treeview.loadtreeform"}},
     {"Treeview",
      Screen::Treeview,
      {"a. Load frm_Treeview", "b. Show frm_Treeview", "c. Call frm_Treeview.loadtreeform"}},
     {"Listview", Screen::Listview, {"1. Load frm_Listview", "2. Show frm_Listview", ""}},
     {"ConvertSQL", Screen::ConvertSql, {"1. Load frmConvertSQL", "2. Show frmConvertSQL", ""}},
     {"Scheduler", Screen::Scheduler, {"", "", ""}}}};

void OpenFirstScreen(AppState& app, MainFrame& frame, std::string_view name) {
    for (const FirstScreen& first : kFirstScreens) {
        if (first.name != name) continue;
        const auto log = [&app](std::string_view line) {
            if (!line.empty()) LogFrame(app, line);
        };
        log(first.log[0]);
        frame.LoadScreen(first.screen);
        log(first.log[1]);
        app.host.OpenScreen(first.screen, false);
        log(first.log[2]);
        if (first.screen == Screen::Treeview) frame.loadtreeform();
    }
}

void LoadMainForm(AppState& app, MainFrame& frame) {
    LogFrame(app, "Entering main form.....");
    frame.ShowVersion();
    LogFrame(app, "loading Skins.....");
    frame.ApplySkinAndShow();
    app.host.Yield();
    frame.LoadProgressForm();
    LogFrame(app, "Getting  Start in form....");
    try {
        const std::string name = getstartupform(app);
        LogFrame(app, "Started in form...." + name);
        OpenFirstScreen(app, frame, name);
        LogFrame(app, "Done Starting in form...." + name);
    } catch (const RuntimeFailure& failure) {
        WriteToErrorLog(app, "mdiMainmenu", "Load main Form", failure.what(),
                        static_cast<int>(failure.Number()));
    }
}

// True when the drawing folder is to be checked too.
bool CheckReport(AppState& app, MainFrame& frame) {
    const std::string path = getreportlocation(app);
    const std::string sample = "Sample found at:" + app.AppPath(places::kSampleReport);
    std::string words;
    switch (CheckReportFile(path)) {
        case ReportCheck::NotNamed:
            words = "IDMS Report File has not been set. Please set it." + kEnd + " " + sample;
            break;
        case ReportCheck::Missing:
            words = "IDMS Report File :" + path + kEnd + "does not exist. Please set it." + kEnd + sample;
            break;
        case ReportCheck::NoReport:
            app.host.MessageBox("Invalid IDMS Report File :" + path + kEnd + "Action terminated." + kEnd +
                                sample);
            return false;
        case ReportCheck::Valid:
            return true;
    }
    app.host.MessageBox(words);
    app.host.OpenScreen(Screen::Settings, false);
    frame.changerptfile();
    return false;
}

void CheckDrawingFolder(AppState& app, MainFrame& frame) {
    const std::string folder = getvisiolocation(app);
    std::string words;
    if (Trim(folder).empty()) {
        words = "Schema Visio Save Location folder has not been set.";
    } else if (!FolderExists(folder)) {
        words = "Schema Visio Save Location folder :" + folder + kEnd + "does not exist. Please set it.";
    } else {
        return;
    }
    app.host.MessageBox(words);
    app.host.OpenScreen(Screen::Settings, false);
    frame.changevisiolocation();
}

}  // namespace

void SubMain(AppState& app, MainFrame& frame) {
    Log(app, "*************************BEGIN*************************************");
    Log(app, "Started Running application.....");
    Log(app, "Checking \\INI\\Local.Ini.....");
    const std::string localIni = app.AppPath(places::kLocalIni);
    if (FileExists(localIni)) app.gLocalIni = localIni;
    Log(app, "Reading Skins.....");
    ReadUseSkins(app);
    if (app.gUseSkins) ReadSkinScheme(app);
    Log(app, "Lading colors.....");
    frame.LoadColors();
    Log(app, "Opening DB.....");
    app.gConnection = Connection::Open(ConnectionString(app.AppPath(places::kStore)));
    Log(app, "Showing main form.....");
    LoadMainForm(app, frame);
    Log(app, "Complete without errors.....");
    Log(app, "*************************END*************************************");
    if (CheckReport(app, frame)) CheckDrawingFolder(app, frame);
}

}  // namespace norvelis::commands
