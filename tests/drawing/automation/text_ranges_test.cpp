#include "drawing/automation/text_ranges.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace norvelis::drawing {
namespace {

using testing::ElementsAre;

constexpr double kRed = 2, kBlue = 4;

/// "text:colour" of each run; the base format's colour is 0.
std::vector<std::string> Colored(const Shape& shape) {
    std::vector<std::string> result;
    for (const auto& run : TextOf(shape)) {
        const CellRef color(Name::Character, 0, RowKey::Number(run.character), Name::Color);
        result.push_back(run.text + ":" + std::to_string(static_cast<int>(Number(shape, color))));
    }
    return result;
}

class TextRangesTest : public testing::Test {
  protected:
    TextRangesTest() { ReplaceText(shape, 0, 0, "OFFICE"); }
    void Color(int begin, int end, double color) {
        FormatText(shape, begin, end, Name::Character, Name::Color, color);
    }

    Shape shape;
};

TEST_F(TextRangesTest, PositionsCountCharactersAndAreCutToTheText) {
    ReplaceText(shape, 0, 6, "B\u00fcro\r\nZwei");
    EXPECT_EQ(TextLength(shape), 10);
    EXPECT_EQ(TextInRange(shape, 1, 3), "\u00fcr");
    EXPECT_EQ(TextInRange(shape, 8, 99), "ei");
    EXPECT_EQ(TextInRange(shape, 7, 3), "");
    ReplaceText(shape, 99, 99, "!");
    EXPECT_EQ(PlainText(TextOf(shape)), "B\u00fcro\r\nZwei!");
}

TEST_F(TextRangesTest, NewTextTakesTheFormatThatItReplacesOrFollows) {
    Color(0, 3, kRed);
    ReplaceText(shape, 3, 3, "-");
    EXPECT_THAT(Colored(shape), ElementsAre("OFF-:2", "ICE:0"));
    ReplaceText(shape, 4, 7, "LINE");
    EXPECT_THAT(Colored(shape), ElementsAre("OFF-:2", "LINE:0"));
    ReplaceText(shape, 0, 8, "all");
    EXPECT_THAT(Colored(shape), ElementsAre("all:2"));
}

TEST_F(TextRangesTest, OverlappingFormatsCutTheText) {
    Color(0, 4, kRed);
    Color(2, 6, kBlue);
    EXPECT_THAT(Colored(shape), ElementsAre("OF:2", "FICE:4"));
    FormatText(shape, 1, 3, Name::Character, Name::Style, 1);
    EXPECT_THAT(Colored(shape), ElementsAre("O:2", "F:2", "F:4", "ICE:4"));
    Color(4, 4, kRed);
    EXPECT_THAT(Colored(shape), ElementsAre("O:2", "F:2", "F:4", "ICE:4"))
        << "an empty range formats nothing";
}

TEST_F(TextRangesTest, TheBaseFormatStaysAndUnusedRowsGo) {
    const CellRef baseSize(Name::Character, 0, RowKey::Number(0), Name::Size);
    shape.LocalAt(baseSize).SetNumber(6.0 / 72);
    FormatText(shape, 0, 6, Name::Character, Name::Size, 10.0 / 72);
    Color(0, 6, kRed);
    Color(0, 6, kBlue);
    EXPECT_EQ(Number(shape, baseSize), 6.0 / 72);
    ASSERT_EQ(TextOf(shape).size(), 1u);
    const CellRef size(Name::Character, 0, RowKey::Number(TextOf(shape)[0].character), Name::Size);
    EXPECT_EQ(Number(shape, size), 10.0 / 72);
    EXPECT_EQ(shape.Find(Name::Character)->rows.size(), 2u);
}

TEST_F(TextRangesTest, AnInstanceKeepsTheFormatsOfItsMastersText) {
    Color(0, 3, kRed);
    Shape instance;
    instance.base = &shape;
    FormatText(instance, 3, 6, Name::Character, Name::Color, kBlue);
    EXPECT_THAT(Colored(instance), ElementsAre("OFF:2", "ICE:4"));
    EXPECT_THAT(Colored(shape), ElementsAre("OFF:2", "ICE:0"));
}

}  // namespace
}  // namespace norvelis::drawing
