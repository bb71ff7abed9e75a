#include "viewer/report_lines.h"

#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <random>

#include "base/failure.h"
#include "base/paths.h"
#include "testing/small_report.h"
#include "testing/temporary_folder.h"
#include "viewer/reading_place.h"

namespace norvelis::viewer {
namespace {

using ::testing::ElementsAre;

class ReportLinesTest : public ::testing::Test {
  protected:
    std::string Save(const std::string& bytes) const {
        WriteFile(path, bytes);
        return path;
    }
    void Append(const std::string& bytes) const { std::ofstream(path, std::ios::app) << bytes; }

    const TemporaryFolder folder;
    const std::string path = folder.Path("report.txt");
};

std::vector<std::string> TextsOf(const std::vector<Line>& lines) {
    std::vector<std::string> texts;
    for (const Line& line : lines) texts.push_back(line.text);
    return texts;
}

void IndexAll(ReportLines& report) {
    while (report.Step()) {
    }
}

/// Lines of all lengths, some longer than a piece of the index, some with odd bytes and ends.
std::string OddLines(std::uint64_t seed, std::vector<std::string>& lines) {
    std::mt19937_64 random(seed);
    std::string bytes;
    for (int i = 0; i < 3000; ++i) {
        std::size_t length = random() % 200;
        if (random() % 50 == 0) length = random() % 5 * 70'000;
        if (random() % 600 == 0) length = 2'500'000 + random() % 100;
        std::string line(length, static_cast<char>('a' + i % 26));
        if (length > 3) line[length / 2] = static_cast<char>(random() % 2 == 0 ? 0 : 0x80);
        lines.push_back(line);
        bytes += line + (random() % 3 == 0 ? "\r\n" : "\n");
    }
    return bytes;
}

TEST_F(ReportLinesTest, AnyLineIsFoundAsAReadingFromTheTopFindsIt) {
    for (const std::uint64_t seed : {1, 2, 3}) {
        std::vector<std::string> lines;
        std::string bytes = OddLines(seed, lines);
        if (seed == 2) bytes.pop_back();  // The last line may lack its end.
        ReportLines report(Save(bytes));
        EXPECT_FALSE(report.IsComplete());
        EXPECT_EQ(report.Read(0, 1).front().text, lines[0].substr(0, 4096)) << "at once";
        IndexAll(report);
        ASSERT_EQ(report.Count(), lines.size());
        std::mt19937_64 random(seed);
        for (int i = 0; i < 300; ++i) {
            const std::size_t line = random() % lines.size();
            const auto read = report.Read(line, 3, 500);
            ASSERT_EQ(read.size(), std::min<std::size_t>(3, lines.size() - line));
            for (std::size_t j = 0; j < read.size(); ++j) {
                ASSERT_EQ(read[j].text, lines[line + j].substr(0, 500)) << line + j;
                ASSERT_EQ(read[j].isWhole, lines[line + j].size() <= 500);
            }
            const std::uint64_t offset = report.OffsetOf(line);
            ASSERT_EQ(report.LineAt(offset), line);
            ASSERT_EQ(report.LineAt(offset + lines[line].size()), line) << "its last byte";
            const std::size_t column = lines[line].empty() ? 0 : random() % lines[line].size();
            ASSERT_EQ(report.ReadPart(line, column, 100), lines[line].substr(column, 100)) << line;
        }
        EXPECT_TRUE(report.Read(lines.size(), 5).empty());
        EXPECT_FALSE(report.IndexToLine(lines.size()));
    }
}

TEST_F(ReportLinesTest, PagesAndRecordSectionsAreFound) {
    const std::string head = HeaderOf("EMPSCHM");
    const std::string report = head + RecordHead("EMPLOYEE", "CALC") + "\f\n" + RecordHead("OFFICE", "VIA") +
                               " RECORD NAME........ NOTHING\n" + RecordHead("EMPLOYEE", "CALC");
    ReportLines lines(Save(report));
    IndexAll(lines);
    const auto top = static_cast<std::uint64_t>(std::count(head.begin(), head.end(), '\n'));
    ASSERT_EQ(lines.Sections().size(), 2u);
    EXPECT_EQ(lines.Sections()[0].record, "EMPLOYEE");
    EXPECT_EQ(lines.Sections()[0].line, top);
    EXPECT_EQ(lines.Sections()[1].record, "OFFICE");
    EXPECT_EQ(lines.Sections()[1].line, top + 6);
    std::vector<std::uint64_t> pages;
    for (std::uint64_t line = 0; line < lines.Count(); ++line) {
        if (lines.Read(line, 1).front().startsPage) pages.push_back(line);
    }
    EXPECT_THAT(pages, ElementsAre(0, top + 5));
}

TEST_F(ReportLinesTest, AFileThatChangesWhileItIsOpenDoesNoHarm) {
    const std::string many(3 << 20, 'x');
    ReportLines report(Save("one\ntwo\n" + many + "\nla"));
    IndexAll(report);
    EXPECT_EQ(report.Count(), 4u);
    EXPECT_EQ(report.Compare(), FileChange::None);
    EXPECT_EQ(WordsFor(FileChange::None), "");

    std::filesystem::last_write_time(path, std::filesystem::last_write_time(path) + std::chrono::seconds(1));
    EXPECT_EQ(report.Compare(), FileChange::Changed) << "written over at the same size";
    Append("st\nnew\n");
    EXPECT_EQ(report.Compare(), FileChange::Grown);
    report.GoOn();
    IndexAll(report);
    EXPECT_EQ(report.Compare(), FileChange::None);
    EXPECT_THAT(TextsOf(report.Read(3, 9)), ElementsAre("last", "new"));

    std::filesystem::resize_file(path, 6);
    EXPECT_EQ(report.Compare(), FileChange::Changed);
    EXPECT_THAT(TextsOf(report.Read(0, 4)), ElementsAre("one", "tw", "", ""));
    EXPECT_EQ(report.ReadPart(3, 0, 10), "");

    Save("another file, longer than the one before");
    EXPECT_EQ(report.Compare(), FileChange::Changed) << "another file of that name";
    DeleteFile(path);
    EXPECT_EQ(report.Compare(), FileChange::Vanished);
    EXPECT_THAT(TextsOf(report.Read(0, 1)), ElementsAre("one")) << "what was opened can still be read";
    EXPECT_NE(WordsFor(FileChange::Vanished), "");
}

TEST_F(ReportLinesTest, AFileThatShrinksBeforeItIsIndexed) {
    ReportLines report(Save(std::string(4 << 20, '\n')));
    std::filesystem::resize_file(path, 2 << 20);
    IndexAll(report);
    EXPECT_TRUE(report.IsComplete());
    EXPECT_EQ(report.Count(), 2u << 20);
}

TEST_F(ReportLinesTest, EmptyAndMissingFiles) {
    ReportLines empty(Save(""));
    EXPECT_TRUE(empty.IsComplete());
    EXPECT_EQ(empty.Count(), 0u);
    EXPECT_TRUE(empty.Read(0, 10).empty());
    EXPECT_EQ(empty.LineAt(0), 0u);
    EXPECT_EQ(empty.Progress(), 1);
    EXPECT_THROW(ReportLines(folder.Path("missing")), RuntimeFailure);
    EXPECT_THROW(ReportLines{folder.Path()}, RuntimeFailure) << "a folder";
}

TEST_F(ReportLinesTest, WhatIsBetweenTwoPlacesIsReadWithTheEndsOfItsLines) {
    ReportLines report(Save("first\r\nsecond\n\nlast"));
    IndexAll(report);
    struct Case {
        Place from, to;
        std::string_view bytes;
    };
    for (const auto& [from, to, bytes] : {Case{{0, 1}, {0, 3}, "ir"},
                                          {{0, 4}, {1, 2}, "t\r\nse"},
                                          {{0, 99}, {2, 0}, "\r\nsecond\n"},
                                          {{1, 3}, {9, 0}, "ond\n\nlast"},
                                          {{3, 2}, {1, 0}, ""}})
        EXPECT_EQ(report.ReadBetween(from, to, 100), bytes);
    EXPECT_EQ(report.ReadBetween({0, 0}, {9, 0}, 3), "fir");
    EXPECT_EQ(report.LengthOf(0), 5u);
    EXPECT_EQ(report.LengthOf(2), 0u);
    EXPECT_EQ(report.PlaceAt(9), (Place{1, 2}));
}

TEST_F(ReportLinesTest, ThePlaceOfTheReportReadLastIsRemembered) {
    const std::string ini = folder.Path("Local.Ini");
    EXPECT_EQ(ReadReadingPlace(ini, "a").textSize, kUsualText);
    WriteReadingPlace(ini, "a", {7'000'000'000, 20});
    EXPECT_EQ(ReadReadingPlace(ini, "a").line, 7'000'000'000u);
    EXPECT_EQ(ReadReadingPlace(ini, "b").line, 0u);
    EXPECT_EQ(ReadReadingPlace(ini, "b").textSize, 20);
    WriteReadingPlace(ini, "a", {0, 500});
    EXPECT_EQ(ReadReadingPlace(ini, "a").textSize, kLargestText);
}

}  // namespace
}  // namespace norvelis::viewer
