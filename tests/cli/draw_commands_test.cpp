#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/program.h"
#include "drawing/package_rules.h"

namespace norvelis {
namespace {

using testing::EndsWith;

/// The sample, extracted once for all tests, which leave the dictionary as it is.
class DrawCommandTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        program = std::make_unique<Program>();
        ASSERT_EQ(
            program->Run("extract " + std::string(NORVELIS_SOURCE) + "/app/reportfiles/empschm.text").status,
            0);
    }
    static void TearDownTestSuite() { program.reset(); }

    std::string Out(const std::string& name = "") const { return program->Path("out/" + name); }
    /// Runs "draw", a folder of drawings of its own added.
    Program::Result Draw(const std::string& arguments, const std::string& before = {}) const {
        return program->Run("draw " + arguments + " --out " + program->Path("out"), before);
    }
    void TearDown() override { DeleteFolder(program->Path("out")); }

    static std::unique_ptr<Program> program;
};
std::unique_ptr<Program> DrawCommandTest::program;

TEST_F(DrawCommandTest, ASchemaARecordOrEachParentInAFile) {
    const auto whole = Draw("empschm");
    EXPECT_EQ(whole.status, 0);
    EXPECT_EQ(whole.out, "Done Drawing. File saved as:" + Out("EMPSCHM/EMPSCHM.vsd") + "\n");

    const auto record = Draw("EMPSCHM --record instrument");
    EXPECT_EQ(record.status, 0);
    EXPECT_EQ(record.out, "Done Drawing. File saved as:" + Out("EMPSCHM/INSTRUMENT.vsd") + "\n");
    EXPECT_EQ(FilesIn(Out("EMPSCHM")).size(), 4u) << "two drawings and their .vsdx copies";

    const auto separate = Draw("EMPSCHM --separate");
    EXPECT_EQ(separate.status, 0);
    EXPECT_EQ(separate.out, "Done Drawing. Visio Files saved at folder:\n" + program->Path("out") + "\n");
    for (const char* entry : {"CLIENT", "COMMISSION", "DAY-LEDGER", "MAKER", "WORKSHOP"})
        EXPECT_TRUE(FileExists(Out("EMPSCHM/" + std::string(entry) + ".vsd"))) << entry;
    EXPECT_FALSE(FileExists(Out("EMPSCHM/PAYMENT.vsd"))) << "no entry record";
    EXPECT_FALSE(FolderExists(program->App() + "/Temp")) << "snapshots are gone";
}

TEST_F(DrawCommandTest, SmallerDrawingsHaveTheirOwnFiles) {
    ASSERT_EQ(Draw("EMPSCHM --seed 1").status, 0);
    const std::string whole = ReadFile(Out("EMPSCHM/EMPSCHM.vsd"));
    const std::pair<std::string, std::string> cases[] = {
        {"--around client --steps 2 --down", "EMPSCHM around CLIENT"},
        {"--area people-area", "EMPSCHM area PEOPLE-AREA"},
        {"--by area", "EMPSCHM by area"},
        {"--only client,c* --except commission", "EMPSCHM selected"},
    };
    for (const auto& [options, name] : cases) {
        const auto drawn = Draw("EMPSCHM " + options);
        EXPECT_EQ(drawn.out, "Done Drawing. File saved as:" + Out("EMPSCHM/" + name + ".vsd") + "\n")
            << drawn.error;
        EXPECT_EQ(drawing::PackageFaults(ReadFile(Out("EMPSCHM/" + name + ".vsd"))),
                  std::vector<std::string>());
    }
    EXPECT_EQ(ReadFile(Out("EMPSCHM/EMPSCHM.vsd")), whole);
}

TEST_F(DrawCommandTest, MessagesNameTheFileThatWasWrittenInItsOwnLetters) {
    std::filesystem::create_directories(Out("empschm"));
    WriteFile(Out("empschm/Empschm.vsd"), "");
    std::filesystem::create_symlink(Out("empschm/Empschm.vsd"), Out("empschm/Client.vsd"));
    EXPECT_EQ(Draw("EMPSCHM").out, "Done Drawing. File saved as:" + Out("empschm/Empschm.vsd") + "\n");
    EXPECT_EQ(Draw("EMPSCHM --record CLIENT").out,
              "Done Drawing. File saved as:" + Out("empschm/Client.vsd") + "\n");
    EXPECT_TRUE(std::filesystem::is_symlink(Out("empschm/Client.vsd")));
    EXPECT_EQ(ReadFile(Out("empschm/Empschm.vsd")), ReadFile(Out("empschm/Client.vsd")));
}

