// What the compiler cannot forbid: circles inside a target, and Qt where a server has none.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "architecture/source_tree.h"

namespace norvelis::architecture {
namespace {

using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

// The folders that may include Qt, with all below them.
constexpr std::array<std::string_view, 5> kQtFolders = {"ui/", "desktop/", "drawing/render/",
                                                        "drawing/export/", "drawing/sheets/"};

bool IsQt(const std::string& include) {
    return include.starts_with("Q") && include.find('.') == std::string::npos;
}

TEST(Sources, HaveNoCircles) {
    const auto sources = ReadSources();
    ASSERT_GT(sources.size(), 300u);
    EXPECT_THAT(OnCircles(FileGraph(sources)), IsEmpty());
    EXPECT_THAT(OnCircles(FolderGraph(sources)), IsEmpty());
}

TEST(Sources, IncludeQtOnlyWhereThereAreScreensOrPictures) {
    int seen = 0;
    for (const auto& source : ReadSources()) {
        const bool mayUseQt = std::ranges::any_of(
            kQtFolders, [&](std::string_view folder) { return source.path.starts_with(folder); });
        for (const auto& include : source.includes) {
            if (!IsQt(include)) continue;
            ++seen;
            EXPECT_TRUE(mayUseQt) << source.path << " includes " << include;
        }
    }
    EXPECT_GT(seen, 100);
}

// The search itself: a header and its source are one, so the circle of a and b is seen although no file
// includes itself.
TEST(Sources, CirclesAreFound) {
    const std::vector<SourceFile> sources = {{"one/a.h", {"vector"}},   {"one/a.cpp", {"one/a.h", "two/b.h"}},
                                             {"two/b.h", {"one/a.h"}},  {"two/c.h", {"two/b.h"}},
                                             {"one/d.h", {"string"}},   {"three/e.h", {"one/d.h"}},
                                             {"one/f.h", {"three/e.h"}}};
    EXPECT_THAT(OnCircles(FileGraph(sources)), UnorderedElementsAre("one/a", "two/b"));
    EXPECT_THAT(OnCircles(FolderGraph(sources)), UnorderedElementsAre("one", "two", "three"));
}

}  // namespace
}  // namespace norvelis::architecture
