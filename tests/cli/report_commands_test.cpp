#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "cli/program.h"
#include "testing/damaged_report.h"
#include "testing/small_report.h"

// What extract and validate say of a report that loses something, and how the dictionary is kept from it.
namespace norvelis {
namespace {

using nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

const std::string kSample = std::string(NORVELIS_SOURCE) + "/app/reportfiles/empschm.text";

std::string Record(const std::string& name) {
    return RecordHead(name, "DIRECT") + LineOf({{1, "0DATA ITEM"}}) + FieldLine("02", "KEY");
}

class ReportCommands : public testing::Test {
  protected:
    std::string Report(const std::string& name, const std::string& content) const {
        WriteFile(program.Path(name), content);
        return program.Path(name);
    }
    std::string Dump() const { return program.Run("dump").out; }

    const Program program;
};

TEST_F(ReportCommands, WarningsArePrintedAndCountedNotesOnlyWhenWanted) {
    const auto sample = program.Run("extract " + kSample);
    EXPECT_THAT(sample.out, HasSubstr(", no warnings\n"));
    EXPECT_THAT(sample.error, Not(HasSubstr("warning:")));
    EXPECT_THAT(program.Run("validate --notes " + kSample).error, HasSubstr("note: line "));

    std::string many = HeaderOf("MANY") + Record("EMP");
    for (int i = 0; i < 25; ++i)
        many += LineOf({{2, "RECORD NAME........ "}}) + LineOf({{2, "LOCATION MODE...... DIRECT"}});
    const std::string report = Report("many", many + SetLine("CALC"));
    const auto validated = program.Run("validate " + report);
    EXPECT_EQ(validated.status, 0);
    EXPECT_THAT(validated.error, AllOf(HasSubstr("warning: line 18: a name line without a name"),
                                       HasSubstr("warning: 5 more warnings; --json lists them all\n")));
    EXPECT_EQ(std::count(validated.error.begin(), validated.error.end(), '\n'), 21);
    EXPECT_THAT(validated.out, HasSubstr(report + " is a schema report, 25 warnings\n"));

    const auto object = json::parse(program.Run("validate --json " + report).out);
    EXPECT_EQ(object["warnings"], 25);
    EXPECT_EQ(object["findings"].size(), 26u) << "with the note of the CALC set";
    EXPECT_EQ(object["findings"][0]["kind"], "name-missing");
    EXPECT_EQ(object["findings"][0]["line"], 18);
}

TEST_F(ReportCommands, StrictRefusesWarningsAndLeavesTheDictionary) {
    program.Run("extract " + kSample);
    const std::string before = Dump();
    const std::string report = Report("short", HeaderOf("EMPSCHM") + Record("EMP"));
    EXPECT_EQ(program.Run("validate --strict " + report).status, 1);
    const auto refused = program.Run("extract --strict --force " + report);
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.error, HasSubstr("1 warning, so the dictionary is as it was"));
    EXPECT_EQ(Dump(), before);
    EXPECT_EQ(program.Run("setting ReportLocation").out, kSample + "\n") << "the report was not accepted";
    EXPECT_EQ(program.Run("extract --strict " + kSample).status, 0) << "notes are no warnings";
}

TEST_F(ReportCommands, WhatWouldLoseTheDictionaryIsRefusedUnlessForced) {
    program.Run("extract " + kSample);
    const std::string before = Dump();
    const std::pair<std::string, const char*> cases[] = {
        {" RECORD NAME........ EMP\n", "The report yields no record."},
        {HeaderOf("EMPSCHM") + Record("EMP") + SetLine("CALC"),
         "Records of schema EMPSCHM: the report yields 1, the dictionary has 14."},
        {HeaderOf("") + Record("EMP") + SetLine("CALC"), "these schemas would be removed: EMPSCHM."}};
    for (const auto& [content, words] : cases) {
        const auto refused = program.Run("extract " + Report("less", content));
        EXPECT_EQ(refused.status, 1) << words;
        EXPECT_THAT(
            refused.error,
            AllOf(HasSubstr(words), HasSubstr("Nothing was changed; --force extracts it all the same\n")));
        EXPECT_EQ(Dump(), before);
        EXPECT_EQ(program.Run("setting ReportLocation").out, kSample + "\n");
    }
    const auto forced = program.Run("extract --force " + program.Path("less"));
    EXPECT_EQ(forced.status, 0);
    EXPECT_THAT(forced.out, AllOf(HasSubstr("Removed schemas: EMPSCHM\n"), HasSubstr(", 1 warning\n")));
    EXPECT_THAT(program.Run("tree ''").out, HasSubstr("EMP"));

    EXPECT_EQ(program.Run("store restore").status, 0);
    EXPECT_EQ(Dump(), before);
    EXPECT_EQ(program.Run("store restore").status, 0);
    EXPECT_THAT(program.Run("tree ''").out, HasSubstr("EMP")) << "the two change places";
}

TEST_F(ReportCommands, WithNothingToLoseAnythingIsExtracted) {
    const auto empty =
        program.Run("extract " + Report("nameless", HeaderOf("") + Record("EMP") + SetLine("CALC")));
    EXPECT_EQ(empty.status, 0) << empty.error;
    EXPECT_THAT(empty.error, HasSubstr("warning: the schema has no name: no SCHEMA= in the first ten lines"));
    EXPECT_EQ(program.Run("draw ''").status, 0);
    EXPECT_TRUE(FileExists(program.App() + "/visio files/nameless/nameless.vsd"));

    const auto named = program.Run("extract --schema GIVEN " + program.Path("nameless"));
    EXPECT_THAT(named.out, AllOf(HasSubstr("Schema GIVEN: 1 records"), HasSubstr("no warnings")));
}

TEST_F(ReportCommands, ADamagedOrMissingStoreIsMadeAgain) {
    const std::string good = program.Run("store create").error;
    EXPECT_THAT(good, HasSubstr("is a dictionary store in good order; nothing was created"));
    EXPECT_EQ(program.Run("store restore").status, 1);
    WriteFile(program.StorePath(), std::string(5000, 'x'));
    WriteFile(program.StorePath() + "-journal", "half a change");
    const auto made = program.Run("store create");
    EXPECT_EQ(made.status, 0) << made.error;
    EXPECT_EQ(ReadFile(program.StorePath() + ".damaged"), std::string(5000, 'x'));
    EXPECT_FALSE(FileExists(program.StorePath() + "-journal")) << "it belongs to the damaged one";
    EXPECT_EQ(program.Run("extract " + kSample).status, 0);
}

TEST_F(ReportCommands, RepairReadsWhatOtherwiseIsNoReport) {
    program.Run("extract " + kSample);
    const std::string before = Dump();
    const std::string report = Report("ebcdic", DamageReport(ReadFile(kSample), Damage::EbcdicFixedLines, 1));
    const auto refused = program.Run("extract " + report);
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.error, AllOf(HasSubstr("warning: the file is IBM037 (extract it with --repair)"),
                                     HasSubstr("Invalid IDMS Report File :")));

    const auto repaired = program.Run("extract --repair " + report);
    EXPECT_EQ(repaired.status, 0);
    EXPECT_THAT(repaired.error,
                AllOf(HasSubstr("repair: the file was read as IBM037, which it seems to be\n"),
                      HasSubstr("lines of 133 bytes without line ends were cut\n")));
    EXPECT_EQ(Dump(), before);
    EXPECT_EQ(
        json::parse(program.Run("validate --json --repair --encoding cp037 " + report).out)["repairs"].size(),
        2u);
    EXPECT_EQ(program.Run("validate --encoding cp037 " + report).status, 2) << "without --repair";
    EXPECT_EQ(program.Run("validate --repair --encoding EBCDIC " + report).status, 2);
}

}  // namespace
}  // namespace norvelis