TEST_F(DrawCommandTest, EqualSeedsGiveEqualFilesAndChoicesOtherOnes) {
    const auto drawn = [&](const std::string& options) {
        EXPECT_EQ(Draw("EMPSCHM " + options).status, 0) << options;
        return ReadFile(Out("EMPSCHM/EMPSCHM.vsd"));
    };
    const std::string plain = drawn("--seed 7");
    EXPECT_EQ(drawn("--seed 7"), plain);
    for (const char* other :
         {"--seed 8", "--seed 7 --color on", "--seed 7 --layout lefttoright", "--seed 7 --background world"})
        EXPECT_NE(drawn(other), plain) << other;
    EXPECT_EQ(drawn("--seed 7 --color off --layout '-Default Layout-' --background 'Background none'"), plain)
        << "the choices that the settings make";
}

TEST_F(DrawCommandTest, ADrawingKeepsTheOrderOfTheOneThatItReplacesUnlessAskedForAFreshLayout) {
    const auto drawn = [&](const std::string& options) {
        EXPECT_EQ(Draw("EMPSCHM --seed 7 " + options).status, 0) << options;
        return ReadFile(Out("EMPSCHM/EMPSCHM selected.vsd"));
    };
    const std::string all = drawn("--only '*'");
    drawn("--except COMMISSION");
    EXPECT_NE(drawn("--only '*'"), all) << "like the one without COMMISSION";
    EXPECT_EQ(drawn("--only '*' --fresh"), all);
}

TEST_F(DrawCommandTest, SettingsDecideWhatOptionsLeaveOpen) {
    const std::string folder = program->Path("by setting");
    std::filesystem::create_directories(folder);
    ASSERT_EQ(program->Run("setting visiolocation '" + folder + "'").status, 0);
    ASSERT_EQ(program->Run("setting DiagramColor True").status, 0);
    ASSERT_EQ(program->Run("setting visiobackground 8 'Background world'").status, 0);
    EXPECT_EQ(program->Run("draw EMPSCHM --seed 7").out,
              "Done Drawing. File saved as:" + folder + "/EMPSCHM/EMPSCHM.vsd\n");
    ASSERT_EQ(Draw("EMPSCHM --seed 7 --color on --background world").status, 0);
    EXPECT_EQ(ReadFile(folder + "/EMPSCHM/EMPSCHM.vsd"), ReadFile(Out("EMPSCHM/EMPSCHM.vsd")));

    DeleteFolder(folder);
    EXPECT_EQ(program->Run("draw EMPSCHM").out,
              "Done Drawing. File saved as:" + program->App() + "/visio files/EMPSCHM/EMPSCHM.vsd\n");
    for (const char* setting : {"DiagramColor False", "visiobackground 13 'Background none'"})
        program->Run(std::string("setting ") + setting);
}

TEST_F(DrawCommandTest, RefusalsSayWhyInOneLine) {
    WriteFile(program->Path("file"), "");
    const struct {
        std::string arguments, reason;
        int status;
    } cases[] = {
        {"OTHER", "norvelis-cli: there is no schema OTHER in the dictionary\n", 1},
        {"EMPSCHM --record OTHER", "norvelis-cli: there is no record OTHER in schema EMPSCHM\n", 1},
        {"EMPSCHM --around OTHER", "Nothing was drawn: there is no record OTHER in schema EMPSCHM.\n", 1},
        {"EMPSCHM --around CLIENT --steps 0", "--steps: ", 2},
        {"EMPSCHM --steps 2", "--steps requires --around", 2},
        {"EMPSCHM --around CLIENT --up --down", "excludes", 2},
        {"EMPSCHM --around CLIENT --record CLIENT", "excludes", 2},
        {"EMPSCHM --by record", "--by: record not in {area}", 2},
        {"EMPSCHM --layout Square", "--layout: there is no layout Square\n", 2},
        {"EMPSCHM --background Square", "--background: there is no background Square\n", 2},
        {"EMPSCHM --color blue", "--color: blue not in {on,off,area,mode}\n", 2},
        {"EMPSCHM --seed x", "--seed: x is no seed\n", 2},
        {"EMPSCHM --seed=-1", "--seed: -1 is no seed\n", 2},
        {"EMPSCHM --seed 18446744073709551616", "is no seed\n", 2},
        {"EMPSCHM --record ''", "--record: the name is empty\n", 2},
        {"EMPSCHM --out ''", "--out: the name is empty\n", 2},
        {"EMPSCHM --separate --record CLIENT", "excludes", 2},
        {"", "SCHEMA is required\n", 2},
        {"EMPSCHM --out " + program->Path("file"),
         "norvelis-cli: The drawing was not written: Path/File access error: " +
             program->Path("file/EMPSCHM") + ": Not a directory\n",
         1},
        {"EMPSCHM --separate --out " + program->Path("file"),
         "norvelis-cli: these drawings could not be saved in " + program->Path("file") + ": ", 1},
    };
    for (const auto& c : cases) {
        const auto result = program->Run("draw " + c.arguments);
        EXPECT_EQ(result.status, c.status) << c.arguments;
        EXPECT_EQ(result.out, "") << c.arguments;
        EXPECT_NE(result.error.find(c.reason), std::string::npos) << c.arguments << ": " << result.error;
    }
}

