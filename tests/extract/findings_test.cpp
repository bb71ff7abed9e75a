#include "extract/findings.h"

#include <fmt/format.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <limits>
#include <set>

#include "base/failure.h"
#include "base/paths.h"
#include "extract/driver.h"
#include "extract/report_checks.h"
#include "testing/damaged_report.h"
#include "testing/report_generator.h"
#include "testing/small_report.h"
#include "testing/test_store.h"

namespace norvelis {
namespace {

using testing::Contains;
using testing::IsEmpty;

class FindingsTest : public testing::Test {
  protected:
    TestApp test;

    std::vector<Finding> Of(const std::string& report, const std::string& schema = {}) {
        return FindingsIn(test.app, {"report", ReportCheck::Valid, report, {}, {}}, schema);
    }
    std::vector<std::string> WarningsOf(const std::string& report) {
        std::vector<std::string> words;
        for (const Finding& finding : Of(report)) {
            if (SeverityOf(finding.kind) == Severity::Warning)
                words.push_back(std::string(NameOf(finding.kind)) + " " + WordsOf(finding));
        }
        return words;
    }
    std::set<FindingKind> KindsOf(const std::string& report) {
        std::set<FindingKind> kinds;
        for (const Finding& finding : Of(report)) kinds.insert(finding.kind);
        return kinds;
    }
};

const std::string kFields = LineOf({{1, "0DATA ITEM"}}) + FieldLine("02", "KEY");
const std::string kEnd = SetLine("CALC");
const std::string kEmp = RecordHead("EMP", "DIRECT") + kFields;

TEST_F(FindingsTest, UndamagedReportsHaveNoWarning) {
    const std::string sample = ReadFile(NORVELIS_SOURCE "/app/reportfiles/empschm.text");
    EXPECT_THAT(WarningsOf(sample), IsEmpty());
    EXPECT_THAT(KindsOf(sample), Contains(FindingKind::LevelLeftOut));
    for (std::uint64_t seed = 1; seed <= 5; ++seed)
        EXPECT_THAT(WarningsOf(GenerateSchemaReport(30, 70, 11, seed)), IsEmpty()) << seed;
}

TEST_F(FindingsTest, EveryDamageThatLeavesATraceIsReported) {
    const std::string report = GenerateSchemaReport(20, 40, 8, 1);
    for (const DamageKind& kind : kDamageKinds) {
        if (kind.reported == 0) continue;
        const std::string damaged = DamageReport(report, kind.damage, 11);
        const bool isForm = !CheckForm(damaged).empty();
        try {
            EXPECT_TRUE(isForm || !WarningsOf(damaged).empty()) << kind.name;
        } catch (const RuntimeFailure&) {
            // The extraction itself says that something is wrong.
        }
    }
}

TEST_F(FindingsTest, EachKindIsFoundWhereItIs) {
    const std::string head = HeaderOf("S");
    const struct {
        std::string report;
        FindingKind kind;
        std::size_t line;
        std::string subject;
    } cases[] = {
        {"1IDMSRPTS\n SCHEMA S  VERSION    1\n" + kEmp + kEnd, FindingKind::SchemaUnnamed, 2, ""},
        {"1IDMSRPTS\n SCHEMA S  VERSION    1\n" + kEmp + kEnd, FindingKind::NameInHeader, 3, "EMP"},
        {head + LineOf({{2, "RECORD NAME........ "}}) + kEmp + kEnd, FindingKind::NamePassedOver, 12, "EMP"},
        {head + kEmp + LineOf({{2, "RECORD NAME........ JOB"}}) + "\n\n\n\n\n\n" + kEnd,
         FindingKind::LocationModeMissing, 18, "JOB"},
        {head + kEmp + kEmp + kEnd, FindingKind::NameRepeated, 18, "EMP"},
        {head + RecordHead("SEVENTEEN-LETTERS-X", "DIRECT") + kFields + kEnd, FindingKind::NameTooLong, 11,
         "SEVENTEEN-LETTERS"},
        {head + LineOf({{2, "RECORD NAME........ EMP"}}) + LineOf({{2, "LOCATION MODE...... DIRECT"}}) + kEnd,
         FindingKind::LengthMissing, 11, "EMP"},
        {head + RecordHead("EMP", "DIRECT") + kEnd, FindingKind::DataItemsMissing, 11, "EMP"},
        {head + kEmp, FindingKind::SectionWithoutEnd, 11, "EMP"},
        {head + RecordHead("EMP", "CALC USING") + kFields + kEnd, FindingKind::ValueMissing, 11, "EMP"},
        {head + RecordHead("EMP-X", "DIRECT") + kFields + kEmp + kEnd, FindingKind::SectionOfAnother, 11,
         "EMP"},
        {head + kEmp + FieldLine("02", "KEY") + kEnd, FindingKind::FieldRepeated, 18, "EMP"},
        {head + kEmp + LineOf({{2, "02"}, {5, "N"}, {112, "12"}, {127, "13"}}) + kEnd, FindingKind::FieldGap,
         18, "EMP"},
        {head + kEmp + kEnd + SetLine("A") + MemberLine("EMP", "", ""), FindingKind::SetWithoutRows, 19, "A"},
        {head + kEmp + kEnd + SetLine("A") + OwnerLine("NONE") + MemberLine("EMP", "", ""),
         FindingKind::OwnerUnknown, 20, "A"},
        {head + kEmp + kEnd + SetLine("A") + OwnerLine("EMP") + MemberLine("NONE", "", ""),
         FindingKind::MemberUnknown, 21, "A"},
        {head + kEmp + kEnd + SetLine("A") + OwnerLine("EMP") + MemberLine("EMP", "", ""),
         FindingKind::SetToItself, 21, "A"},
        {head + kEmp + kEnd + SetLine("AB") + OwnerLine("EMP") + MemberLine("EMP", "", "") + SetLine("A") +
             OwnerLine("EMP") + MemberLine("EMP", "", ""),
         FindingKind::SetOfAnother, 22, "A"},
        {head + kEmp + LineOf({{2, "SET MEMBERSHIP..... IX"}, {39, "INDEX MEMBER"}}) + kEnd,
         FindingKind::IndexWithoutKeys, 18, "IX"},
        {head + "0TOTALS: 2 RECORDS, 0 SETS\n" + kEmp + kEnd, FindingKind::TotalsShort, 11, ""},
        {head + kEmp + kEnd + " OWNER.... EM", FindingKind::FileCutOff, 19, ""},
        {head + kEmp + FieldLine("88", "YES") + kEnd, FindingKind::LevelLeftOut, 11, "EMP"},
    };
    for (const auto& c : cases) {
        const auto findings = Of(c.report);
        const auto found = std::ranges::find(findings, c.kind, &Finding::kind);
        ASSERT_NE(found, findings.end()) << NameOf(c.kind) << '\n' << c.report;
        EXPECT_EQ(found->line, c.line) << WordsOf(*found);
        EXPECT_EQ(found->subject, c.subject) << WordsOf(*found);
    }
}

TEST_F(FindingsTest, ANameCanBeGivenToANamelessSchema) {
    const std::string report = HeaderOf("") + kEmp + kEnd;
    EXPECT_THAT(KindsOf(report), Contains(FindingKind::SchemaUnnamed));
    const auto findings = Of(report, "GIVEN");
    EXPECT_EQ(std::ranges::find(findings, FindingKind::SchemaUnnamed, &Finding::kind), findings.end());
}

TEST_F(FindingsTest, SectionsWithoutFieldsAreReadInTimeThatGrowsWithTheirNumber) {
    // Each of them is read up to the only list of fields, at the end of the report.
    const auto processorTime = [this](int records) {
        std::string report = HeaderOf("S");
        for (int i = 0; i < records; ++i) report += RecordHead(fmt::format("R{}", 10000 + i), "DIRECT");
        report += kEmp + kEnd;
        std::clock_t best = std::numeric_limits<std::clock_t>::max();
        for (int run = 0; run < 3; ++run) {
            const std::clock_t start = std::clock();
            EXPECT_GE(Of(report).size(), static_cast<std::size_t>(records));
            best = std::min(best, std::clock() - start);
        }
        return best;
    };
    EXPECT_LT(processorTime(8000), 20 * processorTime(1000)) << "a walk of squares takes 64 times as long";
}

}  // namespace
}  // namespace norvelis
