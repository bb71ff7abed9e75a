#include <fmt/format.h>

#include <gtest/gtest.h>

#include "base/failure.h"
#include "extract/parent_pass.h"
#include "extract/record_pass.h"
#include "testing/small_report.h"
#include "testing/test_store.h"

namespace norvelis {
namespace {

class PassesTest : public ::testing::Test {
  protected:
    TestApp test;
    Connection& store = *test.app.gConnection;

    void Extract(const std::string& report) {
        ExtractionState state(test.app, store, Report(report), true);
        try {
            CollectParentandChildren(state);
            IdmsUpdateRecords(state);
        } catch (const RuntimeFailure& failure) {
            failure_ = failure.Number();
        }
        state.Finish();
    }
    Recordset Record(const std::string& name) {
        return store.Select("Select * FROM Record_Details where recordname =?", {name});
    }
    std::string ColumnOf(const std::string& table, const std::string& column) {
        std::string all;
        for (Recordset rows = store.Select("Select * FROM " + table); !rows.Eof(); rows.MoveNext()) {
            all += rows.Value(column).value_or("<null>") + ";";
        }
        return all;
    }

    std::optional<FailureNumber> failure_;
};

const std::string kFields = LineOf({{1, "0DATA ITEM"}}) + FieldLine("02", "KEY");
const std::string kEnd = SetLine("CALC");

TEST_F(PassesTest, HeaderValuesComeFromTheirWindows) {
    Extract(HeaderOf("EMPSCHM"));
    const Recordset row = store.Select("Select * FROM schema_details");
    EXPECT_EQ(row.Text("schemaname"), "EMPSCHM");
    EXPECT_EQ(row.Text("schemaversion"), "1") << "the window of 17 characters cuts the version";
    EXPECT_EQ(row.Text("schemarelease"), "RELEASE 5");
    EXPECT_EQ(row.Text("schemadate"), "11/24/26");
}

TEST_F(PassesTest, LocationModesMakeSkeletonsAndEntries) {
    Extract(HeaderOf("S") + RecordHead("C", "CALC USING K DUPLICATES NOT ALLOWED") +
            RecordHead("D", "DIRECT DUPLICATES NOT ALLOWED") +
            RecordHead("V", "VIA SET X DUPLICATES Not ALLOWED") + RecordHead("C", "DIRECT"));
    EXPECT_EQ(ColumnOf("Parents", "Recordname"), "C;D;");
    EXPECT_EQ(ColumnOf("Record_Details", "Recordname"), "C;D;V;") << "the first row of a name wins";
    EXPECT_EQ(ColumnOf("Record_Details", "Recmode"), "CALC;DIRECT;VIA;");
    EXPECT_EQ(ColumnOf("Record_Details", "dn"), "DN;;DN;") << "each mode looks for its own spelling";
}

TEST_F(PassesTest, ACompleteSectionFillsTheRowAndItsBoxText) {
    Extract(HeaderOf("S") + RecordHead("EMP", "CALC USING   EMP-ID DISPL 8 DUPLICATES NOT ALLOWED") +
            kFields + FieldLine("11", "TOO-DEEP") + kEnd);
    const Recordset row = Record("EMP");
    EXPECT_EQ(row.Text("reclen"), "120");
    EXPECT_EQ(row.Text("reckey"), "EMP-ID");
    EXPECT_EQ(row.Text("Information"),
              "EMP\r\n________________________________\r\n415 | FIXED | 120 | CALC\r\n"
              "________________________________\r\nEMP-ID | DN\r\n"
              "________________________________\r\nNORTH-AREA");
    EXPECT_EQ(ColumnOf("Record_layout", "fieldname"), "KEY;");
    EXPECT_EQ(ColumnOf("Record_layout", "Fieldlevel"), "02;");
}

TEST_F(PassesTest, AReportCutOffInASectionKeepsTheFieldsAndTheSkeleton) {
    Extract(HeaderOf("S") + RecordHead("EMP", "DIRECT") + kFields);
    EXPECT_EQ(ColumnOf("Record_layout", "fieldname"), "KEY;");
    EXPECT_EQ(Record("EMP").Value("Information"), std::nullopt);
    EXPECT_EQ(Record("EMP").Value("next_step"), "");
}

TEST_F(PassesTest, ANameThatBeginsAnotherTakesTheSectionThatStandsFirst) {
    Extract(HeaderOf("S") + RecordHead("EMPLOYEE", "DIRECT") + LineOf({{1, "0DATA ITEM"}}) +
            FieldLine("02", "LONG") + RecordHead("EMP", "DIRECT") + kFields + kEnd);
    EXPECT_EQ(ColumnOf("Record_layout", "Recordname"), "EMPLOYEE;EMP;");
    EXPECT_EQ(ColumnOf("Record_layout", "fieldname"), "LONG;LONG;");
}

TEST_F(PassesTest, SetsBecomeConnectionsAndEachPairOneStep) {
    Extract(HeaderOf("S") + RecordHead("DEPT", "DIRECT") + kFields + kEnd + OwnerLine("DEPT") +
            MemberLine("EARLY", "", "") + SetLine("DEPT-EMP") + OwnerLine("DEPT") +
            MemberLine("EMP", "NEXT PRIOR", "MANDATORY") + MemberLine("JOB", "INDX", "OPTIONAL") +
            SetLine("DEPT-BOSS") + OwnerLine("DEPT") + MemberLine("EMP", "NEXT", "MANUAL") + SetLine("SELF") +
            OwnerLine("DEPT") + MemberLine("DEPT", "NEXT", "X"));
    EXPECT_EQ(Record("DEPT").Text("next_step"), "EMP,JOB");
    EXPECT_EQ(ColumnOf("Connection_Details", "next_step"), "EMP;JOB;EMP;");
    EXPECT_EQ(ColumnOf("Connection_Details", "connection"),
              "NEXT PRIOR       \r\nMANDATORY;\r\nOPTIONAL;NEXT             \r\nMANUAL;");
}

TEST_F(PassesTest, IndexesGatherTheirKeysFromTheWholeReport) {
    const std::string indexLine = LineOf({{21, "IX-NAME"}, {39, "INDEX MEMBER"}});
    Extract(HeaderOf("S") + RecordHead("EMP", "DIRECT") + indexLine + indexLine +
            LineOf({{1, "0DATA ITEM"}}) + FieldLine("02", "LAST-NAME") + ControlItem("IX-NAME") +
            FieldLine("02", "FIRST-NAME") + ControlItem("IX-NAME", "DSC") + kEnd + SetLine("IX-NAME") +
            OwnerLine("SYSTEM") + MemberLine("EMP", "INDX", "OPTIONAL AUTOMATIC"));
    EXPECT_EQ(Record("EMP").Text("Index1"), "IX-NAME");
    EXPECT_EQ(Record("EMP").Value("Index2"), "");
    const Recordset row = store.Select("Select * FROM Index_Details");
    ASSERT_EQ(row.RecordCount(), 1u);
    EXPECT_EQ(row.Text("sortkey1"), "LAST-NAME");
    EXPECT_EQ(row.Text("sortorder2"), "DSC");
    EXPECT_EQ(row.Value("sortkey3"), std::nullopt);
    EXPECT_EQ(row.Text("sortoption"), "OPTIONAL AUTOMATIC");
    EXPECT_EQ(row.Text("Information").substr(0, 10), " LAST-NAME");
}

TEST_F(PassesTest, TheSixHundredAndFirstFieldEndsTheExtraction) {
    std::string report = HeaderOf("S") + RecordHead("A", "DIRECT") + kFields + RecordHead("B", "DIRECT") +
                         LineOf({{1, "0DATA ITEM"}});
    for (int i = 0; i < 601; ++i) report += FieldLine("02", fmt::format("F{}", i));
    Extract(report + kEnd);
    EXPECT_EQ(failure_, FailureNumber::SubscriptOutOfRange);
    EXPECT_EQ(store.Count("Select count(*) FROM Record_layout where recordname =?", {"B"}), 600);
    EXPECT_NE(Record("A").Value("Information"), std::nullopt);
    EXPECT_EQ(Record("B").Value("next_step"), std::nullopt);
}

TEST_F(PassesTest, EightBitNamesArriveAsUtf8) {
    Extract(HeaderOf("S") + RecordHead("M\xDCLLER'S", "DIRECT") + kFields + kEnd);
    EXPECT_EQ(ColumnOf("Record_layout", "Recordname"), "MÜLLER'S;");
}

}  // namespace
}  // namespace norvelis
