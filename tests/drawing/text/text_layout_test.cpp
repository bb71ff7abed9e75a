#include "drawing/text/text_layout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace norvelis::drawing {
namespace {

using testing::ElementsAre;

constexpr double kPoint = 1.0 / 72;
constexpr double kCapitalH = 1479.0 / 2048;  // Of Arial, as its makers publish it.

class TextLayoutTest : public testing::Test {
  protected:
    TextLayoutTest() {
        AddStandardStyles(document_);
        shape_.textStyle = document_.FindStyle("No Style");
        Format(0, Name::Size, 10 * kPoint);
        ParaFormat(Name::HorzAlign, 0);
    }

    void Format(int row, Name cell, double value) {
        shape_.LocalAt({Name::Character, 0, RowKey::Number(row), cell}).SetNumber(value);
    }
    void ParaFormat(Name cell, double value, int row = 0) {
        shape_.LocalAt({Name::Paragraph, 0, RowKey::Number(row), cell}).SetNumber(value);
    }
    void TabStop(Name position, double value) {
        shape_.LocalAt({Name::Tabs, 0, RowKey::Number(0), position}).SetNumber(value);
    }

    TextLayout LayOut(double width = kNoWrapping) { return LayOutText(fonts_, document_, shape_, width); }

    std::vector<std::string> Lines(double width) {
        std::vector<std::string> lines;
        for (const auto& line : LayOut(width).lines) {
            lines.emplace_back();
            for (const auto& fragment : line.fragments) lines.back() += fragment.text;
        }
        return lines;
    }

    /// Of a text in Arial of 10 points, letter by letter.
    double WidthOf(std::string_view text) {
        double sum = 0;
        for (const char c : text)
            sum += fonts_.Face("Arial", false, false).Advance(static_cast<unsigned char>(c));
        return sum * 10 * kPoint;
    }

