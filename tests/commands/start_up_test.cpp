#include "commands/start_up.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "base/failure.h"
#include "base/paths.h"
#include "core/settings.h"
#include "testing/test_store.h"
#include "testing/ui_folder.h"

namespace norvelis::commands {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

/// A frame without windows, which writes down what is asked of it.
class FrameOnPaper : public MainFrame {
  public:
    std::vector<std::string> calls;
    void LoadColors() override { calls.push_back("LoadColors"); }
    void ShowVersion() override { calls.push_back("ShowVersion"); }
    void ApplySkinAndShow() override { calls.push_back("ApplySkinAndShow"); }
    void LoadProgressForm() override { calls.push_back("LoadProgressForm"); }
    void LoadScreen(Screen) override { calls.push_back("LoadScreen"); }
    void loadtreeform() override { calls.push_back("loadtreeform"); }
    void changerptfile() override { calls.push_back("changerptfile"); }
    void changevisiolocation() override { calls.push_back("changevisiolocation"); }
};

class StartUpTest : public ::testing::Test {
  protected:
    ui::UiFolder folder;
    ScriptedHost host;
    StillClock clock;
    AppState app{folder.Path(), host, clock, Random(1)};
    FrameOnPaper frame;
    const std::string report = folder.Path("reportfiles/empschm.text");
    const std::string sample = "Sample found at:" + report;

