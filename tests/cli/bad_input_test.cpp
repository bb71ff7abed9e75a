#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

#include "cli/killed_program.h"
#include "cli/program.h"
#include "store/transaction.h"
#include "testing/report_generator.h"
#include "testing/small_report.h"

// Whatever is wrong with the report, the store or the machine: one line says what, and the schemas that were
// in the dictionary are still there.
namespace norvelis {
namespace {

std::string SmallReport(const std::string& schema, const std::string& middle = {}) {
    return HeaderOf(schema) + RecordHead("EMP", "CALC USING KEY") + LineOf({{1, "0DATA ITEM"}}) +
           FieldLine("02", "KEY") + middle + SetLine("CALC");
}

/// A shell's words for a user who is not let in everywhere.
std::string AsOrdinaryUser() {
    return geteuid() == 0 ? "setpriv --reuid=65534 --regid=65534 --clear-groups " : "";
}

class BadInput : public testing::Test {
  protected:
    BadInput() {
        WriteFile(program.Path("kept"), SmallReport("KEPT"));
        program.Run("extract " + program.Path("kept"));
        kept = Dump("--schema KEPT");
    }

    std::string Report(const std::string& content) const {
        WriteFile(program.Path("report"), content);
        return program.Path("report");
    }
    std::string Dump(const std::string& options = {}) const { return program.Run("dump " + options).out; }

    /// Refused with `words` at the end of one line.
    void ExpectRefusal(const Program::Result& result, const std::string& words) const {
        EXPECT_EQ(result.status, 1) << words;
        EXPECT_EQ(result.out, "") << words;
        const auto begin = result.error.find("norvelis-cli: ");
        ASSERT_NE(begin, std::string::npos) << words << ": " << result.error;
        const std::string line = result.error.substr(begin);
        EXPECT_EQ(std::count(line.begin(), line.end(), '\n'), 1) << line;
        EXPECT_TRUE(line.ends_with(words + "\n")) << line;
    }

