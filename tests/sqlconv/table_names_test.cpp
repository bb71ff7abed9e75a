#include <gtest/gtest.h>

#include <sstream>

#include "sqlconv/cases.h"
#include "sqlconv/kept_tables.h"
#include "sqlconv/schema_of.h"

namespace norvelis::tables {
namespace {

std::vector<dictionary::FieldContents> FieldsIn(const std::string& words) {
    std::vector<dictionary::FieldContents> fields;
    std::istringstream stream(words);
    for (std::string word; stream >> word;) {
        const auto group = word.find('>');
        if (group != std::string::npos) fields.push_back(FieldOf("02 " + word.substr(0, group)));
        fields.push_back(group == std::string::npos ? FieldOf("02 " + word, "X(4)")
                                                    : FieldOf("03 " + word.substr(group + 1), "X(4)"));
    }
    return fields;
}

TEST(TableNames, ColumnsOnAllServers) {
    for (const auto& parts : ReadCases("names.txt")) {
        for (const Dialect* dialect : AllDialects()) {
            const auto kept = MakeKeptTables(SchemaOf({RecordOf("R", FieldsIn(parts[0]))}), {}, *dialect);
            std::string names;
            for (const Column& column : kept.model.tables.at(0).columns) {
                if (column.item != Column::kAdded)
                    names += (names.empty() ? "" : " ") + dialect->NameText(column.name);
            }
            EXPECT_EQ(names, ExpectedOf(parts, 1, dialect->Name())) << dialect->Name();
        }
    }
}

// A composed name can be too long: it is cut, and stays another one than any other.
TEST(TableNames, LongNamesAreCutTheSameWayEachTime) {
    const std::string long1(30, 'A'), long2 = std::string(29, 'A') + "B", group(30, 'G');
    const auto schema = SchemaOf({RecordOf(
        "R-45678901234567",
        {FieldOf("02 " + group), FieldOf("03 " + long1, "X", "DISPLAY OCCURS 2"),
         FieldOf("03 " + long1, "X", "DISPLAY OCCURS 2"), FieldOf("03 " + long2, "X", "DISPLAY OCCURS 2")})});
    for (const Dialect* dialect : AllDialects()) {
        const auto names = [&] {
            std::string all;
            for (const Table& table : MakeKeptTables(schema, {}, *dialect).model.tables)
                all += table.name + " ";
            return all;
        };
        EXPECT_EQ(names(), names());
        std::istringstream stream(names());
        for (std::string name; stream >> name;) EXPECT_LE(name.size(), dialect->ServerLimits().name);
    }
    const Table cut = MakeKeptTables(schema, {}, PostgresqlDialect()).model.tables.at(2);
    EXPECT_EQ(cut.name.size(), 63u);
    EXPECT_EQ(cut.name.substr(0, 54),
              ("r_45678901234567_" + std::string(30, 'g') + "_" + std::string(30, 'a')).substr(0, 54));
}

}  // namespace
}  // namespace norvelis::tables