    Document document_;
    FontLibrary fonts_;
    Shape shape_;
};

TEST_F(TextLayoutTest, WidthsAreThoseOfTheNamedFont) {
    shape_.text = TextRuns{{"HHHH"}};
    EXPECT_NEAR(LayOut().width, 4 * kCapitalH * 10 * kPoint, 1e-6);
    // Courier's letters are all six tenths of its size, Times is narrower than Arial, bold is wider.
    Format(0, Name::Font, document_.FontIndex("Courier New"));
    EXPECT_NEAR(LayOut().width, 4 * 0.6 * 10 * kPoint, 1e-3);
    Format(0, Name::Font, document_.FontIndex("Times New Roman"));
    EXPECT_NEAR(LayOut().width, 4 * 0.722 * 10 * kPoint, 1e-3);
    shape_.text = TextRuns{{"nnnn"}};
    const double plain = LayOut().width;
    Format(0, Name::Style, 1);
    EXPECT_GT(LayOut().width, plain * 1.05);
    Format(0, Name::Style, 0);
    Format(0, Name::Size, 20 * kPoint);
    EXPECT_NEAR(LayOut().width, 2 * plain, 1e-9);
    Format(0, Name::FontScale, 0.5);
    EXPECT_NEAR(LayOut().width, plain, 1e-9);
    Format(0, Name::Letterspace, 0.1);
    EXPECT_NEAR(LayOut().width, plain + 0.4, 1e-9);
}

TEST_F(TextLayoutTest, CapitalsAreMeasuredAsTheyShow) {
    shape_.text = TextRuns{{"hhhh"}};
    Format(0, Name::Case, 1);
    EXPECT_NEAR(LayOut().width, 4 * kCapitalH * 10 * kPoint, 1e-6);
}

TEST_F(TextLayoutTest, LinesEndAtBreaksAndWhereTheBlockEnds) {
    shape_.text = TextRuns{{"one two three"}};
    EXPECT_THAT(Lines(kNoWrapping), ElementsAre("one two three"));
    EXPECT_THAT(Lines(WidthOf("one two three")), ElementsAre("one two three"));
    EXPECT_THAT(Lines(WidthOf("one two three") - 0.01), ElementsAre("one two ", "three"));
    EXPECT_THAT(Lines(WidthOf("three")), ElementsAre("one ", "two ", "three"));
    shape_.text = TextRuns{{"EMP-NAME-NDX"}};
    EXPECT_THAT(Lines(WidthOf("EMP-NAME-N")), ElementsAre("EMP-NAME-", "NDX"));
    // A word that is too wide alone breaks inside, as does what follows a break.
    shape_.text = TextRuns{{"a wwwwww"}};
    EXPECT_THAT(Lines(WidthOf("wwww")), ElementsAre("a ", "wwww", "ww"));
    EXPECT_THAT(Lines(0), ElementsAre("a ", "w", "w", "w", "w", "w", "w"));
    EXPECT_THAT(Lines(-5), testing::SizeIs(7));
}

TEST_F(TextLayoutTest, EveryKindOfLineBreakCounts) {
    for (const char* text : {"one\ntwo", "one\r\ntwo", "one\rtwo", "one\xE2\x80\xA8two"}) {
        shape_.text = TextRuns{{text}};
        EXPECT_THAT(Lines(kNoWrapping), ElementsAre("one", "two")) << text;
    }
    shape_.text = TextRuns{{"one\n\ntwo\n"}};
    EXPECT_THAT(Lines(kNoWrapping), ElementsAre("one", "", "two", ""));
    EXPECT_NEAR(LayOut().height, 4 * 12 * kPoint, 1e-9);
    shape_.text = TextRuns{{"one\r"}, {"\ntwo", 1}};  // The pair in two runs.
    EXPECT_THAT(Lines(kNoWrapping), ElementsAre("one", "two"));
    shape_.text = TextRuns{};
    EXPECT_TRUE(LayOut().lines.empty());
}

TEST_F(TextLayoutTest, ALineIsAsHighAsItsLargestLetters) {
    shape_.text = TextRuns{{"small "}, {"LARGE", 1}, {"\nsmall", 0}};
    Format(1, Name::Size, 20 * kPoint);
    const TextLayout layout = LayOut();
    ASSERT_EQ(layout.lines.size(), 2u);
    EXPECT_NEAR(layout.lines[0].height, 24 * kPoint, 1e-9);
    EXPECT_NEAR(layout.lines[1].height, 12 * kPoint, 1e-9);
    EXPECT_NEAR(layout.lines[1].top, 24 * kPoint, 1e-9);
    EXPECT_GT(layout.lines[0].baseline, 12 * kPoint);
    ASSERT_EQ(layout.lines[0].fragments.size(), 2u);
    EXPECT_NEAR(layout.lines[0].fragments[1].x, WidthOf("small "), 1e-9);
    // A fixed distance of lines goes before the letters'.
    ParaFormat(Name::SpLine, 15 * kPoint);
    EXPECT_NEAR(LayOut().height, 30 * kPoint, 1e-9);
    ParaFormat(Name::SpLine, -2);
    EXPECT_NEAR(LayOut().height, 60 * kPoint, 1e-9);
}

TEST_F(TextLayoutTest, AWordIsCarriedOverWithItsFormats) {
    shape_.text = TextRuns{{"one tw"}, {"othree", 1}};
    Format(1, Name::Size, 10 * kPoint);
    const TextLayout layout = LayOut(WidthOf("one twoth"));
    ASSERT_EQ(layout.lines.size(), 2u);
    const auto& carried = layout.lines[1].fragments;
    ASSERT_EQ(carried.size(), 2u);
    EXPECT_EQ(carried[0].text, "tw");
    EXPECT_EQ(carried[1].text, "othree");
    EXPECT_NEAR(carried[0].x, 0, 1e-9);
    EXPECT_NEAR(carried[1].x, WidthOf("tw"), 1e-9);
    EXPECT_NEAR(layout.lines[1].width, WidthOf("twothree"), 1e-9);
    EXPECT_NEAR(layout.lines[0].width, WidthOf("one"), 1e-9);
}

TEST_F(TextLayoutTest, AlignmentIsInTheBlockOrInTheWidestLine) {
    shape_.text = TextRuns{{"one\nthree"}};
    const double space = WidthOf("three") - WidthOf("one");
    const std::pair<int, double> cases[] = {{0, 0.0}, {1, 0.5}, {2, 1.0}};
    for (const auto& [align, share] : cases) {
        ParaFormat(Name::HorzAlign, align);
        EXPECT_NEAR(LayOut().lines[0].fragments[0].x, space * share, 1e-9) << align;
        EXPECT_NEAR(LayOut(5).lines[1].fragments[0].x, (5 - WidthOf("three")) * share, 1e-9) << align;
    }
}

TEST_F(TextLayoutTest, IndentsAndDistancesOfParagraphs) {
    ParaFormat(Name::IndLeft, 0.4);
    ParaFormat(Name::IndFirst, -0.1);
    ParaFormat(Name::IndRight, 0.3);
    ParaFormat(Name::SpBefore, 0.1);
    ParaFormat(Name::SpAfter, 0.05);
    shape_.text = TextRuns{{"one two\nthree"}};
    const TextLayout layout = LayOut(0.3 + WidthOf("one tw") + 0.3);
    ASSERT_EQ(layout.lines.size(), 3u);
    EXPECT_NEAR(layout.lines[0].fragments[0].x, 0.3, 1e-9);
    EXPECT_NEAR(layout.lines[1].fragments[0].x, 0.4, 1e-9);
    EXPECT_NEAR(layout.lines[2].fragments[0].x, 0.3, 1e-9);
    EXPECT_NEAR(layout.lines[1].top, 12 * kPoint, 1e-9);
    EXPECT_NEAR(layout.lines[2].top, 24 * kPoint + 0.15, 1e-9);
    // Without wrapping the text is as wide as its widest line with its indents.
    EXPECT_NEAR(LayOut().width, 0.3 + WidthOf("one two") + 0.3, 1e-9);
}

TEST_F(TextLayoutTest, TabsLeadToTheNextStop) {
    shape_.text = TextRuns{{"a\tb\tc\td"}};
    shape_.cells.Set(Name::DefaultTabStop, 0.5);
    const auto starts = [this] {
        std::vector<double> result;
        const auto layout = LayOut();
        for (const auto& fragment : layout.lines[0].fragments) {
            if (!fragment.text.empty()) result.push_back(fragment.x);
        }
        return result;
    };
    const auto near = [](double x) { return testing::DoubleNear(x, 1e-9); };
    EXPECT_THAT(starts(), ElementsAre(near(0), near(0.5), near(1), near(1.5)));
    TabStop(Name::Position0, 0.8);
    TabStop(Name::Position1, 1.2);
    EXPECT_THAT(starts(), ElementsAre(near(0), near(0.8), near(1.2), near(1.5)));
    EXPECT_NEAR(LayOut().width, 1.5 + WidthOf("d"), 1e-9);
    // Centred on its stop, ending at it, and with its decimal point on it.
    shape_.text = TextRuns{{"\tword\t1.25\tx"}};
    const double half = WidthOf("word") / 2;
    TabStop(Name::Position1, 1.6);
    TabStop(Name::Alignment0, 1);
    TabStop(Name::Alignment1, 2);
    EXPECT_THAT(starts(), ElementsAre(near(0.8 - half), near(1.6 - WidthOf("1.25")), near(2)));
    TabStop(Name::Alignment1, 3);
    EXPECT_THAT(starts(), ElementsAre(near(0.8 - half), near(1.6 - WidthOf("1")), near(2)));
}

TEST_F(TextLayoutTest, SizesCountTheMarginsOfTheBlock) {
    shape_.text = TextRuns{{"one two"}};
    shape_.cells.Set(Name::LeftMargin, 0.1).Set(Name::RightMargin, 0.2);
    shape_.cells.Set(Name::TopMargin, 0.3).Set(Name::BottomMargin, 0.4);
    const double breath = TextWidth(fonts_, document_, shape_) - (WidthOf("one two") + 0.3);
    EXPECT_GE(breath, 0);  // For programs that measure a little wider.
    EXPECT_LE(breath, kPoint);
    EXPECT_NEAR(TextHeight(fonts_, document_, shape_, 10), 12 * kPoint + 0.7, 1e-9);
    const double narrow = WidthOf("one two") + 0.3 - 0.01;
    EXPECT_NEAR(TextHeight(fonts_, document_, shape_, narrow), 24 * kPoint + 0.7, 1e-9);
    EXPECT_NEAR(TextWidth(fonts_, document_, shape_, narrow), WidthOf("one") + 0.3 + breath, 1e-9);
    EXPECT_EQ(TextWidth(fonts_, document_, shape_, 0.35), 0.35);
    // What a block is measured to be, it holds.
    const double width = TextWidth(fonts_, document_, shape_);
    EXPECT_NEAR(TextHeight(fonts_, document_, shape_, width), 12 * kPoint + 0.7, 1e-9);
}

TEST_F(TextLayoutTest, OddTextsAndFormatsAreMeasuredAllTheSame) {
    shape_.text = TextRuns{{"\xC3\xA9\xE4\xB8\xAD\xF0\x9F\x98\x80 \xFF\xC3"}};
    EXPECT_GT(LayOut(0.1).height, 0);
    shape_.text = TextRuns{{"text", 7, 9, 11}};  // Rows that nobody states: the style's formats.
    EXPECT_GT(LayOut().width, 0);
    for (const double odd : {-1e9, 0.0, 1e9, HUGE_VAL, std::nan("")}) {
        Format(0, Name::Size, odd);
        ParaFormat(Name::IndLeft, odd);
        ParaFormat(Name::SpLine, odd);
        shape_.text = TextRuns{{"a\tb c"}};
        EXPECT_LT(LayOut(1).lines.size(), 6u);
    }
}

}  // namespace
}  // namespace norvelis::drawing
