#include "extract/driver.h"

#include <gtest/gtest.h>

#include "base/failure.h"
#include "base/paths.h"
#include "core/settings.h"
#include "testing/every_row.h"
#include "testing/small_report.h"
#include "testing/test_store.h"

namespace norvelis {
namespace {

class DriverTest : public ::testing::Test {
  protected:
    TestApp test;
    AppState& app = test.app;
    Connection& store = *test.app.gConnection;
    std::string report = test.folder.Path("report.txt");

    void SetReport(const std::string& content) {
        WriteFile(report, content);
        setreportlocation(app, report);
    }
    bool Extract(const ExtractionDriver& driver) {
        const ReportFile file = ValidateReportFile(getreportlocation(app));
        return process_Classic_Extract_Report(app, driver, file).has_value();
    }
    bool Extract() { return Extract(InteractiveDriver(app, {})); }
    long Records(const std::string& schema) {
        return store.Count("Select count(*) FROM Record_Details where schemaname =?", {schema});
    }
    static std::string ReportOf(const std::string& schema) {
        return HeaderOf(schema) + RecordHead("EMP", "CALC USING KEY") + LineOf({{1, "0DATA ITEM"}}) +
               FieldLine("02", "F") + SetLine("CALC");
    }
};

TEST_F(DriverTest, RefusalsAreReportedInTheirWordsAndLeadToTheSettings) {
    EXPECT_FALSE(Extract());
    setreportlocation(app, report);
    EXPECT_FALSE(Extract());
    WriteFile(report, "no report");
    EXPECT_FALSE(Extract());
    const std::vector<std::string> expected = {
        "IDMS Report file has not been set.",
        "Report File :" + report + "\r\ndoes not exist. Please set it.",
        "Invalid IDMS Report File :" + report + "\r\nAction terminated",
    };
    EXPECT_EQ(test.host.Texts(), expected);
    const std::vector<ScriptedHost::OpenedScreen> screens = {{Screen::Settings, false},
                                                             {Screen::Settings, true}};
    EXPECT_EQ(test.host.screens, screens);
    EXPECT_EQ(app.gReportFile, "");
}

TEST_F(DriverTest, StagesQuestionAndFinalTextComeInOrder) {
    SetReport(ReportOf("ONE"));
    bool refreshed = false;
    EXPECT_TRUE(Extract(InteractiveDriver(app, [&] { refreshed = true; })));
    EXPECT_TRUE(refreshed);
    const std::vector<std::string> statuses = {
        "Collecting CALC and VIA Records ", "Adding more information to Records ", "Extracting Record: EMP",
        "Adding Index and Connections Records ", ""};
    EXPECT_EQ(test.host.statuses, statuses);
    EXPECT_EQ(test.host.messages[0].text, "Delete all dictionaries and extract report?");
    EXPECT_EQ(test.host.messages[0].icon, Icon::Question);
    EXPECT_EQ(test.host.Texts().back(), "Done Extracting Records from report file: \r\n" + report +
                                            "\r\n into Access File:\r\n" + test.StorePath());
    EXPECT_EQ(app.gSchemaName, "ONE");
}

TEST_F(DriverTest, NoAppendsAndReplacesTheSchemaOfTheReportAlone) {
    SetReport(ReportOf("ONE"));
    Extract();
    SetReport(ReportOf("TWO"));
    test.host.answers = {Answer::No, Answer::No};
    Extract();
    Extract();
    EXPECT_EQ(Records("ONE"), 1);
    EXPECT_EQ(Records("TWO"), 1);
    EXPECT_EQ(test.host.messages[3].text, "You have chosen to append new dictionary to existing report");

    Extract();  // Yes
    EXPECT_EQ(Records("ONE"), 0);
    EXPECT_EQ(store.Count("Select count(*) FROM schema_details"), 2)
        << "headers of other schemas stay behind";
}

TEST_F(DriverTest, TheSchedulerAsksNothingAndWritesToItsLog) {
    SetReport(ReportOf("ONE"));
    EXPECT_TRUE(Extract(SchedulerDriver(app, store)));
    EXPECT_TRUE(test.host.messages.empty());
    EXPECT_TRUE(test.host.statuses.empty());
    const std::string log = ReadFile(test.folder.Path("INI/ProcessLog.Txt"));
    EXPECT_NE(
        log.find("Form Scheduler ---- General message ---- Delete all dictionaries and extract report\r\n"),
        std::string::npos);
    EXPECT_NE(log.find("Form Scheduler ---- General message ---- Done Extracting Records"),
              std::string::npos);

    setreportlocation(app, "");
    EXPECT_FALSE(Extract(SchedulerDriver(app, store)));
    EXPECT_TRUE(test.host.screens.empty());
}

TEST_F(DriverTest, AReportThatVanishesBehindItsCheckIsMissing) {
    SetReport(ReportOf("ONE"));
    ReportFile file = ValidateReportFile(report);
    DeleteFile(report);
    EXPECT_FALSE(process_Classic_Extract_Report(app, InteractiveDriver(app, {}), std::move(file)));
    EXPECT_EQ(test.host.Texts().back(), "IDMS Report file is missing");
}

TEST_F(DriverTest, AFailureOfTheReportKeepsWhatWasGatheredAndOtherSchemas) {
    std::string tooManyFields = RecordHead("LAST", "DIRECT") + LineOf({{1, "0DATA ITEM"}});
    for (int i = 0; i < 601; ++i) tooManyFields += FieldLine("02", "F");
    const struct {
        std::string schema, end;
        FailureNumber failure;
        long records;
    } cases[] = {
        {"CUT", LineOf({{2, "RECORD NAME........ LAST"}}) + "one line\n", FailureNumber::InputPastEnd, 1},
        {"WIDE", tooManyFields + SetLine("CALC"), FailureNumber::SubscriptOutOfRange, 2}};
    SetReport(ReportOf("ONE"));
    Extract();
    for (const auto& c : cases) {
        SetReport(HeaderOf(c.schema) + RecordHead("EMP", "CALC USING KEY") + c.end);
        test.host.answers = {Answer::No};
        try {
            Extract();
            ADD_FAILURE() << c.schema;
        } catch (const RuntimeFailure& failure) {
            EXPECT_EQ(failure.Number(), c.failure);
        }
        const auto again = Connection::Open(ConnectionString(test.StorePath()));
        EXPECT_EQ(again->Count("Select count(*) FROM Record_Details where schemaname =?", {c.schema}),
                  c.records);
        EXPECT_EQ(Records("ONE"), 1);
    }
    EXPECT_EQ(store.Select("Select * FROM Record_Details where schemaname =?", {"CUT"}).Value("Information"),
              std::nullopt);
}

TEST_F(DriverTest, AStoreThatRefusesInTheMiddleKeepsItsOldState) {
    SetReport(ReportOf("ONE"));
    Extract();
    const std::string before = EveryRow(store);
    SetReport(ReportOf("TWO"));
    // At the first row, while the sections are read, when the records are written at last; and the engine
    // going back by itself, as it does when the disk is full.
    for (const std::string place :
         {"Parents BEGIN SELECT RAISE(ABORT, 'full')", "Record_layout BEGIN SELECT RAISE(ABORT, 'full')",
          "Record_Details BEGIN SELECT RAISE(ABORT, 'full')",
          "Record_layout BEGIN SELECT RAISE(ROLLBACK, 'full')"}) {
        store.Execute("CREATE TRIGGER full BEFORE INSERT ON " + place + "; END");
        EXPECT_THROW(Extract(), RuntimeFailure) << place;
        store.Execute("DROP TRIGGER full");
        EXPECT_EQ(EveryRow(store), before) << place;
    }
    EXPECT_TRUE(Extract()) << "the store is not left locked";
}

TEST_F(DriverTest, CanceledItKeepsTheOldDictionaryUntilTheNewOneIsWhole) {
    SetReport(ReportOf("ONE"));
    Extract();
    const std::string before = EveryRow(store);
    SetReport(ReportOf("TWO") + RecordHead("LAST", "DIRECT"));
    bool inRefresh = false;
    const auto refresh = [&] {
        inRefresh = true;
        test.host.Yield();
    };
    long turn = 0;
    while (!inRefresh) {
        test.host.cancelAtYield = test.host.yields + ++turn;
        EXPECT_FALSE(test.host.RunCancelable([&] { Extract(InteractiveDriver(app, refresh)); })) << turn;
        const bool isOld = EveryRow(store) == before;
        EXPECT_EQ(isOld, !inRefresh) << turn;
        EXPECT_EQ(test.host.AfterCancel(),
                  isOld ? "The dictionary is as it was before."
                        : "The report is in the dictionary; REFRESH shows it in the tree.");
    }
    EXPECT_GT(turn, 10);
    EXPECT_EQ(Records("TWO"), 2);
}

}  // namespace
}  // namespace norvelis
