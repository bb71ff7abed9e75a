#include "commands/report_repair.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "base/paths.h"
#include "commands/frame_commands.h"
#include "core/settings.h"
#include "testing/test_store.h"

namespace norvelis::commands {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

class ReportRepairTest : public ::testing::Test {
  protected:
    ReportRepairTest() { std::filesystem::create_directories(test.folder.Path("in")); }

    static std::string Utf16(const std::string& text) {
        std::string wide;
        for (const char c : text) {
            wide += c;
            wide += '\0';
        }
        return wide;
    }
    std::string SetReport(const std::string& bytes) {
        WriteFile(report, bytes);
        setreportlocation(app, report);
        return report;
    }

    TestApp test;
    AppState& app = test.app;
    const std::string sample = ReadFile(NORVELIS_SOURCE "/app/reportfiles/empschm.text");
    const std::string report = test.folder.Path("in/empschm.text"),
                      copy = test.folder.Path("in/empschm-repaired.text");
};

TEST_F(ReportRepairTest, ARefusedReportIsRepairedIntoACopyThatIsThenTheReport) {
    SetReport(Utf16(sample));
    test.host.answers = {Answer::No};
    EXPECT_FALSE(mnu_View_IDMS_Report_File(app));
    EXPECT_THAT(test.host.Texts(),
                ElementsAre(StartsWith("Invalid IDMS Schema Report File :"), HasSubstr("UTF-16LE")));
    EXPECT_FALSE(FileExists(copy));
    EXPECT_EQ(getreportlocation(app), report);

    test.host.messages.clear();
    EXPECT_TRUE(mnu_View_IDMS_Report_File(app));
    EXPECT_EQ(ReadFile(copy), sample);
    EXPECT_EQ(ReadFile(report), Utf16(sample)) << "the file stays as it was";
    EXPECT_EQ(getreportlocation(app), copy);
    EXPECT_EQ(app.gReportFile, copy);
    EXPECT_EQ(mnu_Classic_Extract_Report(app, [] {}), 0u);
    EXPECT_GT(app.gConnection->Count("Select count(*) FROM Record_layout"), 0);
}

TEST_F(ReportRepairTest, WhatRepairDoesNotHelpIsNotOffered) {
    SetReport("no report\n");
    EXPECT_FALSE(mnu_View_IDMS_Report_File(app));
    EXPECT_EQ(test.host.messages.size(), 1u);
    test.host.messages.clear();
    std::string cut = sample;
    cut.erase(cut.find("0DATA ITEM"), 10);
    app.gReportFile = SetReport(cut);
    EXPECT_FALSE(OfferRepairForWarnings(app, 1));
    EXPECT_TRUE(test.host.messages.empty());
}

TEST_F(ReportRepairTest, AReportWithWarningsIsRepairedWhenThatLeavesFewer) {
    std::string damaged = sample;
    std::ranges::replace(damaged, '\n', '\r');
    SetReport(damaged);
    WriteFile(copy, "somebody's");
    const std::size_t warnings = mnu_Classic_Extract_Report(app, [] {});
    ASSERT_GT(warnings, 0u);
    test.host.messages.clear();
    ASSERT_TRUE(OfferRepairForWarnings(app, warnings));
    EXPECT_THAT(test.host.Texts(),
                ElementsAre(AllOf(StartsWith("Repair leaves 0 of the "), HasSubstr("CR line ends"),
                                  HasSubstr("-repaired-2.text"))));
    EXPECT_EQ(ReadFile(copy), "somebody's");
    EXPECT_EQ(ExtractReport(app, ValidateReportFile(app.gReportFile), [] {}), 0u);
}

TEST_F(ReportRepairTest, ACopyThatCanNotBeWrittenIsSaid) {
    SetReport(Utf16(sample));
    std::filesystem::create_directories(copy);
    EXPECT_FALSE(mnu_View_IDMS_Report_File(app));
    ASSERT_EQ(test.host.messages.size(), 3u);
    EXPECT_THAT(test.host.messages.back().text, HasSubstr(copy));
    EXPECT_EQ(getreportlocation(app), report);
}

}  // namespace
}  // namespace norvelis::commands
