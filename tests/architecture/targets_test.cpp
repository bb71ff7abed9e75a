// Between targets the compiler forbids an include: a target sees the include roots of the targets that it
// links. These tests check that nobody links more than the table allows, and that a forbidden include indeed
// does not compile.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "architecture/source_tree.h"
#include "testing/temporary_folder.h"

namespace norvelis::architecture {
namespace {

using ::testing::Contains;
using ::testing::IsSubsetOf;

// What each target may link, and so include, with all that those may. docs/architecture.md has the picture.
const Graph kMayUse = {
    {"base", {}},
    {"engine", {}},
    {"paper", {"base"}},
    {"cobol", {"base"}},
    {"store", {"base"}},
    {"layout", {"base"}},
    {"core", {"store"}},
    {"dictionary", {"store"}},
    {"compare", {"dictionary"}},
    {"extract", {"compare", "core", "dictionary"}},
    {"copybook", {"cobol", "dictionary"}},
    {"publish", {"compare", "copybook"}},
    {"browse", {"core", "dictionary"}},
    {"viewer", {"extract"}},
    {"diagram", {"engine", "browse"}},
    {"sqlconv", {"cobol", "core", "dictionary"}},
    {"commands", {"extract", "diagram", "paper", "publish", "scheduler"}},
    {"skin_art", {"base"}},
    {"ui", {"skin_art", "commands", "viewer", "sqlconv", "walk"}},
    {"cli", {"core"}},
    {"cli_report", {"cli", "commands", "copybook"}},
    {"drawing", {"engine", "layout"}},
    {"stencils", {"drawing"}},
    {"walk", {"layout"}},
    {"render", {"drawing", "walk"}},
    {"export", {"render"}},
    {"sheets", {"paper", "render"}},
    {"cli_sql", {"cli", "sqlconv"}},
    {"cli_draw", {"cli_report", "cli_schedule", "export", "sheets"}},
    {"scheduler", {"core"}},
    {"cli_schedule", {"cli", "extract", "scheduler"}},
    {"desktop", {"ui", "export", "sheets"}},
    {"testing", {"extract"}},
};

/// The include folders of each target under src/, as CMake hands them to the compiler.
std::map<std::string, std::vector<std::string>> ReadIncludeFolders() {
    std::map<std::string, std::vector<std::string>> folders;
    std::ifstream file(NORVELIS_INCLUDE_FOLDERS);
    for (std::string line; std::getline(file, line);) {
        std::istringstream fields(line);
        std::string target;
        std::getline(fields, target, ';');
        auto& list = folders[target];
        for (std::string folder; std::getline(fields, folder, ';');) list.push_back(folder);
    }
    return folders;
}

/// The targets whose include roots are among the folders.
std::set<std::string> TargetsIn(const std::vector<std::string>& folders) {
    static const std::string prefix = "norvelis_";
    std::set<std::string> targets;
    for (const auto& folder : folders) {
        const std::string name = std::filesystem::path(folder).filename();
        if (name.starts_with(prefix)) targets.insert(name.substr(prefix.size()));
    }
    return targets;
}

bool Compiles(const std::string& include, const std::vector<std::string>& folders) {
    const TemporaryFolder folder;
    const std::string source = folder.Path("include.cpp");
    std::ofstream(source) << "#include \"" << include << "\"\n";
    std::string command = NORVELIS_COMPILER " -std=c++20 -fsyntax-only '" + source + "' 2>/dev/null";
    for (const auto& path : folders) command += " -I'" + path + "'";
    return std::system(command.c_str()) == 0;
}

TEST(Targets, SeeNoMoreThanTheyMay) {
    const auto folders = ReadIncludeFolders();
    ASSERT_THAT(folders, Contains(::testing::Key("browse")));
    for (const auto& [target, list] : folders) {
        ASSERT_TRUE(kMayUse.contains(target)) << target << " is not in the table";
        std::set<std::string> allowed = Reachable(kMayUse, target);
        allowed.insert(target);
        EXPECT_THAT(TargetsIn(list), IsSubsetOf(allowed)) << target;
    }
}

TEST(Targets, AForbiddenIncludeDoesNotCompile) {
    const auto folders = ReadIncludeFolders();
    const std::string engine = "engine/drawing_engine.h";
    EXPECT_TRUE(Compiles(engine, folders.at("diagram")));
    EXPECT_FALSE(Compiles(engine, folders.at("browse")));
    EXPECT_TRUE(Compiles("base/text.h", folders.at("layout")));
    EXPECT_FALSE(Compiles("store/connection.h", folders.at("layout")));
}

}  // namespace
}  // namespace norvelis::architecture