TEST_F(DrawCommandTest, AMissingVsdxCopyIsNoSuccess) {
    std::filesystem::create_directories(Out("EMPSCHM/EMPSCHM.vsdx"));
    const auto result = Draw("EMPSCHM --seed 1");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(
        result.error,  // A slow draw tells its progress before.
        EndsWith("norvelis-cli: The .vsdx copy of the drawing was not written: Path/File access error: " +
                 Out("EMPSCHM/EMPSCHM.vsdx") + " is a folder\n"));
    EXPECT_TRUE(FileExists(Out("EMPSCHM/EMPSCHM.vsd")));
}

TEST_F(DrawCommandTest, AFullDiskOrAKilledDrawLeavesWholeFilesAndNothingElse) {
    ASSERT_EQ(Draw("EMPSCHM --seed 1").status, 0);
    const std::string good = ReadFile(Out("EMPSCHM/EMPSCHM.vsd"));
    const auto full = Draw("EMPSCHM --seed 2", "ulimit -f 8; ");
    EXPECT_EQ(full.status, 1);
    EXPECT_THAT(full.error, EndsWith("norvelis-cli: The drawing was not written: Disk full: " +
                                     Out("EMPSCHM/EMPSCHM.vsd") + "\n"));
    EXPECT_EQ(ReadFile(Out("EMPSCHM/EMPSCHM.vsd")), good);

    for (const char* seconds : {"0.05", "0.08", "0.1", "0.12", "0.14", "0.17", "0.2", "0.25"})
        Draw("EMPSCHM --background world", std::string("timeout -s KILL ") + seconds + " ");
    EXPECT_EQ(FilesIn(Out("EMPSCHM")), (std::vector<std::string>{"EMPSCHM.vsd", "EMPSCHM.vsdx"}));
    for (const char* file : {"EMPSCHM/EMPSCHM.vsd", "EMPSCHM/EMPSCHM.vsdx"})
        EXPECT_EQ(drawing::PackageFaults(ReadFile(Out(file))), std::vector<std::string>());
}

TEST_F(DrawCommandTest, ADrawingThatLacksSomethingIsNoSuccess) {
    const std::string stencils = program->App() + "/Stencils", away = program->Path("away");
    const std::string flowchart = "/Basic Flowchart Shapes (US units).vss";
    std::filesystem::create_directories(away);
    std::filesystem::rename(stencils + flowchart, away + flowchart);
    for (const std::string kind : {"", " --separate", " --record CLIENT"}) {
        const auto lacking = Draw("EMPSCHM" + kind);
        EXPECT_EQ(lacking.status, 1);
        EXPECT_NE(lacking.error.find("norvelis-cli: Stencil not found:  Basic Flowchart"), std::string::npos)
            << lacking.error;
    }
    EXPECT_TRUE(FileExists(Out("EMPSCHM/EMPSCHM.vsd"))) << "what could be drawn is there";
    std::filesystem::rename(away + flowchart, stencils + flowchart);

    std::filesystem::rename(stencils, away + "/Stencils");
    EXPECT_EQ(Draw("EMPSCHM").error,
              "norvelis-cli: Visio is not installed. Please install Visio 2002 or better.\n");
    EXPECT_EQ(Draw("EMPSCHM --record CLIENT").error,
              "norvelis-cli: You must have Visio installed to perform this functions\n");
    std::filesystem::rename(away + "/Stencils", stencils);
}

}  // namespace
}  // namespace norvelis
