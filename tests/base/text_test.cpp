#include "base/text.h"

#include <gtest/gtest.h>

#include "base/failure.h"

namespace norvelis {
namespace {

TEST(TextColumns, GivesWhatLiesInsideTheLineAndNeverFails) {
    const struct {
        long column, count;
        std::string_view expected;
    } cases[] = {{1, 3, "ABC"}, {4, 9, "DEF"}, {6, 1, "F"}, {7, 5, ""},   {1, 0, ""},  {3, -2, ""},
                 {-1, 4, "AB"}, {-9, 9, ""},   {0, 1, ""},  {100, 1, ""}, {6, 99, "F"}};
    for (const auto& c : cases)
        EXPECT_EQ(Text("ABCDEF", c.column, c.count), c.expected) << c.column << "," << c.count;
}

TEST(TextColumns, ColumnFindsTheFirstOccurrenceFromAColumnOn) {
    EXPECT_EQ(Column("xx KEY KEY", "KEY"), 4u);
    EXPECT_EQ(Column("xx KEY KEY", "KEY", 5), 8u);
    EXPECT_EQ(Column("KEY", "KEY", 2), 0u);
    EXPECT_EQ(Column("key", "KEY"), 0u);
    EXPECT_EQ(Column("", "KEY", 2), 0u);
}

TEST(Names, TrimTakesBlanksAloneAndNamesIgnoreCaseAndTrailingBlanks) {
    EXPECT_EQ(Trim("  a b \t "), "a b \t");
    EXPECT_EQ(Trim("   "), "");
    EXPECT_TRUE(SameName("Emp ", "EMP"));
    EXPECT_FALSE(SameName(" Emp", "EMP"));
    EXPECT_FALSE(SameName("EMP", "EMPL"));
}

TEST(Names, ReportBytesBecomeUtf8) {
    EXPECT_EQ(ToUtf8("M\xDCLLER \x80"), "MÜLLER €");
    EXPECT_EQ(ToUtf8("\x81"), "\xC2\x81");  // undefined in the code page: the control of the same number
}

TEST(Numbers, ReadAPrefixOrAWholeNumber) {
    EXPECT_DOUBLE_EQ(Val(" 12.5abc"), 12.5);
    EXPECT_DOUBLE_EQ(Val("abc"), 0);
    EXPECT_TRUE(IsNumeric(" +1e3 "));
    EXPECT_FALSE(IsNumeric("1x"));
    EXPECT_FALSE(IsNumeric(""));
}

TEST(Numbers, BooleanTextsAreWordsOrNumbersAndNothingElse) {
    EXPECT_TRUE(ToBoolean("TRUE"));
    EXPECT_FALSE(ToBoolean(" false "));
    EXPECT_TRUE(ToBoolean("-1"));
    EXPECT_FALSE(ToBoolean("0"));
    try {
        ToBoolean("");
        FAIL() << "an empty text is no boolean";
    } catch (const RuntimeFailure& failure) {
        EXPECT_EQ(failure.Number(), FailureNumber::TypeMismatch);
    }
}

}  // namespace
}  // namespace norvelis
