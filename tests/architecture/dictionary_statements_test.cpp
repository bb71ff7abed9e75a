#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>
#include <string>

namespace {

namespace fs = std::filesystem;

std::string Content(const fs::path& file) {
    std::ostringstream content;
    content << std::ifstream(file).rdbuf();
    return content.str();
}

// Who needs a row of the dictionary asks src/dictionary for it: no other module names a table of the
// dictionary in a statement. The columns of the tables are in the store; what tests share writes rows by
// itself.
TEST(Architecture, StatementsOverTheDictionaryTablesAreInTheDictionaryAlone) {
    const fs::path source = fs::path(NORVELIS_SOURCE) / "src";
    const std::regex table(
        "\"[^\"\n]*\\b(schema_details|parents|record_details|record_layout|connection_details|index_details)"
        "\\b"
        "[^\"\n]*\"",
        std::regex::icase);
    const std::regex include("#include[^\n]*");
    int ownStatements = 0;
    for (const auto& entry : fs::recursive_directory_iterator(source)) {
        const auto extension = entry.path().extension();
        if (extension != ".cpp" && extension != ".h") continue;
        const std::string name = fs::relative(entry.path(), source).generic_string();
        if (name.starts_with("testing/") || name == "store/tables.cpp") continue;
        const std::string text = std::regex_replace(Content(entry.path()), include, "");
        for (std::sregex_iterator found(text.begin(), text.end(), table), end; found != end; ++found) {
            if (name.starts_with("dictionary/")) {
                ++ownStatements;
            } else {
                ADD_FAILURE() << name << ": " << found->str();
            }
        }
    }
    EXPECT_GT(ownStatements, 15) << "the check sees no statements";
}

}  // namespace
