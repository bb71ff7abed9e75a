#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "cli/program.h"
#include "drawing/package/archive.h"

namespace norvelis {
namespace {

using nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

const std::string kSample = std::string(NORVELIS_SOURCE) + "/app/reportfiles/empschm.text";

/// The sample and a later edition of it, in which a set has another name and a field is of another usage.
class CompareCommand : public testing::Test {
  protected:
    CompareCommand() {
        std::string text = ReadFile(kSample);
        for (std::size_t at = 0; (at = text.find("SHOP-MASTERS", at)) != std::string::npos;)
            text.replace(at, 12, "SHOP-LEADERS");
        text.replace(text.find("DISPLAY", text.find("MAKER-GRADE-0105 ")), 7, "COMP   ");
        WriteFile(later, text);
    }
    Program::Result Compare(const std::string& arguments) const {
        return program.Run("compare " + arguments);
    }

    const Program program;
    const std::string later = program.Path("later.text");
};

TEST_F(CompareCommand, ListsWhatChangedBetweenDictionaryAndReport) {
    ASSERT_EQ(program.Run("extract " + kSample).status, 0);
    const std::string before = ReadFile(program.StorePath());
    const auto result = Compare("empschm " + later);
    EXPECT_EQ(result.status, 0) << result.error;
    EXPECT_EQ(result.out,
              "field changed MAKER-GRADE-0105 in MAKER: usage DISPLAY -> COMP\n"
              "set renamed SHOP-LEADERS of WORKSHOP: name SHOP-MASTERS -> SHOP-LEADERS\n"
              "1 set renamed, 1 field changed\n");
    EXPECT_EQ(ReadFile(program.StorePath()), before) << "reports are read elsewhere";
    EXPECT_EQ(Compare("EMPSCHM empschm").out, "no differences\n") << "one schema in any letter case";

    const auto object = json::parse(Compare("--json " + later + " EMPSCHM").out);
    EXPECT_EQ(object["former"]["from"], "report");
    EXPECT_EQ(object["present"]["from"], "dictionary");
    EXPECT_EQ(object["differences"][1]["values"][0],
              json({{"what", "name"}, {"former", "SHOP-LEADERS"}, {"present", "SHOP-MASTERS"}}));

    EXPECT_THAT(program.Run("extract " + later).out,
                HasSubstr("no warnings; since the former edition: 1 set renamed, 1 field changed\n"));
    EXPECT_EQ(json::parse(program.Run("extract --json " + later).out)["differences"], "no differences");
}

TEST_F(CompareCommand, ReportsNeedNoDictionaryAndDamageIsPartOfTheComparison) {
    DeleteFile(program.StorePath());
    std::string text = ReadFile(kSample);
    text.erase(text.find("0DATA ITEM", text.find("RECORD NAME........ REPAIR")), 10);
    const std::string damaged = program.Path("damaged");
    WriteFile(damaged, text);
    const auto result = Compare(kSample + " " + damaged + " --html " + program.Path("page.html"));
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.error, HasSubstr("warning: " + damaged + ": line "));
    EXPECT_THAT(ReadFile(program.Path("page.html")), HasSubstr("What reading the present report lost"));

