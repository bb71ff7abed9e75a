#include "viewer/report_search.h"

#include <gmock/gmock.h>

#include "base/paths.h"
#include "testing/temporary_folder.h"

namespace norvelis::viewer {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;

TEST(TextSearch, PlacesInALine) {
    EXPECT_THAT(TextSearch("emp").In("EMPLOYEE Emp temp"), ElementsAre(0, 9, 14));
    EXPECT_THAT(TextSearch("aa").In("aaaaa"), ElementsAre(0, 2));
    EXPECT_THAT(TextSearch("longer than the line").In("line"), IsEmpty());
    EXPECT_THAT(TextSearch("\xe9").In("caf\xe9 CAF\xc9"), ElementsAre(3)) << "only A to Z have a case";
}

// Places at, before and across the ends of the pieces in which a file is read.
TEST(TextSearch, NextAndPreviousInALargeFile) {
    const TemporaryFolder folder;
    std::string bytes(3 << 20, '.');
    const std::vector<std::uint64_t> places = {
        0, 100, (1 << 20) - 3, (2 << 20) - 6, 2 << 20, bytes.size() - 6};
    for (const auto place : places) bytes.replace(place, 6, "NeedLe");
    WriteFile(folder.Path("file"), bytes);
    const FileReader file(folder.Path("file"));
    const TextSearch search("needle");

    std::vector<std::uint64_t> found;
    for (auto at = search.FindNext(file, 0); at; at = search.FindNext(file, *at + 1)) found.push_back(*at);
    EXPECT_EQ(found, places);
    found.clear();
    for (auto at = search.FindPrevious(file, file.Size()); at; at = search.FindPrevious(file, *at))
        found.insert(found.begin(), *at);
    EXPECT_EQ(found, places);
    EXPECT_THAT(search.FindNext(file, 50), Optional(100u));
    EXPECT_THAT(search.FindPrevious(file, 1 << 20), Optional((1u << 20) - 3));
    EXPECT_EQ(TextSearch("absent").FindNext(file, 0), std::nullopt);
    std::stop_source stop;
    stop.request_stop();
    EXPECT_EQ(search.FindNext(file, 0, stop.get_token()), std::nullopt);
}

TEST(TextSearch, ATypedTextIsLookedForAsTheBytesOfAReport) {
    EXPECT_THAT(ReportBytes("Müller €"), Optional(std::string("M\xFCller \x80")));
    EXPECT_THAT(ReportBytes(""), Optional(std::string()));
    for (const char* none : {"Ω", "漢", "\xC3"}) EXPECT_EQ(ReportBytes(none), std::nullopt) << none;
}

}  // namespace
}  // namespace norvelis::viewer
