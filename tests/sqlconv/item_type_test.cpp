#include <gtest/gtest.h>

#include "sqlconv/cases.h"
#include "sqlconv/dialects/dialect.h"
#include "sqlconv/tables/item_type.h"

namespace norvelis::tables {
namespace {

ColumnType TypeIn(const std::string& picture, const std::string& usage, const TypeRules& rules = {}) {
    return TypeFor(cobol::ReadPicture(cobol::PictureWord(picture)), cobol::ReadUsage(usage), rules);
}

TEST(ItemType, TypesOnAllServers) {
    for (const auto& parts : ReadCases("types.txt")) {
        for (const Dialect* dialect : AllDialects()) {
            const std::string expected = ExpectedOf(parts, 2, dialect->Name());
            EXPECT_EQ(dialect->TypeText(TypeIn(parts[0], parts[1])), expected == "-" ? "" : expected)
                << parts[0] << ' ' << parts[1] << ' ' << dialect->Name();
        }
    }
}

TEST(ItemType, RulesChangeTypes) {
    using enum ColumnType::Kind;
    EXPECT_EQ(TypeIn("X(300)", "", {.fixedText = true}), (ColumnType{FixedText, 300}));
    const TypeRules wide{.widenBinary = true};
    EXPECT_EQ(TypeIn("9(4)", "COMP", wide), ColumnType{Integer});
    EXPECT_EQ(TypeIn("S9(9)", "BINARY", wide), ColumnType{BigInteger});
    EXPECT_EQ(TypeIn("9(18)", "COMP", wide), (ColumnType{Decimal, 20, 0}));
    EXPECT_EQ(TypeIn("9(2)V99", "COMP", wide), (ColumnType{Decimal, 5, 2}));
    EXPECT_EQ(TypeIn("9(4)", "COMP-3", wide), ColumnType{SmallInteger});
}

}  // namespace
}  // namespace norvelis::tables