    // An end in the middle of a record.
    text = ReadFile(kSample);
    WriteFile(damaged, text.substr(0, text.find("RECORD ID", text.find("RECORD NAME........ PAYMENT"))));
    const auto cut = Compare(kSample + " " + damaged);
    EXPECT_EQ(cut.status, 0);
    EXPECT_THAT(cut.out, HasSubstr("record removed DAY-LEDGER"));
    EXPECT_THAT(cut.error, HasSubstr("warning: "));
}

TEST_F(CompareCommand, RefusesInWordsAndWritesNothing) {
    WriteFile(program.Path("letter"), "Dear colleague,\n");
    std::string wide = "\xFF\xFE";
    for (const char letter : ReadFile(kSample)) wide.append({letter, '\0'});
    WriteFile(program.Path("host"), wide);
    std::filesystem::create_symlink(later, program.Path("link"));
    const struct {
        std::string arguments, words;
    } cases[] = {
        {"NOSUCH " + later, "there is no schema NOSUCH in the dictionary and no file of that name"},
        {later + " ./nosuch", "./nosuch does not exist"},
        {later + " " + program.App(), program.App() + " is a folder"},
        {later + " " + program.Path("letter"), program.Path("letter") + " is no schema report"},
        {later + " " + program.Path("host"),
         "host is no schema report: the file is UTF-16LE (repair it first)"},
        {"'' " + later, "there is no schema without a name in the dictionary"},
        {later + " " + later + " --html " + program.Path("no/page.html"), program.Path("no/page.html")},
        {kSample + " " + later + " --html " + program.Path("./later.TEXT"),
         "later.TEXT is the report that is compared; choose another file"},
        {later + " " + kSample + " --html " + program.Path("link"), "link is the report that is compared"},
    };
    const std::string report = ReadFile(later);
    for (const auto& each : cases) {
        const auto result = Compare(each.arguments);
        EXPECT_EQ(result.status, 1) << each.arguments;
        EXPECT_THAT(result.error, HasSubstr(each.words));
        EXPECT_EQ(result.out, "");
    }
    EXPECT_EQ(ReadFile(later), report);
    EXPECT_EQ(Compare(later).status, 2);
    const auto noFolder = program.Run("compare " + later + " " + later, "TMPDIR=/nonexist ");
    EXPECT_THAT(noFolder.error, HasSubstr("the folder for temporary files (/nonexist)"));
}

TEST_F(CompareCommand, NamesStayTextInThePage) {
    std::string text = ReadFile(kSample);
    for (std::size_t at = 0; (at = text.find("SHOP-MASTERS", at)) != std::string::npos;)
        text.replace(at, 12, "<b>\"&'\xC4</b>");
    const std::string odd = program.Path("odd"), page = program.Path("page.html");
    WriteFile(odd, text);
    ASSERT_EQ(Compare(kSample + " " + odd + " --html " + page).status, 0);
    const std::string html = ReadFile(page);
    EXPECT_THAT(html,
                AllOf(HasSubstr("<td>&lt;b&gt;&quot;&amp;'\xC3\x84&lt;/b&gt;</td>"), Not(HasSubstr("<b>"))));
    ASSERT_EQ(Compare(kSample + " " + odd + " --html " + page).status, 0);
    EXPECT_EQ(ReadFile(page), html);
}

TEST_F(CompareCommand, DrawsBesideTheSchemasOwnDrawing) {
    std::string text = ReadFile(later);
    const std::size_t begin = text.rfind('\n', text.find("RECORD NAME........ DAY-LEDGER")) + 1;
    text.erase(begin, text.find("SET...... ", begin) - begin);
    WriteFile(later, text);
    const std::string folder = program.Path("out"), file = folder + "/EMPSCHM/EMPSCHM differences.vsd";
    const std::string arguments = kSample + " " + later + " --draw --out " + folder;
    const auto result = Compare(arguments);
    ASSERT_EQ(result.status, 0) << result.error;
    EXPECT_THAT(result.error, HasSubstr("Done Drawing. File saved as:" + file + "\n"));
    EXPECT_FALSE(FileExists(folder + "/EMPSCHM/EMPSCHM.vsd"));
    const std::string drawn = ReadFile(file);
    const std::string page = drawing::Archive(drawn).Read("visio/pages/page1.xml");
    for (const char* words :
         {"REMOVED", "RENAMED, WAS SHOP-MASTERS", "CHANGED", "What changed", "DAY-LEDGER"})
        EXPECT_THAT(page, HasSubstr(words));
    EXPECT_THAT(page, Not(HasSubstr(" records, "))) << "removed parts are counted as present";
    ASSERT_EQ(Compare(arguments).status, 0);
    EXPECT_EQ(ReadFile(file), drawn);
}

}  // namespace
}  // namespace norvelis
