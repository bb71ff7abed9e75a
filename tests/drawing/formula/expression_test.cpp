#include "drawing/formula/expression.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <numbers>

namespace norvelis::drawing {
namespace {

/// Cells by the name that a formula gives them, and a text of three by two inches that wraps to twice the
/// height when it gets less than its width.
class Cells : public FormulaSource {
  public:
    std::optional<Value> CellValue(const Reference& reference) override {
        const char* sheets[] = {"", "ThePage!", "Sheet."};
        std::string name = sheets[static_cast<int>(reference.where)];
        if (reference.where == Reference::Where::Sheet) name += std::to_string(reference.sheet) + '!';
        const auto found = values_.find(name + CellName(names, reference.cell));
        return found == values_.end() ? std::nullopt : std::optional(found->second);
    }
    double TextWidth(double mostWidth) override { return std::min(3.0, mostWidth); }
    double TextHeight(double mostWidth) override { return mostWidth < 3 ? 4 : 2; }
    std::optional<double> WalkGlue() override { return 7.5; }

    NamePool names;

  private:
    std::map<std::string, Value> values_ = {
        {"Width", Value::Of(4.0)},
        {"Height", Value::Of(2.0)},
        {"PinX", Value::Of(1.5)},
        {"FlipX", Value::Of(0.0)},
        {"LineColor", Value::Of("#0A141E")},
        {"Comment", Value::Of("a note")},
        {"Char.Size[1]", Value::Of(0.125)},
        {"Char.Size[3]", Value::Of(0.25)},
        {"ThePage!PageWidth", Value::Of(11)},
        {"Sheet.5!Height", Value::Of(0.75)},
        {"Geometry1.X2", Value::Of(0.4)},
        {"Geometry1.NoFill", Value::Of(1.0)},
        {"Prop.Value.Value", Value::Of("x")},
        {"Controls.TextPosition.X", Value::Of(2.25)},
        {"Controls.TextPosition.Y", Value::Of(1.25)},
    };
};

struct NumberCase {
    const char* formula;
    double value;
};

class NumberFormula : public testing::TestWithParam<NumberCase> {};

TEST_P(NumberFormula, HasItsValue) {
    Cells cells;
    const auto expression = Expression::Parse(cells.names, GetParam().formula);
    ASSERT_TRUE(expression) << GetParam().formula;
    EXPECT_FALSE(expression->IsOpaque());
    const auto value = expression->Evaluate(cells);
    ASSERT_TRUE(value) << GetParam().formula;
    EXPECT_FALSE(value->isText);
    EXPECT_NEAR(value->number, GetParam().value, 1e-12) << GetParam().formula;
    // The spelling that is stored means the same.
    const auto again = Expression::Parse(cells.names, expression->Text());
    ASSERT_TRUE(again) << expression->Text();
    EXPECT_EQ(again->Evaluate(cells), value) << expression->Text();
    EXPECT_EQ(again->Text(), expression->Text());
}

constexpr double kDegree = std::numbers::pi / 180;

constexpr NumberCase kUnits[] = {
    {"2", 2},
    {"2.5", 2.5},
    {".5", 0.5},
    {"1e3", 1000},
    {"1E-3", 0.001},
    {"2 in", 2},
    {"2in.", 2},
    {"2IN", 2},
    {"2\"", 2},
    {"1 ft", 12},
    {"6 pt", 6.0 / 72},
    {"6 pt.", 6.0 / 72},
    {"6PT.", 6.0 / 72},
    {"254 mm", 10},
    {"25.4mm.", 1},
    {"2.54 cm", 1},
    {"0.0254 m", 1},
    {"180 deg", std::numbers::pi},
    {"90deg.", 90 * kDegree},
    {"0DA", 0},
    {"45DA", 45 * kDegree},
    {"2 rad", 2},
    {"0.1968DL", 0.1968},
    {"9DT", 9.0 / 72},
    {"50%", 0.5},
    {"-3 pt", -3.0 / 72},
    {"+2", 2},
    {"TRUE", 1},
    {"false", 0},
};
constexpr NumberCase kPrecedence[] = {
    {"1+2*3", 7},
    {"(1+2)*3", 9},
    {"10-4-3", 3},
    {"16/4/2", 2},
    {"2*3^2", 18},
    {"2^3^2", 64},
    {"-2^2", 4},
    {"--2", 2},
    {"2*-3", -6},
    {"1+1=2", 1},
    {"1+2<2*1", 0},
    {"3>=3", 1},
    {"3<>3", 0},
    {"2<=1", 0},
    {"1>2=0", 1},
    {"1 in+1 in", 2},
    {"72 pt*2", 2},
    {" 1 + 1 ", 2},
    {"1\t+\r\n1", 2},
    {"((((1))))", 1},
    {"\"b\">\"A\"", 1},
    {"\"ABC\"=\"abc\"", 1},
    {"LineColor=\"#0a141e\"", 1},
};
constexpr NumberCase kReferences[] = {
    {"Width*0.5", 2},
    {"width", 4},
    {"PINX+HEIGHT", 3.5},
    {"ThePage!PageWidth", 11},
    {"THEPAGE!pagewidth/2", 5.5},
    {"Sheet.5!Height", 0.75},
    {"sheet.5!height*2", 1.5},
    {"Geometry1.X2", 0.4},
    {"geometry1.x2", 0.4},
    {"Geometry1.NoFill", 1},
    {"Char.Size", 0.125},
    {"Char.Size[1]", 0.125},
    {"char.size[3]", 0.25},
    {"Controls.TextPosition", 2.25},
    {"Controls.TextPosition.Y", 1.25},
    {"Width * 0.2 + 0.625 + 0.25 in", 1.675},
    {"ThePage!PageWidth-Height * 0.1 - 0.125 - 0.25 in", 10.425},
};
constexpr NumberCase kFunctions[] = {
    {"GUARD(Width)", 4},
    {"guard(0DA)", 0},
    {"Guard(TextHeight(TheText, Width))", 2},
    {"TEXTHEIGHT(TheText,1)", 4},
    {"TextWidth(TheText)", 3},
    {"TEXTWIDTH(TheText,2)", 2},
    {"MAX(TEXTWIDTH(TheText),5*Char.Size)", 3},
    {"IF(Width>3,1,2)", 1},
    {"if(Width>9,1,2)", 2},
    {"MIN(3,1,2)", 1},
    {"Max(3,1,2)", 3},
    {"ABS(-2)", 2},
    {"AND(1,1,1)", 1},
    {"AND(1,0)", 0},
    {"OR(0,0)", 0},
    {"OR(0,2)", 1},
    {"NOT(0)", 1},
    {"Not(FlipX)", 1},
    {"SUM(1,2,3)", 6},
    {"ROUND(2.345,2)", 2.35},
    {"INT(-1.5)", -2},
    {"SQRT(9)", 3},
    {"SIGN(-4)", -1},
    {"MODULUS(7,3)", 1},
    {"MODULUS(-7,3)", 2},  // The result has the divisor's sign.
    {"MODULUS(7,-3)", -2},
    {"MODULUS(-7,-3)", -1},
    {"SIN(90 deg)", 1},
    {"COS(0)", 1},
    {"ATAN2(1,1)", 45 * kDegree},
    {"PI()", std::numbers::pi},
    {"SETATREF(Width)", 4},
    {"_WALKGLUE(BegTrigger,EndTrigger,WalkPreference)", 7.5},
    {"MIN(1;2)", 1},
    {"IF(1,2,1/0)", 2},
    {"MAX(Width,-Width)", 4},
};

INSTANTIATE_TEST_SUITE_P(Units, NumberFormula, testing::ValuesIn(kUnits));
INSTANTIATE_TEST_SUITE_P(Precedence, NumberFormula, testing::ValuesIn(kPrecedence));
INSTANTIATE_TEST_SUITE_P(References, NumberFormula, testing::ValuesIn(kReferences));
INSTANTIATE_TEST_SUITE_P(Functions, NumberFormula, testing::ValuesIn(kFunctions));

TEST(Expression, TextsKeepTheirQuotes) {
    const std::pair<const char*, const char*> cases[] = {
        {"\"\"", ""},
        {"\"plain\"", "plain"},
        {"\"say \"\"yes\"\"\"", "say \"yes\""},
        {"\"\"\"\"", "\""},
        {"\"(1+2, 'x')\"", "(1+2, 'x')"},
        {"\"größe\"", "größe"},
        {"\"a\"&\"b\"", "ab"},
        {"\"w=\"&Width", "w=4"},
        {"Comment&\"!\"", "a note!"},
        {"RGB(204,255,153)", "#CCFF99"},
        {"rgb(300,-5,10)", "#FF000A"},
        {"IF(Width>1,\"wide\",\"slim\")", "wide"},
    };
    for (const auto& [formula, text] : cases) {
        Cells cells;
        const auto expression = Expression::Parse(cells.names, formula);
        ASSERT_TRUE(expression) << formula;
        EXPECT_EQ(expression->Evaluate(cells), Value::Of(std::string(text))) << formula;
    }
}

TEST(Expression, WhatIsNoFormulaIsRefused) {
    const char* cases[] = {
        "",
        " ",
        "1+",
        "*2",
        "(1",
        "1)",
        "1 2",
        "\"open",
        "Widht",
        "Width Height",
        "2 parsecs",
        "1e999",
        "1e13",
        "IF(1,2)",
        "GUARD()",
        "GUARD(1,2)",
        "RGB(1,2)",
        "NOT(1,2)",
        "MIN()",
        "MIN(1,)",
        "TEXTHEIGHT(TheText)",
        "Sheet.!Width",
        "Sheet.x!Width",
        "Sheet.5!",
        "Sheet.99999999999!Width",
        "ThePage!Widht",
        "Char.Size[",
        "Char.Size[0]",
        "Char.Size[x]",
        "Geometry0.X1",
        "Geometry1.X0",
        "Prop.",
        "1#2",
        "Width!",
        "a{b}",
        "=1",
    };
    NamePool names;
    for (const char* formula : cases) EXPECT_FALSE(Expression::Parse(names, formula)) << formula;
    // Nesting and length have an end, and what is just short of it is read.
    const auto nested = [](int depth) {
        return std::string(static_cast<std::size_t>(depth), '(') + "1" +
               std::string(static_cast<std::size_t>(depth), ')');
    };
    EXPECT_TRUE(Expression::Parse(names, nested(50)));
    EXPECT_FALSE(Expression::Parse(names, nested(5000)));
    EXPECT_FALSE(Expression::Parse(names, std::string(5000, '-') + "1"));
    std::string sum = "1";
    for (int i = 0; i < 1000; ++i) sum += "+1";
    Cells cells;
    EXPECT_EQ(Expression::Parse(names, sum)->Evaluate(cells), Value::Of(1001.0));
    EXPECT_FALSE(Expression::Parse(names, std::string(10000, '1')));
}

TEST(Expression, WithoutAValueItSaysSo) {
    const char* cases[] = {"1/0",       "1/(Width-4)", "SQRT(-1)",      "MODULUS(1,0)",
                           "1000000^3", "LocPinX+1",   "Sheet.6!Width", "(0-1)^0.5"};
    for (const char* formula : cases) {
        Cells cells;
        const auto expression = Expression::Parse(cells.names, formula);
        ASSERT_TRUE(expression) << formula;
        EXPECT_EQ(expression->Evaluate(cells), std::nullopt) << formula;
    }
}

TEST(Expression, WhatItDoesNotKnowStaysAsItCame) {
    struct Case {
        const char* formula;
        std::size_t references;
    };
    for (const Case& each : {Case{"BLEND(LineColor,FillForegnd,0.5)", 2},
                             {"PNT(Width,Height)", 2},
                             {"NOW()", 0},
                             {"IF(STRSAME(SHAPETEXT(TheText),\"\"),0,Width)", 2},
                             {"Pages[Page-2]!PageWidth", 0},
                             {"'A name'!Width+Height", 1}}) {
        Cells cells;
        const auto expression = Expression::Parse(cells.names, each.formula);
        ASSERT_TRUE(expression) << each.formula;
        EXPECT_TRUE(expression->IsOpaque()) << each.formula;
        EXPECT_EQ(expression->Evaluate(cells), std::nullopt) << each.formula;
        EXPECT_EQ(expression->References().size(), each.references) << each.formula;
    }
}

TEST(Expression, UniversalSpelling) {
    const std::pair<const char*, const char*> cases[] = {
        {"Guard(TextHeight(TheText, Width))", "GUARD(TEXTHEIGHT(TheText,Width))"},
        {"guard( pinx + 6pt. )", "GUARD(PinX+6 pt)"},
        {"thepage!pageheight - height * 0.1", "ThePage!PageHeight-Height*0.1"},
        {"SHEET.12!width", "Sheet.12!Width"},
        {"1.50", "1.50"},
        {"true", "TRUE"},
        {"min(1;2)", "MIN(1;2)"},
    };
    for (const auto& [formula, text] : cases) {
        NamePool names;
        EXPECT_EQ(Expression::Parse(names, formula)->Text(), text);
    }
}

TEST(Expression, ConstantsKnowTheirUnit) {
    NamePool names;
    const std::pair<const char*, Name> cases[] = {
        {"6 pt", Name::PT},   {"-6 pt", Name::PT},   {"2 in", Name::IN},   {"2", Name::None},
        {"TRUE", Name::BOOL}, {"90 deg", Name::DEG}, {"\"x\"", Name::None}};
    for (const auto& [formula, unit] : cases) {
        const auto expression = Expression::Parse(names, formula);
        EXPECT_TRUE(expression->IsConstant()) << formula;
        EXPECT_EQ(expression->ConstantUnit(), unit) << formula;
    }
    for (const char* formula : {"1+1", "Width", "RGB(1,2,3)", "-Width", "GUARD(1)"})
        EXPECT_FALSE(Expression::Parse(names, formula)->IsConstant()) << formula;
}

}  // namespace
}  // namespace norvelis::drawing
