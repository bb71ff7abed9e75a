#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>

namespace {

namespace fs = std::filesystem;

// Which modules each module may include from. docs/architecture.md has the picture.
const std::map<std::string, std::set<std::string>> kMayUse = {
    {"base", {}},
    {"store", {"base"}},
    {"core", {"base", "store"}},
    {"dictionary", {"base", "store"}},
    {"extract", {"base", "core", "store", "dictionary"}},
    {"browse", {"base", "core", "store", "dictionary"}},
    {"engine", {}},
    {"diagram", {"base", "core", "store", "dictionary", "browse", "engine"}},
    {"layout", {"base"}},
    {"drawing", {"base", "engine", "layout"}},
    {"commands", {"base", "core", "store", "dictionary", "extract", "browse", "diagram", "engine"}},
    {"ui", {"base", "core", "store", "extract", "browse", "diagram", "engine", "commands"}},
    {"cli",
     {"base", "core", "store", "dictionary", "extract", "browse", "diagram", "engine", "commands",
      "drawing"}},
    {"desktop", {"base", "core", "store", "engine", "diagram", "commands", "drawing", "ui"}},
    {"testing", {"base", "core", "store", "dictionary", "extract"}},
};

bool MaySeeQt(const fs::path& file) {
    const std::string path = file.generic_string();
    for (const char* folder : {"/ui/", "/desktop/", "/drawing/render/", "/drawing/export/"}) {
        if (path.find(folder) != std::string::npos) return true;
    }
    return false;
}

TEST(Architecture, EveryIncludeFollowsTheDependencies) {
    const fs::path source = fs::path(NORVELIS_SOURCE) / "src";
    const std::regex own("^#include \"(\\w+)/(.*)\"");
    const std::regex qt("^#include <Q\\w+");
    int seen = 0;
    for (const auto& entry : fs::recursive_directory_iterator(source)) {
        const auto extension = entry.path().extension();
        if (extension != ".cpp" && extension != ".h") continue;
        const std::string module = fs::relative(entry.path(), source).begin()->string();
        ASSERT_TRUE(kMayUse.contains(module)) << module << " is not in the table";
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);) {
            std::smatch match;
            if (std::regex_search(line, qt)) {
                EXPECT_TRUE(MaySeeQt(entry.path())) << entry.path() << ": " << line;
            }
            if (!std::regex_search(line, match, own)) continue;
            ++seen;
            const std::string used = match[1];
            if (used == module || !fs::exists(source / used)) continue;
            EXPECT_TRUE(kMayUse.at(module).contains(used)) << entry.path() << ": " << line;
        }
    }
    EXPECT_GT(seen, 50);
}

}  // namespace
