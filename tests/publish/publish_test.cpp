#include "publish/publish.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>

#include "base/failure.h"
#include "base/name_key.h"
#include "base/paths.h"
#include "publish/anchors.h"
#include "publish/browser.h"
#include "publish/folder.h"
#include "testing/extracted_schema.h"
#include "testing/report_generator.h"

namespace norvelis::publish {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;
using ::testing::UnorderedElementsAre;

dictionary::SchemaContents Sample() {
    static const auto schema = SchemaOf(ReadFile(NORVELIS_SOURCE "/app/reportfiles/empschm.text"));
    return schema;
}

/// What no report has in its names, and a store may.
dictionary::SchemaContents OddSchema() {
    dictionary::SchemaContents schema;
    schema.name = "O'DD<i>";
    for (const char* name :
         {"<b>BOLD</b>", "A \"QUOTED\" & NAME", "STÜCK-Ä", "TWICE", "twice", "__", "' onclick='x"}) {
        schema.records.emplace_back();
        schema.records.back().name = name;
        schema.records.back().area = "<script>alert(1)</script>";
        schema.records.back().fields = {{"02", "</td>", "DISPLAY", "X", "1", "1"},
                                        {"02", "F-1", "", "", "", ""}};
    }
    schema.records[0].indexes[0] = "NOT-READ";
    schema.sets = {{"<SET>", "<b>BOLD</b>", "TWICE", "NPO\r\nMA ASC F DN"},
                   {"<SET>", "<b>BOLD</b>", "STÜCK-Ä", "NPO\r\nMA LAST"},
                   {"<SET>", "TWICE", "NOWHERE", ""},
                   {"LOST", "NOBODY", "NOWHERE", "x"}};
    schema.indexes = {{"I<X", "TWICE", "", "OA SORTED DL", {{"F-1", "DSC"}, {"F<", "ASC"}}},
                      {"I<X", "STÜCK-Ä", "", "", {}}};
    return schema;
}

/// A box for each record.
Drawing DrawingOf(const dictionary::SchemaContents& schema) {
    Drawing drawing{
        "<?xml version=\"1.0\"?><svg xmlns=\"http://www.w3.org/2000/svg\" "
        "xmlns:xlink=\"http://www.w3.org/1999/xlink\" width=\"400pt\" height=\"300pt\">",
        {}};
    for (const auto& record : schema.records) {
        if (!drawing.records.insert(NameKey(record.name)).second) continue;
        drawing.svg += "<a xlink:href=\"#" + RecordAnchor(record.name) + "\" aria-label=\"Record\"><g id=\"" +
                       BoxAnchor(record.name) + "\"><path d=\"M0 0L9 9\"/></g></a>";
    }
    drawing.svg += "</svg>";
    return drawing;
}

class PublishTest : public testing::Test {
  protected:
    static Edition EditionOf(const dictionary::SchemaContents& schema) {
        return {
            schema,
            {{schema.name, "warning", "kind", 7, schema.records.front().name, "lost <this>", "do & that"}},
            DrawingOf(schema)};
    }
    std::string Refusal(const dictionary::SchemaContents& schema) {
        try {
            Publish(EditionOf(schema), folder);
        } catch (const RuntimeFailure& failure) {
            return failure.what();
        }
        return "";
    }
    static std::vector<std::string> NamesIn(const std::string& path) {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(path))
            names.push_back(entry.path().filename());
        return names;
    }

    static ino_t NumberOf(const std::string& path) {
        struct stat status {};
        EXPECT_EQ(stat(path.c_str(), &status), 0);
        return status.st_ino;
    }

    TemporaryFolder parent;
    const std::string folder = parent.Path("edition");
};

TEST_F(PublishTest, ABrowserFollowsEveryLinkWithoutAFault) {
    const std::string page = Publish(EditionOf(Sample()), folder);
    EXPECT_EQ(page, folder + "/index.html");
    EXPECT_THAT(WalkPage(page, "agreed-price"), AllOf(::testing::MatchesRegex("links: [0-9]+\nfound: 1")));

    // Hits by name, by a field, by a set; names are text whatever is in them.
    const std::string odd = Publish(EditionOf(OddSchema()), parent.Path("odd"));
    EXPECT_THAT(WalkPage(odd, "&lt;set"), ::testing::MatchesRegex("links: [0-9]+\nfound: 4"));
    EXPECT_THAT(WalkPage(odd, "stück"), ::testing::MatchesRegex("links: [0-9]+\nfound: 2"));
    EXPECT_THAT(ReadFile(odd), AllOf(HasSubstr("STÜCK-Ä</h3>"), HasSubstr("&lt;b&gt;BOLD&lt;/b&gt;</h3>"),
                                     HasSubstr("lost &lt;this&gt;"), Not(HasSubstr("<script>alert"))));
}

TEST_F(PublishTest, ThePageSaysWhoUsesWhat) {
    const std::string page = ReadFile(Publish(EditionOf(Sample()), folder));
    const auto part = [&page](const std::string& record) {
        const auto begin = page.find("id=\"" + RecordAnchor(record) + "\"");
        return page.substr(begin, page.find("</article>", begin) - begin);
    };
    EXPECT_THAT(part("COMMISSION"),
                AllOf(HasSubstr("<a href=\"#set-CLIENT-ORDERS\">CLIENT-ORDERS</a>"), HasSubstr("CALC key"),
                      HasSubstr("descending key of <a href=\"#index-COMM-WORTH-IX\">"), HasSubstr("1 to 6"),
                      HasSubstr("01  COMMISSION."), HasSubstr("#box-COMMISSION")));
    EXPECT_THAT(part("PAYMENT"), HasSubstr("ascending key of <a href=\"#set-COMM-PAYMENTS\">"));
    EXPECT_THAT(part("BUILD-STEP"), HasSubstr("VIA <a href=\"#set-INSTR-HISTORY\">"));
    EXPECT_THAT(page,
                AllOf(HasSubstr("14 records, 13 sets, 5 indexes, 3 areas"), HasSubstr("report of 03/14/24")));
}