    void Settings(const std::string& reportPath, const std::string& drawings, const std::string& form = {}) {
        app.gConnection = Connection::Open(ConnectionString(folder.Path("Database/records.mdb")));
        if (!reportPath.empty()) setreportlocation(app, reportPath);
        setvisiolocation(app, drawings);
        if (!form.empty()) setstartupform(app, form);
        app.gConnection.reset();
    }
    void WriteLocalIni(const std::string& text) { WriteFile(folder.Path("INI/Local.Ini"), text); }
    std::vector<std::string> LogLines() const {
        std::vector<std::string> lines;
        std::istringstream log(ReadFile(folder.Path("INI/ProcessLog.Txt")));
        for (std::string line; std::getline(log, line);) {
            if (line.find("Common module") != std::string::npos) continue;
            lines.push_back(line.substr(line.find(": ") + 2, line.size() - line.find(": ") - 3));
        }
        return lines;
    }
    bool SettingsOpened() const {
        return host.screens.back() == ScriptedHost::OpenedScreen{Screen::Settings, false};
    }
};

TEST_F(StartUpTest, TheStepsComeInTheirOrderAndAreLogged) {
    Settings(report, folder.Path("visio files"));
    SubMain(app, frame);
    const std::string start = "Startup ---- Sub Main ---- ", load = "mdiMainmenu ---- Load main Form ---- ";
    EXPECT_THAT(LogLines(),
                ElementsAre(start + "*************************BEGIN*************************************",
                            start + "Started Running application.....",
                            start + "Checking \\INI\\Local.Ini.....",  //
                            start + "Reading Skins.....",              //
                            start + "Lading colors.....",              //
                            start + "Opening DB.....",                 //
                            start + "Showing main form.....",          //
                            load + "Entering main form.....",          //
                            load + "loading Skins.....",               //
                            load + "Getting  Start in form....",       //
                            load + "Started in form....",              //
                            load + "1. Load frm_Treeview",             //
                            load + "2. Show frm_Treeview",             //
                            load + "3. Call frm_Treeview.loadtreeform",
                            load + "Done Starting in form....",  //
                            start + "Complete without errors.....",
                            start + "*************************END*************************************"));
    EXPECT_THAT(frame.calls, ElementsAre("LoadColors", "ShowVersion", "ApplySkinAndShow", "LoadProgressForm",
                                         "LoadScreen", "loadtreeform"));
    EXPECT_TRUE(host.messages.empty());
    EXPECT_EQ(app.gLocalIni, folder.Path("INI/Local.Ini"));
    EXPECT_TRUE(app.gUseSkins);
    EXPECT_EQ(app.gSkinScheme, "Daylight");
    EXPECT_TRUE(app.gConnection->IsOpen());
}

TEST_F(StartUpTest, TheSettingNamesTheFirstScreen) {
    struct Case {
        std::string form;
        std::vector<ScriptedHost::OpenedScreen> screens;
        std::string logged;
    };
    const Case cases[] = {{"Treeview", {{Screen::Treeview, false}}, "c. Call frm_Treeview.loadtreeform"},
                          {"Listview", {{Screen::Listview, false}}, "2. Show frm_Listview"},
                          {"ConvertSQL", {{Screen::ConvertSql, false}}, "2. Show frmConvertSQL"},
                          {"Scheduler", {{Screen::Scheduler, false}}, "Started in form....Scheduler"},
                          {"Elsewhere", {}, "Done Starting in form....Elsewhere"}};
    for (const Case& one : cases) {
        Settings(report, folder.Path("visio files"), one.form);
        host.screens.clear();
        frame.calls.clear();
        SubMain(app, frame);
        EXPECT_EQ(host.screens, one.screens) << one.form;
        EXPECT_EQ(std::count(frame.calls.begin(), frame.calls.end(), "loadtreeform"), one.form == "Treeview");
        EXPECT_THAT(ReadFile(folder.Path("INI/ProcessLog.Txt")), HasSubstr(one.logged));
    }
}

TEST_F(StartUpTest, AWrongReportIsToldAndLeadsToThePicker) {
    const std::string gone = folder.Path("gone.text"), other = folder.Path("other.text");
    WriteFile(other, "no report\n");
    struct Case {
        std::string path, text;
        bool picks;
    };
    const Case cases[] = {
        {"", "IDMS Report File has not been set. Please set it.\r\n " + sample, true},
        {gone, "IDMS Report File :" + gone + "\r\ndoes not exist. Please set it.\r\n" + sample, true},
        {other, "Invalid IDMS Report File :" + other + "\r\nAction terminated.\r\n" + sample, false}};
    for (const Case& one : cases) {
        Settings(one.path, "");
        host.messages.clear();
        host.screens.clear();
        frame.calls.clear();
        SubMain(app, frame);
        EXPECT_THAT(host.Texts(), ElementsAre(one.text));
        EXPECT_EQ(host.messages[0].title, "");
        EXPECT_EQ(host.messages[0].icon, Icon::None);
        EXPECT_EQ(SettingsOpened(), one.picks);
        EXPECT_EQ(frame.calls.back(), one.picks ? "changerptfile" : "loadtreeform");
        EXPECT_THAT(LogLines().back(), HasSubstr("*END*")) << "the log is closed before the checks";
    }
}

TEST_F(StartUpTest, AMissingDrawingFolderIsToldAndLeadsToThePicker) {
    for (const std::string& location : {std::string(), folder.Path("removed")}) {
        Settings(report, location);
        host.messages.clear();
        SubMain(app, frame);
        EXPECT_THAT(host.Texts(), ElementsAre("Schema Visio Save Location folder has not been set."));
        EXPECT_TRUE(SettingsOpened());
        EXPECT_EQ(frame.calls.back(), "changevisiolocation");
    }
}

TEST_F(StartUpTest, ASkinThatIsGoneIsToldOnceAndTheIniStays) {
    Settings(report, folder.Path("visio files"));
    for (const std::string& name : {std::string("Gone"), std::string()}) {
        const std::string ini = "[Skins]\nUseSkins=True\nSkinScheme=" + name + "\n";
        WriteLocalIni(ini);
        host.messages.clear();
        SubMain(app, frame);
        ASSERT_EQ(host.messages.size(), 1U);
        EXPECT_EQ(host.messages[0].text,
                  "Unable to use the Skin \"" + name +
                      "\". The skin folder doesn't exist. You can go to the \"Colors Screen\" and specify "
                      "another \"Color Scheme\" and \"Skin Scheme\" from there.");
        EXPECT_EQ(host.messages[0].title, "Skin Folder...");
        EXPECT_EQ(host.messages[0].icon, Icon::Information);
        EXPECT_FALSE(app.gUseSkins);
        EXPECT_EQ(app.gSkinScheme, "");
        EXPECT_EQ(ReadFile(folder.Path("INI/Local.Ini")), ini);
    }
}

TEST_F(StartUpTest, WithoutSkinsTheSchemeIsNotRead) {
    Settings(report, folder.Path("visio files"));
    WriteLocalIni("[Skins]\nUseSkins=False\nSkinScheme=Gone\n");
    SubMain(app, frame);
    EXPECT_TRUE(host.messages.empty());
    EXPECT_EQ(app.gSkinScheme, "");
}

TEST_F(StartUpTest, WithoutLocalIniOrStoreTheProgramStopsBeforeItsFrame) {
    Settings(report, folder.Path("visio files"));
    const auto stopsWith = [this](FailureNumber number, const std::string& word) {
        try {
            SubMain(app, frame);
            ADD_FAILURE() << "it starts";
        } catch (const RuntimeFailure& failure) {
            EXPECT_EQ(failure.Number(), number);
            EXPECT_THAT(failure.what(), HasSubstr(word));
        }
        EXPECT_THAT(frame.calls, Not(::testing::Contains("ApplySkinAndShow")));
        EXPECT_TRUE(host.messages.empty());
    };
    DeleteFile(folder.Path("INI/Local.Ini"));
    stopsWith(FailureNumber::TypeMismatch,
              "Type mismatch\r\nThe file is missing: " + folder.Path("INI/Local.Ini"));
    EXPECT_EQ(app.gLocalIni, "");
    WriteLocalIni("[Skins]\nUseSkins=maybe\n");
    stopsWith(FailureNumber::TypeMismatch, "UseSkins");
    WriteLocalIni("[Skins]\nUseSkins=0\n");
    WriteFile(folder.Path("Database/records.mdb"), "something else");
    stopsWith(FailureNumber::StoreFailure, "records.mdb");
    DeleteFile(folder.Path("Database/records.mdb"));
    stopsWith(FailureNumber::StoreFailure, "records.mdb");
    EXPECT_FALSE(FileExists(folder.Path("Database/records.mdb"))) << "opening makes no store";
}

}  // namespace
}  // namespace norvelis::commands
