#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>

#include "cli/program.h"
#include "publish/browser.h"

namespace norvelis {
namespace {

using ::testing::HasSubstr;
using ::testing::MatchesRegex;

class PublishCommands : public testing::Test {
  protected:
    PublishCommands() { program.Run("extract " NORVELIS_APP "/reportfiles/empschm.text"); }

    Program program;
    const std::string out = program.Path("edition");
};

TEST_F(PublishCommands, AnEditionHasADrawingThatLeadsToItsRecords) {
    const auto first = program.Run("publish empschm --out " + out);
    EXPECT_EQ(first.status, 0) << first.error;
    EXPECT_EQ(first.out, out + "/index.html\n");
    EXPECT_THAT(WalkPage(out + "/index.html", "workshop"), MatchesRegex("links: [0-9]+\nfound: 2"));

    const std::string page = ReadFile(out + "/index.html");
    const auto count = [&page](const std::string& pattern) {
        const std::regex regex(pattern);
        return std::distance(std::sregex_iterator(page.begin(), page.end(), regex), std::sregex_iterator());
    };
    EXPECT_EQ(count(R"(<a xlink:href="#record-[A-Z-]+" aria-label="Record [A-Z-]+"><g id="box-)"), 14);
    EXPECT_EQ(count(R"(<a xlink:href="#set-[A-Z-]+" aria-label="Set [A-Z-]+ from )"), 14);

    EXPECT_EQ(program.Run("publish EMPSCHM --out " + out).status, 0);
    EXPECT_EQ(ReadFile(out + "/index.html"), page) << "the same dictionary, other bytes";
    for (int time = 0; time < 2; ++time) {
        const auto inside = program.Run("publish EMPSCHM --out .", "cd " + out + " && ");
        EXPECT_EQ(inside.status, 0) << inside.error;
    }
    const auto noFolder = program.Run("publish EMPSCHM --out " + out, "TMPDIR=/nonexist ");
    EXPECT_EQ(noFolder.status, 1);
    EXPECT_THAT(noFolder.error, HasSubstr("the folder for temporary files (/nonexist)"));
}

TEST_F(PublishCommands, CopybooksGoToStandardOutputOrToFiles) {
    const auto one = program.Run("copybook empschm --record maker");
    EXPECT_EQ(one.status, 0);
    EXPECT_THAT(one.out, HasSubstr("           02  MAKER-NUMBER-0105         PIC 9(5).\n"));
    const auto all = program.Run("copybook EMPSCHM --out " + out);
    EXPECT_EQ(all.status, 0);
    EXPECT_THAT(all.out, HasSubstr(out + "/MAKER.cpy\n"));
    EXPECT_EQ(ReadFile(out + "/MAKER.cpy"), one.out);
    EXPECT_EQ(std::ranges::distance(std::filesystem::directory_iterator(out)), 14);
}

TEST_F(PublishCommands, RefusalsLeaveFoldersAsTheyWere) {
    std::filesystem::create_directories(out);
    WriteFile(out + "/notes.txt", "mine");
    std::filesystem::create_directories(program.Path("books/MAKER.cpy"));
    const struct {
        std::string arguments, words;
    } cases[] = {
        {"publish NONE --out " + out, "there is no schema NONE in the dictionary"},
        {"publish EMPSCHM --out " + out, "the folder holds other files (notes.txt)"},
        {"publish EMPSCHM --out " + out + "/notes.txt", "it is no folder"},
        {"publish EMPSCHM --out /proc/edition", "/proc/edition"},
        {"copybook NONE", "there is no schema NONE in the dictionary"},
        {"copybook EMPSCHM --record NONE", "there is no record NONE in schema EMPSCHM"},
        {"copybook EMPSCHM --out " + out + "/notes.txt", "cannot be made"},
        {"copybook EMPSCHM --out " + program.Path("books"), "MAKER.cpy is a folder; no copybook was written"},
    };
    for (const auto& c : cases) {
        const auto result = program.Run(c.arguments);
        EXPECT_EQ(result.status, 1) << c.arguments;
        EXPECT_THAT(result.error, HasSubstr(c.words));
        EXPECT_EQ(result.out, "") << c.arguments;
    }
    EXPECT_EQ(ReadFile(out + "/notes.txt"), "mine");
    EXPECT_EQ(std::ranges::distance(std::filesystem::directory_iterator(out)), 1);
    EXPECT_EQ(std::ranges::distance(std::filesystem::directory_iterator(program.Path("books"))), 1);
}

}  // namespace
}  // namespace norvelis
