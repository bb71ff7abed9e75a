#include "paper/sheet_choice.h"

#include <gmock/gmock.h>

#include <functional>

#include "base/failure.h"

namespace norvelis::paper {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

std::string RefusalOf(const std::function<void()>& parse) {
    try {
        parse();
    } catch (const RuntimeFailure& failure) {
        return failure.what();
    }
    return "accepted";
}

TEST(SheetChoice, TextsAreRead) {
    SheetChoice choice;
    ParseGrid(" 3 x 2", choice);
    EXPECT_EQ(choice.fit, Fit::Grid);
    EXPECT_EQ(choice.columns, 3);
    EXPECT_EQ(choice.rows, 2);
    for (const auto& [text, millimetres] :
         {std::pair{"10mm", 10.0}, {"10", 10.0}, {"1.5 cm", 15.0}, {"0.5IN", 12.7}, {"0", 0.0}})
        EXPECT_DOUBLE_EQ(ParseLength(text), millimetres) << text;
    EXPECT_THAT(ParseSheetNumbers("3,5-6"), ElementsAre(3, 5, 6));
    EXPECT_THAT(ParseSheetNumbers(" 2 , 1-1"), ElementsAre(2, 1));
    EXPECT_EQ(PaperNamed(" letter").name, "Letter");
    EXPECT_EQ(PaperNamed("A0").height, 1189);
}

TEST(SheetChoice, OtherTextsAreRefusedWithWhatWasExpected) {
    SheetChoice choice;
    for (const char* text : {"", "3", "x2", "3x", "0x2", "3x-2", "3x2x1", "101x1", "9999999999x1"})
        EXPECT_THAT(RefusalOf([&] { ParseGrid(text, choice); }), HasSubstr("such as 3x2")) << text;
    EXPECT_EQ(choice.fit, Fit::OneSheet);
    for (const char* text : {"", "mm", "-1mm", "51mm", "10m", "ten", "1e400"})
        EXPECT_THAT(RefusalOf([&] { ParseLength(text); }), HasSubstr("such as 10mm")) << text;
    for (const char* text : {"", ",", "3,", "0", "5-3", "a", "1-", "-", "1-2-3", "1-10000000"})
        EXPECT_THAT(RefusalOf([&] { ParseSheetNumbers(text); }), HasSubstr("such as 3,5-6")) << text;
    EXPECT_THAT(RefusalOf([] { PaperNamed("B5"); }), HasSubstr("known are A4, A3, A2, A1, A0, Letter"));
}

}  // namespace
}  // namespace norvelis::paper
