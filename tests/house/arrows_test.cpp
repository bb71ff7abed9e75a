#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>

namespace {

namespace fs = std::filesystem;

// Which rooms each room may include from. docs/architecture.md has the picture.
const std::map<std::string, std::set<std::string>> kMayUse = {
    {"core", {}},
    {"store", {"core"}},
    {"extract", {"core", "store"}},
    {"browse", {"core", "store"}},
    {"diagram", {"core", "store", "browse"}},
    {"scheduler", {"core", "store"}},
    {"drawing", {"core", "diagram"}},
    {"ui", {"core", "store", "extract", "browse", "diagram"}},
    {"cli", {"core", "store", "extract", "browse", "scheduler", "diagram", "drawing"}},
    {"desktop", {"core", "store", "extract", "browse", "diagram", "drawing", "ui"}},
};

bool MaySeeQt(const fs::path& file) {
    const std::string path = file.generic_string();
    for (const char* folder : {"/ui/", "/desktop/", "/drawing/render/", "/drawing/text/"}) {
        if (path.find(folder) != std::string::npos) return true;
    }
    return false;
}

TEST(House, EveryIncludeFollowsTheArrows) {
    const fs::path source = fs::path(NORVELIS_SOURCE) / "src";
    const std::regex own("^#include \"(\\w+)/(.*)\"");
    const std::regex qt("^#include <Q\\w+");
    int seen = 0;
    for (const auto& entry : fs::recursive_directory_iterator(source)) {
        const auto extension = entry.path().extension();
        if (extension != ".cpp" && extension != ".h") continue;
        const std::string room = fs::relative(entry.path(), source).begin()->string();
        ASSERT_TRUE(kMayUse.contains(room)) << room << " is not in the picture";
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);) {
            std::smatch match;
            if (std::regex_search(line, qt)) {
                EXPECT_TRUE(MaySeeQt(entry.path())) << entry.path() << ": " << line;
            }
            if (!std::regex_search(line, match, own)) continue;
            ++seen;
            const std::string used = match[1];
            if (used == room || !fs::exists(source / used)) continue;
            EXPECT_TRUE(kMayUse.at(room).contains(used)) << entry.path() << ": " << line;
            // Of the diagram room the engine sees the interface alone.
            if (room == "drawing" && used == "diagram") {
                EXPECT_EQ(match[2], "engine.h") << entry.path();
            }
        }
    }
    EXPECT_GT(seen, 50);
}

}  // namespace
