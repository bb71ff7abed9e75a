#include "extract/report.h"

#include <gtest/gtest.h>

#include <sstream>

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
    for (const auto& c : cases) {
        EXPECT_EQ(IsSchemaReport(c.bytes), c.expected) << c.bytes;
        std::istringstream file(c.bytes);
        EXPECT_EQ(IsSchemaReport(file), c.expected) << c.bytes;
    }
}

// The file is read in pieces of a megabyte: the keyword, its name and the line end may lie in two of them.
TEST(Report, AFileIsCheckedInPiecesAsItsBytesAre) {
    constexpr std::size_t kPiece = 1 << 20;
    const std::string named = "RECORD NAME........ EMPLOYEE\r\n", nameless = "RECORD NAME........ \r\nEMP";
    for (std::size_t begin = kPiece - 40; begin <= kPiece; ++begin) {
        for (const std::string& line : {named, nameless}) {
            const std::string bytes = std::string(begin, 'x') + line + std::string(100, 'y');
            std::istringstream file(bytes);
            EXPECT_EQ(IsSchemaReport(file), IsSchemaReport(bytes)) << begin << line;
        }
    }
    // The second search begins at the top again and finds the name without blanks before it.
    std::istringstream twice("RECORD NAME........   EMP\n" + std::string(kPiece, 'x') + named.substr(0, 23));
    EXPECT_TRUE(IsSchemaReport(twice));
}

TEST(Report, APathIsWhatItsFileIs) {
    TemporaryFolder folder;
    WriteFile(folder.Path("text"), "no report");
    WriteFile(folder.Path("report"), "RECORD NAME........ EMP");
    EXPECT_EQ(ValidateReportFile("  ").check, ReportCheck::NotNamed);
    EXPECT_EQ(ValidateReportFile(folder.Path("none")).check, ReportCheck::Missing);
    EXPECT_EQ(ValidateReportFile(folder.Path()).check, ReportCheck::Missing) << "a folder is no file";
    EXPECT_EQ(ValidateReportFile(folder.Path("text")).check, ReportCheck::NoReport);
    for (const char* name : {"none", "", "text", "report"})
        EXPECT_EQ(CheckReportFile(folder.Path(name)), ValidateReportFile(folder.Path(name)).check) << name;
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