TEST_F(PublishTest, TheNextEditionTellsWhatChanged) {
    EXPECT_THAT(ReadFile(Publish(EditionOf(Sample()), folder)), Not(HasSubstr("<h2>Changes</h2>")));
    auto next = Sample();
    next.date = "04/01/24";
    next.records[0].area = "<NEW>";
    next.records[1].fields.pop_back();
    const std::string page = Publish(EditionOf(next), folder), text = ReadFile(page);
    EXPECT_THAT(text,
                AllOf(HasSubstr("Since the edition of 03/14/24"),
                      HasSubstr("<th scope=\"col\">Former</th><th scope=\"col\">Present</th>"),
                      HasSubstr("<td>PEOPLE-AREA</td><td>&lt;NEW&gt;</td>"), HasSubstr("<td>FILLER</td>")));
    EXPECT_THAT(WalkPage(page, "MAKER"), ::testing::MatchesRegex("links: [0-9]+\nfound: 3"));
    Publish(EditionOf(next), folder);
    EXPECT_EQ(ReadFile(page), text) << "published again, it shows the same changes";
}

TEST_F(PublishTest, ThreeHundredRecordsAreBelowFiveMegabytes) {
    Publish({SchemaOf(GenerateSchemaReport(300, 480, 30, 1)), {}, {}}, folder);
    const auto size = [this](const char* name) { return std::filesystem::file_size(folder + "/" + name); };
    EXPECT_LT(size("index.html") + size("edition.json"), 4'000'000u);  // The drawing takes the rest.
}

TEST_F(PublishTest, OnlyAFolderOfItsOwnIsTaken) {
    const auto sample = Sample();
    std::filesystem::create_directories(folder);
    WriteFile(folder + "/notes.txt", "mine");
    EXPECT_THAT(Refusal(sample), HasSubstr("holds other files (notes.txt)"));
    EXPECT_THAT(NamesIn(folder), UnorderedElementsAre("notes.txt"));
    std::filesystem::rename(folder + "/notes.txt", folder + "/index.html");
    EXPECT_THAT(Refusal(sample), HasSubstr("holds a page that is no edition"));
    std::filesystem::remove(folder + "/index.html");
    WriteFile(folder + "/edition.json", "{\"kind\":");
    EXPECT_THAT(Refusal(sample), HasSubstr("its edition.json cannot be used, it is damaged"));
    WriteFile(folder + "/edition.json", "{\"kind\": \"Norvelis edition\", \"form\": 2}");
    EXPECT_THAT(Refusal(sample), HasSubstr("a newer program wrote it"));
    std::filesystem::remove(folder + "/edition.json");
    EXPECT_EQ(Refusal(sample), "");
    EXPECT_THAT(Refusal(OddSchema()), HasSubstr("it is an edition of schema EMPSCHM"));
    EXPECT_THAT(NamesIn(folder), UnorderedElementsAre("index.html", "edition.json"));
    EXPECT_THAT(NamesIn(parent.Path()), UnorderedElementsAre("edition"));
}

TEST_F(PublishTest, TheSameEditionIsTheSameBytesAndAFailureKeepsTheFormerOne) {
    const auto bytes = [this] {
        return ReadFile(folder + "/index.html") + ReadFile(folder + "/edition.json");
    };
    Publish(EditionOf(Sample()), folder);
    const std::string first = bytes();
    Publish(EditionOf(Sample()), folder);
    EXPECT_EQ(bytes(), first);

    // The second file cannot be written: the first is as it was, or gone.
    for (const char* former : {"former page", ""}) {
        const std::string other = parent.Path("other"), otherPage = other + "/index.html";
        std::filesystem::create_directories(other + "/edition.json");
        if (*former != 0) WriteFile(otherPage, former);
        EXPECT_THROW(WriteFolder(other, "page", "edition"), RuntimeFailure);
        EXPECT_EQ(FileExists(otherPage) ? ReadFile(otherPage) : "", former);
        std::filesystem::remove_all(other);
    }

    // A file of that name is in the way of a new folder; one that is there stays the same
    // folder, for whoever works in it, and a link leads to it.
    std::filesystem::create_symlink(folder, parent.Path("link"));
    WriteFile(parent.Path("file"), "");
    EXPECT_THROW(Publish(EditionOf(Sample()), parent.Path("file/edition")), RuntimeFailure);
    const std::string fresh = parent.Path("fresh");
    std::filesystem::create_directories(fresh + ".new-" + std::to_string(getpid()));
    EXPECT_THROW(Publish(EditionOf(Sample()), fresh), RuntimeFailure);
    EXPECT_FALSE(FolderExists(fresh));
    const auto number = NumberOf(folder);
    Publish(EditionOf(Sample()), parent.Path("link"));
    EXPECT_EQ(NumberOf(folder), number);
    EXPECT_TRUE(std::filesystem::is_symlink(parent.Path("link")));
    EXPECT_EQ(bytes(), first);
}

}  // namespace
}  // namespace norvelis::publish
