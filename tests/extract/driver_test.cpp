#include "extract/driver.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/failure.h"
#include "base/paths.h"
#include "core/settings.h"
#include "dictionary/findings.h"
#include "store/former_store.h"
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
        return process_Classic_Extract_Report(app, driver, file).done;
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

TEST_F(DriverTest, NothingIsLostByAccident) {
    SetReport(HeaderOf("ONE") + RecordHead("A", "DIRECT") + RecordHead("B", "DIRECT") +
              RecordHead("C", "DIRECT"));
    ASSERT_TRUE(Extract());
    const struct {
        std::string report, words;
    } cases[] = {
        {" RECORD NAME........ EMP\n", "The report yields no record."},
        {ReportOf("ONE"), "Records of schema ONE: the report yields 1, the dictionary has 3."},
        {ReportOf(""), "The report has no schema name, and these schemas would be removed: ONE."},
    };
    for (const auto& c : cases) {
        SetReport(c.report);
        test.host.messages.clear();
        test.host.answers = {Answer::Yes, Answer::No};
        EXPECT_FALSE(Extract());
        ASSERT_EQ(test.host.messages.size(), 2u) << c.words;
        EXPECT_NE(test.host.messages[1].text.find(c.words), std::string::npos) << test.host.messages[1].text;
        EXPECT_EQ(test.host.messages[1].defaultAnswer, Answer::No);
        EXPECT_EQ(Records("ONE"), 3);
    }
    test.host.answers = {Answer::Yes, Answer::Yes};
    EXPECT_TRUE(Extract());
    EXPECT_EQ(Records("ONE"), 0);
}

TEST_F(DriverTest, TheFormerStoreIsKeptOnceAndRestored) {
    SetReport(ReportOf("ONE"));
    Extract();
    SetReport(ReportOf("TWO"));
    Extract();
    EXPECT_TRUE(FileExists(FormerStorePath(test.StorePath())));
    store.Close();
    RestoreFormerStore(test.StorePath());
    const auto restored = Connection::Open(ConnectionString(test.StorePath()));
    EXPECT_EQ(restored->Count("Select count(*) FROM Parents where schemaname = 'ONE'"), 1);
    EXPECT_EQ(restored->Count("Select count(*) FROM Parents where schemaname = 'TWO'"), 0);
}

TEST_F(DriverTest, WarningsCanRefuseAnExtraction) {
    SetReport(ReportOf("ONE"));
    Extract();
    SetReport(HeaderOf("ONE") + RecordHead("EMP", "DIRECT") + RecordHead("NEW", "DIRECT"));
    ExtractionDriver driver = InteractiveDriver(app, {});
    driver.refusesWarnings = true;
    EXPECT_FALSE(Extract(driver));
    EXPECT_EQ(Records("ONE"), 1);
    const auto present = dictionary::Findings(store);
    ASSERT_EQ(present.size(), 1u);
    EXPECT_EQ(present[0].kind, "calc-set");

    driver.refusesWarnings = false;
    EXPECT_TRUE(Extract(driver));
    const auto findings = dictionary::Findings(store);
    ASSERT_EQ(findings.size(), 2u);
    EXPECT_EQ(findings[0].kind, "data-items-missing");
    EXPECT_EQ(findings[0].line, 11u);
    auto incomplete = dictionary::IncompleteRecords(store);
    EXPECT_EQ(incomplete.Text("Recordname"), "EMP");
    incomplete.MoveNext();
    EXPECT_EQ(incomplete.Text("Recordname"), "NEW");

    SetReport(ReportOf("ONE"));
    Extract();
    EXPECT_EQ(dictionary::Findings(store).size(), 1u) << "gone with their schema";
}

TEST_F(DriverTest, FindingsOfANewerFormAreRefusedInWords) {
    SetReport(HeaderOf("ONE") + RecordHead("EMP", "DIRECT"));
    Extract();
    store.Execute("Update norvelis_forms set form = '2'");
    try {
        Extract();
        FAIL() << "the table was written all the same";
    } catch (const RuntimeFailure& failure) {
        EXPECT_THAT(failure.what(), testing::HasSubstr("made by a newer Norvelis"));
    }
    EXPECT_EQ(Records("ONE"), 1);
}

TEST_F(DriverTest, CanceledItKeepsTheOldDictionaryUntilTheNewOneIsWhole) {
    SetReport(ReportOf("ONE"));
    Extract();
    const std::string before = EveryRow(store);
    SetReport(ReportOf("TWO") + RecordHead("NEXT", "DIRECT") + RecordHead("THIRD", "DIRECT") +
              RecordHead("LAST", "DIRECT"));
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
    EXPECT_EQ(Records("TWO"), 4);
}

}  // namespace
}  // namespace norvelis
