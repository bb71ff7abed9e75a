#include "copybook/copybook.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <regex>
#include <sstream>

#include "base/paths.h"
#include "testing/extracted_schema.h"
#include "testing/report_generator.h"
#include "testing/temporary_folder.h"

namespace norvelis::copybook {
namespace {

using dictionary::FieldContents;
using dictionary::RecordContents;
using dictionary::SchemaContents;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

/// The bytes that a COBOL compiler gives each record, in their order; its words where it refuses.
std::string LengthsByCompiler(const std::vector<Copybook>& copybooks) {
    const TemporaryFolder folder;
    std::string program =
        "       IDENTIFICATION DIVISION.\n       PROGRAM-ID. LENGTHS.\n"
        "       DATA DIVISION.\n       WORKING-STORAGE SECTION.\n";
    std::string display = "       PROCEDURE DIVISION.\n";
    for (const Copybook& copybook : copybooks) {
        WriteFile(folder.Path(copybook.FileName()), copybook.text);
        program += "       COPY \"" + copybook.FileName() + "\".\n";
        display += "           DISPLAY FUNCTION LENGTH (" + copybook.name + ").\n";
    }
    WriteFile(folder.Path("lengths.cob"), program + display + "           STOP RUN.\n");
    const std::string errors = folder.Path("errors"), out = folder.Path("out");
    const std::string command = "cd " + folder.Path() +
                                " && cobc -x -std=ibm-strict -o lengths lengths.cob 2>" + errors +
                                " && ./lengths >" + out;
    if (std::system(command.c_str()) != 0) return ReadFile(errors);
    return ReadFile(out);
}

/// The same by the dictionary, as the compiler prints it.
std::string LengthsOfReport(const SchemaContents& schema) {
    std::string lengths;
    for (const auto& record : schema.records) {
        std::ostringstream number;
        number << std::stol(record.length);
        lengths += number.str() + "\n";
    }
    return lengths;
}

void ExpectColumns(const std::vector<Copybook>& copybooks) {
    for (const Copybook& copybook : copybooks) {
        std::istringstream lines(copybook.text);
        for (std::string line; std::getline(lines, line);) {
            const bool isComment = line.size() > 6 && line[6] == '*';
            EXPECT_TRUE(isComment || line.starts_with("       ")) << line;
            const auto width = std::ranges::count_if(line, [](char c) { return (c & 0xC0) != 0x80; });
            EXPECT_LE(width, 72) << line;
        }
    }
}

TEST(Copybooks, HaveTheLengthsOfTheReportForACompiler) {
    const std::string reports[] = {ReadFile(NORVELIS_SOURCE "/app/reportfiles/empschm.text"),
                                   GenerateSchemaReport(60, 90, 30, 7)};
    for (const std::string& report : reports) {
        const SchemaContents schema = SchemaOf(report);
        const auto copybooks = CopybooksOf(schema);
        ASSERT_EQ(copybooks.size(), schema.records.size());
        ASSERT_GE(copybooks.size(), 14u);
        EXPECT_EQ(LengthsByCompiler(copybooks), LengthsOfReport(schema));
        ExpectColumns(copybooks);
    }
}

// Level, name, usage, picture, start and end as the dictionary has them; what the copybook says of them.
struct Case {
    std::string why;
    std::vector<FieldContents> fields;
    std::string length;  ///< Of the record, and of the copybook for a compiler.
    std::vector<std::string> lines;
};

/// With one blank in place of each run of blanks and line ends.
std::string OneLine(const std::string& text) {
    return std::regex_replace(text, std::regex("\\s+"), " ");
}

const Case kCases[] = {
    {"a table of at most six keeps all of them",
     {{"02", "COUNT-OF", "COMP", "S9(4)       1", "1", "2"},
      {"02", "WISH", "GROUP       OCCURS 1 TO 6 DEPENDING", "", "", ""},
      {"03", "TOPIC", "DISPLAY", "X(5)       3", "3", "7"},
      {"03", "PAGES", "COMP-3      OCCURS 2", "S9(3)V9(2)     8", "8", "13"}},
     "68",
     {"OCCURS 6 TIMES", "* OCCURS 1 TO 6 in the report", "OCCURS 2 TIMES PIC S9(3)V9(2) COMP-3"}},
    {"floats have no picture and a fourth byte of three digits is the sign",
     {{"02", "RATE", "COMP-1", "", "1", "4"},
      {"02", "WEIGHT", "COMP-2", "                 5", "5", "12"},
      {"02", "BALANCE", "DISPLAY", "S9(3)     13", "13", "16"},
      {"02", "FILLER", "DISPLAY", "X     17", "17", "17"}},
     "17",
     {"RATE COMP-1.", "WEIGHT COMP-2.", "PIC S9(3) SIGN TRAILING SEPARATE."}},
    {"an item over the bytes of the one before redefines it",
     {{"02", "WHOLE", "DISPLAY", "9(8)     1", "1", "8"},
      {"02", "PARTS", "GROUP", "", "", ""},
      {"03", "CENTURY", "DISPLAY", "9(4)     1", "1", "4"},
      {"03", "REST", "DISPLAY", "9(4)     5", "5", "8"},
      {"02", "BEHIND", "DISPLAY", "X     9", "9", "9"}},
     "9",
     {"PARTS REDEFINES WHOLE."}},
    {"one that COBOL cannot let redefine is a comment with all below it",
     {{"02", "FIRST-8", "DISPLAY", "X(8)     1", "1", "8"},
      {"02", "ACROSS", "GROUP", "", "", ""},
      {"03", "MIDDLE", "DISPLAY", "X(8)     5", "5", "12"},
      {"02", "LAST-1", "DISPLAY", "X     13", "13", "13"}},
     "13",
     {"* Left out: it begins at byte 5", "* 02 ACROSS.", "* 03 MIDDLE PIC X(8).", "PIC X(4).",
      "bytes 9 to 12."}},
    {"lost fields are bytes of their groups",
     {{"02", "TIMES-3", "GROUP       OCCURS 3", "", "", ""},
      {"03", "KNOWN-1", "DISPLAY", "X(4)     1", "1", "4"},
      {"02", "DEEP-1", "GROUP", "", "", ""},
      {"02", "BEHIND", "DISPLAY", "X(2)     29", "29", "30"},
      {"02", "DEEP-2", "GROUP       OCCURS 2", "", "", ""}},
     "40",
     {"A group whose items are not in the dictionary.", "PIC X(16).", "OCCURS 2 TIMES PIC X(5)."}},
    {"what contradicts its positions is bytes alone",
     {{"02", "LONGER", "COMP", "9(4)     1", "1", "4"},
      {"02", "BROKEN", "DISPLAY", "X(3     5", "5", "7"},
      {"02", "STRANGE", "BIT", "X     8", "8", "8"},
      {"02", "LOST", "DISPLAY     OCCURS 3", "", "9", "18"}},
     "18",
     {"PIC 9(4), usage COMP in the report, in 4 bytes.", "usage BIT in the report, in 1 byte.", "PIC X(4).",
      "PIC X(3).", "OCCURS 3 in the report, in 10"}},
    {"names become COBOL names, each its own",
     {{"02", "A#B", "DISPLAY", "X     1", "1", "1"},
      {"02", "A-B", "DISPLAY", "X     2", "2", "2"},
      {"02", "A@B", "DISPLAY", "X     3", "3", "3"},
      {"02", "DATE", "DISPLAY", "X     4", "4", "4"},
      {"02", "123", "DISPLAY", "X     5", "5", "5"},
      {"02", "stück", "DISPLAY", "X     6", "6", "6"},
      {"02", "A-NAME-OF-FORTY-CHARACTERS-THAT-IS-LONG-", "DISPLAY", "X     7", "7", "7"},
      {"02", "<b>\"'", "DISPLAY", "X     8", "8", "8"}},
     "8",
     {"02 A-B-2 ", "02 A-B ", "02 A-B-3 ", "02 DATE-ITEM ", "02 N-123 ", "02 ST-CK ",
      "* In the dictionary: stück", "02 A-NAME-OF-FORTY-CHARACTERS-THA PIC", "02 B ",
      "* In the dictionary: <b>\"'"}},
    {"levels out of order become levels that a compiler takes",
     {{"05", "OUTER", "GROUP", "", "", ""},
      {"10", "INNER", "DISPLAY", "X     1", "1", "1"},
      {"07", "BESIDE", "DISPLAY", "X     2", "2", "2"},
      {"03", "NEXT-ONE", "DISPLAY", "X     3", "3", "3"}},
     "3",
     {"* Level 07 in the report.", "10 BESIDE", "05 NEXT-ONE"}},
    {"a record without fields has its length", {}, "44", {"has no fields", "PIC X(44)."}},
};

TEST(Copybooks, SayWhatTheDictionaryDoesNotHold) {
    SchemaContents schema;
    schema.name = "CASES";
    std::string lengths;
    for (const Case& c : kCases) {
        RecordContents record;
        record.name = "CASE-" + std::to_string(schema.records.size());
        record.fields = c.fields;
        record.length = c.length;
        lengths += c.length + "\n";
        schema.records.push_back(std::move(record));
    }
    const auto copybooks = CopybooksOf(schema);
    for (std::size_t i = 0; i < copybooks.size(); ++i) {
        for (const std::string& line : kCases[i].lines)
            EXPECT_THAT(OneLine(copybooks[i].text), HasSubstr(line)) << kCases[i].why;
        EXPECT_THAT(copybooks[i].text,
                    AllOf(HasSubstr("levels 88"), HasSubstr("REDEFINES"), HasSubstr("DEPENDING")));
        EXPECT_THAT(copybooks[i].text, Not(HasSubstr("these entries take"))) << kCases[i].why;
    }
    EXPECT_EQ(LengthsByCompiler(copybooks), lengths);
    ExpectColumns(copybooks);
}

TEST(Copybooks, OfRecordsWithNamesThatAreNoneHaveNamesOfTheirOwn) {
    SchemaContents schema;
    for (const char* name : {"ORDER", "A_B", "A-B", "ORDER-RECORD", "", "../x"}) {
        schema.records.emplace_back();
        schema.records.back().name = name;
    }
    std::vector<std::string> files;
    for (const Copybook& copybook : CopybooksOf(schema)) files.push_back(copybook.FileName());
    EXPECT_THAT(files, ::testing::ElementsAre("ORDER-RECORD-2.cpy", "A-B-2.cpy", "A-B.cpy",
                                              "ORDER-RECORD.cpy", "NAMELESS.cpy", "X.cpy"));
}

}  // namespace
}  // namespace norvelis::copybook
