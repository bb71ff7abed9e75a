#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <string>

namespace {

namespace fs = std::filesystem;

// Who needs a row of the dictionary asks src/dictionary for it: no other module names a table of the
// dictionary in a statement. The columns of the tables are in the store; what tests share writes rows by
// itself.
TEST(Architecture, StatementsOverTheDictionaryTablesAreInTheDictionaryAlone) {
    const fs::path source = fs::path(NORVELIS_SOURCE) / "src";
    const std::regex statement(
        "^(?!\\s*(//|#include))[^\"]*\".*\\b"
        "(schema_details|parents|record_details|record_layout|connection_details|index_details)\\b.*\"",
        std::regex::icase);
    int ownStatements = 0;
    for (const auto& entry : fs::recursive_directory_iterator(source)) {
        const auto extension = entry.path().extension();
        if (extension != ".cpp" && extension != ".h") continue;
        const std::string name = fs::relative(entry.path(), source).generic_string();
        if (name.starts_with("testing/") || name == "store/tables.cpp") continue;
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);) {
            if (line.find('"') == std::string::npos || !std::regex_search(line, statement)) continue;
            if (name.starts_with("dictionary/")) {
                ++ownStatements;
            } else {
                ADD_FAILURE() << name << ": " << line;
            }
        }
    }
    EXPECT_GT(ownStatements, 15) << "the check sees no statements";
}

}  // namespace
