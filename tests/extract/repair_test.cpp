#include "extract/repair/repair.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/paths.h"
#include "base/text.h"
#include "extract/repair/report_form.h"
#include "testing/damaged_report.h"
#include "testing/literal_extraction.h"
#include "testing/report_generator.h"
#include "testing/small_report.h"

namespace norvelis::repair {
namespace {

literal::Dictionary RowsOf(const std::string& report) {
    literal::Dictionary dictionary;
    literal::ExtractReport(literal::SplitLines(report), dictionary);
    return dictionary;
}

std::vector<ChangeKind> KindsOf(const RepairedReport& report) {
    std::vector<ChangeKind> kinds;
    for (const Change& change : report.changes) kinds.push_back(change.kind);
    return kinds;
}

TEST(Repair, GivesTheRowsOfTheUndamagedReport) {
    for (std::uint64_t seed = 1; seed <= 2; ++seed) {
        const std::string report = GenerateSchemaReport(16, 24, 4, seed);
        const literal::Dictionary rows = RowsOf(report);
        for (const DamageKind& kind : kDamageKinds) {
            if (kind.repaired == 0) continue;
            const std::string damaged = DamageReport(report, kind.damage, seed);
            EXPECT_FALSE(RowsOf(damaged) == rows) << kind.name << " did no harm";
            const RepairedReport repaired = RepairReport(damaged);
            EXPECT_TRUE(RowsOf(repaired.bytes) == rows) << kind.name << ", seed " << seed;
            EXPECT_FALSE(repaired.changes.empty()) << kind.name;
        }
    }
}

TEST(Repair, LeavesAPlainReportAsItIs) {
    std::string crlf;
    for (const char c : GenerateSchemaReport(20, 30, 9, 3)) {
        if (c == '\n') crlf += '\r';
        crlf += c;
    }
    for (const std::string& report :
         {ReadFile(NORVELIS_SOURCE "/app/reportfiles/empschm.text"), crlf, GenerateSchemaReport(12, 30, 9, 1),
          HeaderOf("S") + RecordHead("EMP", "DIRECT"), std::string()}) {
        const RepairedReport repaired = RepairReport(report);
        EXPECT_EQ(repaired.bytes, report);
        EXPECT_TRUE(repaired.changes.empty());
    }
}

TEST(Repair, LineNumbersAreThoseOfTheFile) {
    const std::string report = GenerateSchemaReport(60, 60, 3, 5);
    for (const Damage damage :
         {Damage::HeadingsInHeads, Damage::BlankLinesInHeads, Damage::ReturnEnds, Damage::FixedLines}) {
        const std::string damaged = DamageReport(report, damage, 7);
        const RepairedReport repaired = RepairReport(damaged);
        auto onDisk = literal::SplitLines(damaged);
        if (damage == Damage::ReturnEnds || damage == Damage::FixedLines)
            onDisk = literal::SplitLines(report);
        const auto lines = literal::SplitLines(repaired.bytes);
        for (std::size_t i = 0; i < lines.size(); ++i)  // blanks at the end of a fixed line are no text
            ASSERT_EQ(TrimEnd(lines[i]), TrimEnd(onDisk.at(repaired.lines.OnDisk(i + 1) - 1))) << i;
    }
}

TEST(Repair, AHeaderAsOtherReleasesPrintItIsRead) {
    const std::string report = LineOf({{1, "1IDMSRPTS RELEASE 10.2"}}) +
                               LineOf({{1, " SCHEMA EMPSCHM  VERSION    1"}}) + RecordHead("EMP", "DIRECT") +
                               LineOf({{1, "0DATA ITEM"}}) + FieldLine("02", "KEY") + SetLine("CALC");
    const RepairedReport repaired = RepairReport(report);
    const literal::Dictionary rows = RowsOf(repaired.bytes);
    ASSERT_EQ(rows.Record_Details.size(), 1u);
    EXPECT_EQ(rows.Record_Details[0].Bytes("schemaname"), "EMPSCHM");
    EXPECT_EQ(rows.schema_details[0].Bytes("schemaversion"), "1");
    EXPECT_THAT(KindsOf(repaired),
                testing::UnorderedElementsAre(ChangeKind::SchemaWord, ChangeKind::HeaderFilled));
    EXPECT_EQ(repaired.lines.OnDisk(11), 3u) << "the name line";
}

TEST(Repair, OnlyHeadingsThatDoHarmAreRemoved) {
    const std::string heading = "1IDMSRPTS RELEASE 10.2    PAGE    2\n SCHEMA=S\n";
    const std::string start = heading + "0\n0\n0\n0\n0\n0\n0\n0\n";
    const std::string field = LineOf({{1, "0DATA ITEM"}}) + FieldLine("02", "KEY");
    const std::string key = ControlItem("IX");
    const std::string harmless = start + RecordHead("EMP", "DIRECT") + field + key + heading + field;
    EXPECT_TRUE(RepairReport(harmless).changes.empty());

    const std::string unused = start + RecordHead("EMP", "DIRECT") + field + heading + key + field;
    EXPECT_TRUE(RepairReport(unused).changes.empty()) << "no record is a member of the index";

    const std::string head = start + RecordHead("EMP", "DIRECT") +
                             LineOf({{2, "SET MEMBERSHIP..... IX"}, {39, "INDEX MEMBER"}}) + field;
    const RepairedReport repaired = RepairReport(head + heading + "\n" + key + field);
    EXPECT_EQ(repaired.bytes, head + key + field);
    ASSERT_EQ(KindsOf(repaired), (std::vector{ChangeKind::HeadingsRemoved, ChangeKind::BlankLinesRemoved}));
    EXPECT_EQ(repaired.changes[0].firstLine, 19u);
    EXPECT_EQ(repaired.changes[0].count, 2u);
}

TEST(Repair, TheCodePageIsChosenOrSeenByItsBrackets) {
    const std::string report = GenerateSchemaReport(2, 2, 2, 1) + " PICTURE [A]\n";
    EXPECT_EQ(RepairReport(DamageReport(report, Damage::Ebcdic037, 1)).bytes, report);
    const std::string other = DamageReport(report, Damage::Ebcdic1047, 1);
    EXPECT_EQ(RepairReport(other).bytes, report);
    EXPECT_NE(RepairReport(other, Encoding::Ebcdic037).bytes, report);
    EXPECT_EQ(EncodingNamed("cp1047"), Encoding::Ebcdic1047);
    EXPECT_EQ(EncodingNamed("EBCDIC"), std::nullopt);
}

TEST(ReportForm, IsReportedForEveryLine) {
    const std::string report = GenerateSchemaReport(12, 12, 6, 2);
    EXPECT_TRUE(FormOf(report).IsPlain());
    EXPECT_EQ(FormOf(DamageReport(report, Damage::FixedLines, 1)).lineLength, 133u);
    EXPECT_EQ(FormOf(DamageReport(report, Damage::CutAt80, 1)).cutAt, 80u);
    EXPECT_EQ(FormOf(DamageReport(report, Damage::ColumnStripped, 1)).shift, -1);
    EXPECT_EQ(FormOf(DamageReport(report, Damage::ColumnShifted, 1)).shift, 1);
    EXPECT_EQ(FormOf(DamageReport(report, Damage::Tabs, 1)).firstTab, 1u);
}

}  // namespace
}  // namespace norvelis::repair
