#include "extract/report.h"

#include <gtest/gtest.h>

#include "base/failure.h"
#include "base/paths.h"
#include "extract/report_file.h"
#include "testing/temporary_folder.h"

namespace norvelis {
namespace {

std::vector<std::string> LinesOf(const std::string& bytes) {
    const Report report(bytes);
    std::vector<std::string> lines;
    std::size_t position = 0;
    while (const auto line = report.NextLine(position)) lines.emplace_back(*line);
    return lines;
}

TEST(Report, LinesEndWithLfOrCrlfAndTheLastMayLackItsEnd) {
    EXPECT_EQ(LinesOf("a\r\nb\n\nc"), (std::vector<std::string>{"a", "b", "", "c"}));
    EXPECT_EQ(LinesOf("a\n"), (std::vector<std::string>{"a"}));
    EXPECT_TRUE(LinesOf("").empty());
}

TEST(Report, AFileIsAReportWhenItsFirstNameLineHasAName) {
    const struct {
        std::string bytes;
        bool expected;
    } cases[] = {{"", false},
                 {std::string(1000, '\0'), false},
                 {"RECORD NAME........ EMP", true},
                 {"RECORD NAME........ \nRECORD NAME........ EMP\n", false},
                 {"RECORD NAME........ EMPLOYEE-ADDRESS-X\r\n", true},
                 {"Record name........ EMP", false},
                 {"RECORD NAME........EMP", false}};
    for (const auto& c : cases) EXPECT_EQ(IsSchemaReport(c.bytes), c.expected) << c.bytes;
}

TEST(Report, APathIsWhatItsFileIs) {
    TemporaryFolder folder;
    WriteFile(folder.Path("text"), "no report");
    WriteFile(folder.Path("report"), "RECORD NAME........ EMP");
    EXPECT_EQ(ValidateReportFile("  ").check, ReportCheck::NotNamed);
    EXPECT_EQ(ValidateReportFile(folder.Path("none")).check, ReportCheck::Missing);
    EXPECT_EQ(ValidateReportFile(folder.Path()).check, ReportCheck::Missing) << "a folder is no file";
    EXPECT_EQ(ValidateReportFile(folder.Path("text")).check, ReportCheck::NoReport);
    const ReportFile report = ValidateReportFile(folder.Path("report"));
    EXPECT_EQ(report.check, ReportCheck::Valid);
    EXPECT_EQ(report.path, folder.Path("report"));
    EXPECT_EQ(report.bytes, "RECORD NAME........ EMP");
}

TEST(Report, OneEndlessLineIsReadLikeAnyOther) {
    std::string bytes(20'000'000, 'x');
    bytes += "RECORD NAME........ EMP ";
    EXPECT_EQ(Report(bytes).Lines().size(), 1u);
    EXPECT_TRUE(IsSchemaReport(bytes));
}

}  // namespace
}  // namespace norvelis
