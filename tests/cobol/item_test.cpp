#include <gtest/gtest.h>

#include "cobol/picture.h"
#include "cobol/usage.h"

namespace norvelis::cobol {
namespace {

TEST(Item, BytesOfTheRecord) {
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
    EXPECT_EQ(bytes("", "POINTER"), 4);
    EXPECT_EQ(bytes("G(5)", "DISPLAY-1"), 10);
    EXPECT_EQ(bytes("N(5)", ""), 10);
    EXPECT_EQ(bytes("9(19)", "COMP"), 0);
    EXPECT_EQ(bytes("9(", "DISPLAY"), 0);
}

TEST(Item, UsageTellsOccurrences) {
    const auto occurs = [](const char* stored) {
        const Usage usage = ReadUsage(stored);
        return usage.occurs ? std::to_string(usage.least) + " to " + std::to_string(usage.most) : "once";
    };
    EXPECT_EQ(occurs("DISPLAY"), "once");
    EXPECT_EQ(occurs("COMP-3      OCCURS 12"), "12 to 12");
    EXPECT_EQ(occurs("GROUP       OCCURS 1 TO 6"), "1 to 6");
    EXPECT_EQ(occurs("DISPLAY     OCCURS 0 TO 10 DEPENDI"), "0 to 10");
    EXPECT_EQ(occurs("DISPLAY                      OCCURS"), "0 to 0");
    EXPECT_TRUE(ReadUsage("OCCURS 0 TO 0").never);
    EXPECT_FALSE(ReadUsage("OCCURS 0 T").never) << "the TO is cut";
    EXPECT_EQ(ReadUsage("COMP SYNC OCCURS 3 TIMES DEPENDING").otherWords, "SYNC DEPENDING");
    EXPECT_EQ(ReadUsage("DISPLAY OCCURS").otherWords, "OCCURS");
}

}  // namespace
}  // namespace norvelis::cobol