    const Program program;
    std::string kept;
};

TEST_F(BadInput, WhatIsNoReportLeavesTheDictionaryAlone) {
    std::string binary(20'000, '\0');
    for (std::size_t i = 0; i < binary.size(); ++i) binary[i] = static_cast<char>(i * i >> 3);
    for (const std::string& content :
         {std::string(), std::string(1, '\n'), binary, std::string(1 << 20, 'x')}) {
        ExpectRefusal(program.Run("extract " + Report(content)),
                      "Invalid IDMS Report File :" + program.Path("report") + " Action terminated");
    }
    ASSERT_EQ(mkfifo(program.Path("pipe").c_str(), 0600), 0);
    const std::pair<std::string, const char*> noFiles[] = {
        {program.Path("none"), "does not exist. Please set it."},
        {program.Path("app"), "is a folder"},
        {program.Path("pipe"), "is a pipe"},
        {"/dev/zero", "is a device"}};
    for (const auto& [path, words] : noFiles) {
        for (const char* command : {"extract ", "validate "})
            ExpectRefusal(program.Run(command + path), "Report File :" + path + " " + words);
    }
    ExpectRefusal(program.Run("extract ''"), "IDMS Report file has not been set.");
    chmod(Report(SmallReport("NEW")).c_str(), 0);
    ExpectRefusal(program.Run("validate " + program.Path("report"), AsOrdinaryUser()),
                  "Run-time error '70': Permission denied: " + program.Path("report"));
    EXPECT_EQ(Dump("--schema KEPT"), kept);
}

TEST_F(BadInput, LimitsPassedAreRunTimeFailures) {
    std::string fields, keys;
    for (int i = 0; i < 600; ++i) fields += FieldLine("03", "FIELD");
    for (int i = 0; i < 501; ++i) keys += FieldLine("11", "KEY") + ControlItem("IX");
    const std::string member = LineOf({{21, "IX"}, {39, "INDEX MEMBER"}});
    ExpectRefusal(program.Run("extract --append " + Report(SmallReport("NEW", fields))),
                  "Run-time error '9': Subscript out of range: record EMP, line 617, field 601 of at most "
                  "600; what was gathered until then is in the dictionary (records: 1, fields: 600)");
    ExpectRefusal(
        program.Run("extract --append " + Report(SmallReport("NEW", member + keys))),
        "Run-time error '9': Subscript out of range: record EMP, line 1020, key 501 of at most "
        "500 of index IX; what was gathered until then is in the dictionary (records: 1, fields: 1)");
    ExpectRefusal(
        program.Run("extract --append " + Report(SmallReport("NEW") + " RECORD NAME........ LAST\n")),
        "Run-time error '62': Input past end of file: record LAST, line 19, has no location mode before the "
        "report ends; what was gathered until then is in the dictionary (records: 1, fields: 0)");
    EXPECT_EQ(Dump("--schema KEPT"), kept);
}

TEST_F(BadInput, AStoreThatCannotBeUsedIsNamedWithTheReason) {
    const std::string extract = "extract " + Report(SmallReport("NEW"));
    const std::string failure = "Run-time error '3709': Dictionary store: " + program.StorePath() + ": ";
    {
        const auto other = Connection::Open(ConnectionString(program.StorePath()));
        const Transaction writing(*other);
        ExpectRefusal(program.Run(extract), failure + "locked by another program");
    }
    EXPECT_EQ(Dump("--schema KEPT"), kept);

    chmod(program.StorePath().c_str(), 0444);
    ExpectRefusal(program.Run(extract, AsOrdinaryUser()), failure + "write-protected");
    chmod(program.StorePath().c_str(), 0);
    ExpectRefusal(program.Run(extract, AsOrdinaryUser()), failure + "may not be read");
    chmod(program.StorePath().c_str(), 0644);
    WriteFile(program.StorePath(), std::string(5000, 'x'));
    const std::string help = "; \"norvelis-cli store create\" makes an empty store and keeps a damaged one";
    ExpectRefusal(program.Run("dump"), failure + "wrong password, or the file is no dictionary store" + help);
    DeleteFile(program.StorePath());
    ExpectRefusal(program.Run("dump"), failure + "the file does not exist" + help);
}

TEST_F(BadInput, AFullDiskLeavesTheOldState) {
    const std::string before = Dump();
    const auto full =
        program.Run("extract " + Report(GenerateSchemaReport(100, 200, 20, 1)), "ulimit -f 300; ");
    EXPECT_EQ(full.status, 1);
    EXPECT_NE(full.error.find("records.mdb: the disk"), std::string::npos) << full.error;
    EXPECT_EQ(Dump(), before);
    EXPECT_EQ(program.Run("dump >/dev/full").status, 1);
}

TEST_F(BadInput, AnExtractionKilledAtAnyWriteLeavesTheStateBeforeOrAfter) {
    const std::string extract = "extract --append " + Report(GenerateSchemaReport(150, 300, 30, 1));
    const std::string whole = ReadFile(program.StorePath());
    const std::string before = Dump();
    const std::string counted = program.Path("count");
    ASSERT_EQ(program.Run(extract, Loaded(kCountFileVariable, counted)).status, 0);
    const long writes = std::stol(ReadFile(counted));
    const std::string after = Dump();
    ASSERT_GT(writes, 100);

    // From the first to the last, all of the last ones: the commit is among them.
    std::vector<long> places;
    for (long place = 1; place < writes - 8; place += writes / 8) places.push_back(place);
    for (long place = writes - 8; place <= writes; ++place) places.push_back(place);
    int unchanged = 0;
    for (const long place : places) {
        WriteFile(program.StorePath(), whole);
        EXPECT_NE(program.Run(extract, Loaded(kKillAtVariable, std::to_string(place))).status, 0) << place;
        const std::string state = Dump();
        EXPECT_TRUE(state == before || state == after) << "killed at write " << place << " of " << writes;
        unchanged += state == before;
        const auto store = Connection::Open(ConnectionString(program.StorePath()));
        EXPECT_EQ(store->Select("PRAGMA integrity_check").Text("integrity_check"), "ok") << place;
    }
    EXPECT_GE(unchanged, 8) << "the program was killed before its commit";
}

}  // namespace
}  // namespace norvelis
