#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/failure.h"
#include "base/paths.h"
#include "commands/frame_commands.h"
#include "core/settings.h"
#include "testing/test_store.h"

namespace norvelis::commands {
namespace {

using ::testing::ElementsAre;

class CommandsTest : public ::testing::Test {
  protected:
    TestApp test;
    AppState& app = test.app;
    const std::string sample = NORVELIS_SOURCE "/app/reportfiles/empschm.text";
    const ScriptedHost::OpenedScreen settings{Screen::Settings, false};

    std::vector<std::string> TakeTexts() {
        auto texts = test.host.Texts();
        test.host.messages.clear();
        return texts;
    }
    void Extract() {
        mnu_Classic_Extract_Report(app, [] {});
    }
};

TEST_F(CommandsTest, AReportThatIsNotThereIsRefusedInTheWordsOfTheCommand) {
    const std::string gone = test.folder.Path("gone"), other = test.folder.Path("other");
    WriteFile(other, "no report\n");
    struct Case {
        std::string path, extracting, viewing;
    };
    const Case cases[] = {
        {"", "IDMS Report file has not been set.", "IDMS Schema Report file has not been set."},
        {gone, "Report File :" + gone + "\r\ndoes not exist. Please set it.",
         "IDMS Schema Report File :" + gone + "\r\ndoes not exist. Please set it."},
        {other, "Invalid IDMS Report File :" + other + "\r\nAction terminated",
         "Invalid IDMS Schema Report File :" + other + "\r\nAction terminated"}};
    for (const Case& one : cases) {
        setreportlocation(app, one.path);
        test.host.screens.clear();
        Extract();
        EXPECT_THAT(TakeTexts(), ElementsAre(one.extracting));
        mnu_View_IDMS_Report_File(app);
        EXPECT_THAT(TakeTexts(), ElementsAre(one.viewing));
        if (one.path == other) {
            EXPECT_TRUE(test.host.screens.empty());
            EXPECT_EQ(app.gReportFile, "");
        } else {
            EXPECT_THAT(test.host.screens, ElementsAre(settings, settings));
        }
    }
}

TEST_F(CommandsTest, ExtractionAsksFirstAndShowsTheTreeAndItsBars) {
    setreportlocation(app, sample);
    test.host.answers = {Answer::No};
    Extract();
    ASSERT_EQ(test.host.messages.size(), 1U);
    EXPECT_EQ(test.host.messages[0].text, "Are you sure you want to extract IDMS report?");
    EXPECT_EQ(test.host.messages[0].title, "Extract Confirmation");
    EXPECT_EQ(test.host.messages[0].buttons, Buttons::YesNo);
    EXPECT_TRUE(test.host.screens.empty());

    bool barsAtRefresh = false;
    mnu_Classic_Extract_Report(app, [&] { barsAtRefresh = app.progress[Bar::TreeviewText].Visible; });
    EXPECT_THAT(test.host.screens, ElementsAre(ScriptedHost::OpenedScreen{Screen::Treeview, false}));
    EXPECT_TRUE(barsAtRefresh);
    EXPECT_FALSE(app.progress[Bar::TreeviewText].Visible);
    EXPECT_GT(app.gConnection->Count("Select count(*) FROM Record_Details"), 0);
}

TEST_F(CommandsTest, ABrokenReportGoesThroughAndTheBarsGo) {
    const std::string broken = test.folder.Path("broken");
    std::string text = ReadFile(sample);
    WriteFile(broken, text.substr(0, text.find("RECORD NAME........ ") + 60));
    setreportlocation(app, broken);
    EXPECT_THROW(Extract(), RuntimeFailure);
    EXPECT_FALSE(app.progress[Bar::TreeviewText].Visible);
    EXPECT_FALSE(app.progress[Bar::TreeviewValue].Visible);
}

TEST_F(CommandsTest, ViewingOpensTheViewer) {
    setreportlocation(app, sample);
    mnu_View_IDMS_Report_File(app);
    EXPECT_THAT(test.host.screens, ElementsAre(ScriptedHost::OpenedScreen{Screen::ReportViewer, false}));
    EXPECT_EQ(app.gReportFile, sample);
}

TEST_F(CommandsTest, OnlyTheSinglePageAsksForTheDrawingFolder) {
    std::vector<bool> drawn;
    const auto draw = [&](bool single) {
        EXPECT_TRUE(app.progress[Bar::TreeviewValue].Visible);
        drawn.push_back(single);
    };
    setvisiolocation(app, test.folder.Path("removed"));
    mnu_Draw_Fancy_Single(app, draw);
    EXPECT_THAT(TakeTexts(), ElementsAre("Please set where to drop Visio files."));
    EXPECT_THAT(test.host.screens, ElementsAre(settings));
    mnu_Draw_Fancy_Separate(app, draw);
    setvisiolocation(app, test.folder.Path());
    mnu_Draw_Fancy_Single(app, draw);
    EXPECT_THAT(drawn, ElementsAre(false, true));
    const ScriptedHost::OpenedScreen tree{Screen::Treeview, false};
    EXPECT_THAT(test.host.screens, ElementsAre(settings, tree, tree)) << "on which the drawing is seen";
    EXPECT_FALSE(app.progress[Bar::TreeviewValue].Visible);
}

TEST_F(CommandsTest, LeavingIsAsked) {
    test.host.answers = {Answer::No, Answer::Yes};
    EXPECT_FALSE(AskToExit(app));
    EXPECT_TRUE(AskToExit(app));
    EXPECT_EQ(test.host.messages[0].text, "Are you sure you want to exit the system?");
    EXPECT_EQ(test.host.messages[0].title, "Exit System...");
}

}  // namespace
}  // namespace norvelis::commands
