#include <gtest/gtest.h>

#include "sqlconv/cases.h"
#include "sqlconv/dialects/dialect.h"
#include "sqlconv/tables/picture.h"

namespace norvelis::tables {
namespace {

ColumnType TypeIn(const std::string& picture, const std::string& usage, const TypeRules& rules = {}) {
    return TypeFor(ReadPicture(PictureWord(picture)), ReadUsage(usage), rules);
}

TEST(Picture, TypesOnAllServers) {
    for (const auto& parts : ReadCases("types.txt")) {
        for (const Dialect* dialect : AllDialects()) {
            const std::string expected = ExpectedOf(parts, 2, dialect->Name());
            EXPECT_EQ(dialect->TypeText(TypeIn(parts[0], parts[1])), expected == "-" ? "" : expected)
                << parts[0] << ' ' << parts[1] << ' ' << dialect->Name();
        }
    }
}

TEST(Picture, RulesChangeTypes) {
    using enum ColumnType::Kind;
    EXPECT_EQ(TypeIn("X(300)", "", {.fixedText = true}), (ColumnType{FixedText, 300}));
    const TypeRules wide{.widenBinary = true};
    EXPECT_EQ(TypeIn("9(4)", "COMP", wide), ColumnType{Integer});
    EXPECT_EQ(TypeIn("S9(9)", "BINARY", wide), ColumnType{BigInteger});
    EXPECT_EQ(TypeIn("9(18)", "COMP", wide), (ColumnType{Decimal, 20, 0}));
    EXPECT_EQ(TypeIn("9(2)V99", "COMP", wide), (ColumnType{Decimal, 5, 2}));
    EXPECT_EQ(TypeIn("9(4)", "COMP-3", wide), ColumnType{SmallInteger});
}

TEST(Picture, BytesOfTheRecord) {
    const auto bytes = [](const char* picture, const char* usage) {
        return StoredBytes(ReadPicture(picture), ReadUsage(usage));
    };
    EXPECT_EQ(bytes("S9(7)V99", "COMP-3"), 5);
    EXPECT_EQ(bytes("S9(4)", "COMP-3"), 3);
    EXPECT_EQ(bytes("9(4)", "COMP"), 2);
    EXPECT_EQ(bytes("9(9)", "COMP"), 4);
    EXPECT_EQ(bytes("9(10)", "COMP"), 8);
    EXPECT_EQ(bytes("9(4)P(3)", "DISPLAY"), 4);
    EXPECT_EQ(bytes("ZZ9.99CR", "DISPLAY"), 8);
    EXPECT_EQ(bytes("", "COMP-2"), 8);
}

TEST(Picture, UsageTellsOccurrences) {
    const auto occurs = [](const char* stored) {
        const Usage usage = ReadUsage(stored);
        return usage.occurs ? std::to_string(usage.least) + " to " + std::to_string(usage.most) : "once";
    };
    EXPECT_EQ(occurs("DISPLAY"), "once");
    EXPECT_EQ(occurs("COMP-3      OCCURS 12"), "12 to 12");
    EXPECT_EQ(occurs("GROUP       OCCURS 1 TO 6"), "1 to 6");
    EXPECT_EQ(occurs("DISPLAY     OCCURS 0 TO 10 DEPENDI"), "0 to 10");
    EXPECT_EQ(occurs("DISPLAY                      OCCURS"), "0 to 0");
}

}  // namespace
}  // namespace norvelis::tables
