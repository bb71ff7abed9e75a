#include "drawing/formula/recalculation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

#include "testing/small_drawing.h"

namespace norvelis::drawing {
namespace {

class RecalculationTest : public testing::Test {
  protected:
    RecalculationTest() {
        AddStandardStyles(document_);
        AddPage();
        page_->sheet.cells.Set(Name::PageWidth, 8.5).Set(Name::PageHeight, 11);
        box_ = &AddShape(1, 1);
        recalculation_ = std::make_unique<Recalculation>(document_, fonts_);
    }

    void AddPage() { page_ = &document_.AddPage("Page-1"); }

    Shape& AddShape(double x, double y, Shape* group = nullptr) {
        auto shape = std::make_unique<Shape>();
        shape->textStyle = document_.FindStyle("Normal");
        shape->cells.Set(Name::PinX, x).Set(Name::PinY, y).Set(Name::Width, 2).Set(Name::Height, 1);
        return page_->Add(std::move(shape), group);
    }

    bool SetFormula(Shape& shape, const std::string& cell, const std::string& formula) {
        return recalculation_->SetFormula(*page_, shape, Ref(cell), formula);
    }
    bool SetFormula(const std::string& cell, const std::string& formula) {
        return SetFormula(*box_, cell, formula);
    }
    bool SetValue(Shape& shape, const std::string& cell, double value) {
        return recalculation_->SetValue(*page_, shape, Ref(cell), Value::Of(value));
    }
    double Get(Shape& shape, const std::string& cell) {
        return recalculation_->Number(*page_, shape, Ref(cell));
    }
    double Get(const std::string& cell) { return Get(*box_, cell); }
    CellRef Ref(const std::string& cell) const {
        const CellRef ref = ParseCellName(document_.names, cell);
        EXPECT_NE(ref.cell, Name::None) << cell;
        return ref;
    }
    long EvaluationsOf(const std::function<void()>& action) {
        recalculation_->Settle();
        const long before = recalculation_->Evaluations();
        action();
        recalculation_->Settle();
        return recalculation_->Evaluations() - before;
    }

    Document document_;
    FontLibrary fonts_;
    Page* page_ = nullptr;
    Shape* box_ = nullptr;
    std::unique_ptr<Recalculation> recalculation_;
};

TEST_F(RecalculationTest, DependentsFollowInAnyNumberOfSteps) {
    EXPECT_TRUE(SetFormula("Height", "Width/2"));
    EXPECT_TRUE(SetFormula("LocPinY", "=Height*0.5"));
    EXPECT_TRUE(SetFormula("LocPinX", "Width*0.5"));
    EXPECT_TRUE(SetValue(*box_, "Width", 8));
    EXPECT_EQ(Get("Height"), 4);
    EXPECT_EQ(Get("LocPinY"), 2);
    EXPECT_EQ(Get("LocPinX"), 4);
}

TEST_F(RecalculationTest, EachDependentIsEvaluatedOnceHoweverManyPathsLeadToIt) {
    // A lattice: two cells of each step read both of the step before.
    const char* steps[][2] = {{"LocPinX", "LocPinY"},
                              {"TxtPinX", "TxtPinY"},
                              {"TxtWidth", "TxtHeight"},
                              {"TxtLocPinX", "TxtLocPinY"},
                              {"LeftMargin", "RightMargin"}};
    const char* before[] = {"Width", "Height"};
    for (const auto& step : steps) {
        for (const char* cell : step)
            ASSERT_TRUE(SetFormula(cell, std::string("(") + before[0] + "+" + before[1] + ")/2"));
        before[0] = step[0], before[1] = step[1];
    }
    EXPECT_EQ(EvaluationsOf([&] { SetValue(*box_, "Width", 5); }), 10);
    EXPECT_EQ(Get("RightMargin"), 3);
    // Several changes before anybody looks are one update; a change nobody reads is none.
    EXPECT_EQ(EvaluationsOf([&] {
                  for (int i = 1; i <= 20; ++i) SetValue(*box_, "Height", i);
              }),
              10);
    EXPECT_EQ(EvaluationsOf([&] { SetValue(*box_, "PinY", 5); }), 0);
}

TEST_F(RecalculationTest, FormulasReachThePageAndOtherShapes) {
    Shape& other = AddShape(4, 4);
    ASSERT_TRUE(SetFormula("PinX", "ThePage!PageWidth/2"));
    ASSERT_TRUE(SetFormula("PinY", "Sheet." + std::to_string(other.id) + "!PinY+1 in"));
    EXPECT_EQ(Get("PinX"), 4.25);
    EXPECT_EQ(Get("PinY"), 5);
    SetValue(page_->sheet, "PageWidth", 20);
    SetValue(other, "PinY", 7);
    EXPECT_EQ(Get("PinX"), 10);
    EXPECT_EQ(Get("PinY"), 8);
    // A formula that gave way is heard of no more.
    ASSERT_TRUE(SetFormula("PinY", "3"));
    EXPECT_EQ(EvaluationsOf([&] { SetValue(other, "PinY", 9); }), 0);
    EXPECT_EQ(Get("PinY"), 3);
}

TEST_F(RecalculationTest, ARefusedFormulaLeavesTheCellAsItWas) {
    ASSERT_TRUE(SetFormula("Height", "Width/4"));
    for (const char* formula : {"Width/", "", "Nonsense", "Sheet.999!Width", "2 parsecs", "1e300", "1e7",
                                "\"x\"&", "GUARD(1,2)", "#"}) {
        EXPECT_FALSE(SetFormula("Height", formula)) << formula;
        EXPECT_EQ(FormulaOf(*box_, Name::Height), "Width/4") << formula;
    }
    SetValue(*box_, "Width", 6);
    EXPECT_EQ(Get("Height"), 1.5);
    // A coordinate that an evaluation would carry beyond every page stays where it was.
    ASSERT_TRUE(SetFormula("PinX", "Width*1000000"));
    EXPECT_EQ(Get("PinX"), 1);
}

TEST_F(RecalculationTest, CyclesAreRefused) {
    Shape& other = AddShape(4, 4);
    const std::string mine = "Sheet." + std::to_string(box_->id) + "!",
                      theirs = "Sheet." + std::to_string(other.id) + "!";
    EXPECT_FALSE(SetFormula("Width", "Width+1"));
    ASSERT_TRUE(SetFormula("Height", "Width"));
    EXPECT_FALSE(SetFormula("Width", "Height"));
    ASSERT_TRUE(SetFormula("PinX", theirs + "PinX"));
    EXPECT_FALSE(SetFormula(other, "PinX", mine + "PinX+1"));
    ASSERT_TRUE(SetFormula(page_->sheet, "PageWidth", mine + "PinX*2"));
    EXPECT_FALSE(SetFormula(other, "PinX", "ThePage!PageWidth"));
    EXPECT_EQ(Get("PageWidth"), 0);  // The box has no such cell; the page has.
    EXPECT_EQ(Get(page_->sheet, "PageWidth"), 8);
    // The text's size depends on the letters' size, which can not depend on it in turn.
    ASSERT_TRUE(SetFormula("Width", "TEXTWIDTH(TheText)"));
    EXPECT_FALSE(SetFormula("Char.Size", "Width/10"));
    EXPECT_FALSE(SetFormula("LeftMargin", "Height*0.1"));
}

TEST_F(RecalculationTest, OpaqueFormulasKeepTheirTextAndValue) {
    box_->cells.SetText(Name::FillForegnd, "#123456");
    ASSERT_TRUE(SetFormula("FillForegnd", "Blend( LineColor , 1, 0.5 )"));
    SetValue(*box_, "LineColor", 4);
    recalculation_->Settle();
    EXPECT_EQ(FormulaOf(*box_, Name::FillForegnd), "Blend( LineColor , 1, 0.5 )");
    EXPECT_EQ(TextValue(*box_, Name::FillForegnd), "#123456");
}

TEST_F(RecalculationTest, AGuardedCellTakesNoValue) {
    ASSERT_TRUE(SetFormula("Width", "Guard(3 in)"));
    EXPECT_FALSE(SetValue(*box_, "Width", 9));
    EXPECT_EQ(Get("Width"), 3);
    EXPECT_TRUE(SetFormula("Width", "4 in"));
    EXPECT_TRUE(SetValue(*box_, "Width", 9));
    EXPECT_EQ(Get("Width"), 9);
    for (const double none : {std::numeric_limits<double>::quiet_NaN(), HUGE_VAL, -HUGE_VAL, 2e6})
        EXPECT_FALSE(SetValue(*box_, "Width", none)) << none;
    EXPECT_EQ(Get("Width"), 9);
}

TEST_F(RecalculationTest, AConstantIsAValueWithItsUnit) {
    ASSERT_TRUE(SetFormula("Char.Size", "=6 pt."));
    const Cell* size = box_->FindLocal(Ref("Char.Size"));
    ASSERT_NE(size, nullptr);
    EXPECT_EQ(size->formula, "");
    EXPECT_EQ(size->unit, Name::PT);
    EXPECT_DOUBLE_EQ(size->value, 6.0 / 72);
    ASSERT_TRUE(SetFormula("Comment", "\"say \"\"hi\"\"\""));
    EXPECT_EQ(TextValue(*box_, Name::Comment), "say \"hi\"");
}

TEST_F(RecalculationTest, ABoxSizesItselfToItsText) {
    ASSERT_TRUE(SetFormula("Height", "Guard(TextHeight(TheText, Width))"));
    ASSERT_TRUE(SetFormula("Width", "Guard(TextWidth(TheText))"));
    box_->text = TextRuns{{"EMPLOYEE"}};
    recalculation_->TextChanged(*page_, *box_);
    const double width = Get("Width"), height = Get("Height");
    EXPECT_GT(width, 0.4);
    box_->text = TextRuns{{"EMPLOYEE\nEMPLOYEE EMPLOYEE"}};
    recalculation_->TextChanged(*page_, *box_);
    EXPECT_GT(Get("Width"), 1.5 * width);
    EXPECT_GT(Get("Height"), 1.5 * height);
    // Larger letters and wider margins count at once.
    const double before = Get("Width");
    ASSERT_TRUE(SetFormula("Char.Size", "16 pt"));
    EXPECT_GT(Get("Width"), 1.8 * (before - 8.0 / 72));
    const double larger = Get("Width");
    ASSERT_TRUE(SetFormula("LeftMargin", "1 in"));
    EXPECT_NEAR(Get("Width"), larger + 1 - 4.0 / 72, 1e-9);
    // Also when they are computed themselves.
    SetValue(*box_, "LocPinX", 1);
    ASSERT_TRUE(SetFormula("LeftMargin", "LocPinX"));
    ASSERT_TRUE(SetFormula("RightMargin", "LeftMargin*2"));
    const double wide = Get("Width");
    SetValue(*box_, "LocPinX", 2);
    EXPECT_NEAR(Get("Width"), wide + 3, 1e-9);
}

TEST_F(RecalculationTest, AGluedLineFollowsItsBoxes) {
    Shape& other = AddShape(6, 1);
    Shape& line = AddShape(0, 0);
    const auto follow = [&](const char* trigger, const Shape& box) {
        return SetFormula(line, trigger, "_XFTRIGGER(Sheet." + std::to_string(box.id) + "!EventXFMod)");
    };
    ASSERT_TRUE(follow("BegTrigger", *box_));
    ASSERT_TRUE(follow("EndTrigger", other));
    for (const char* cell : {"BeginX", "BeginY"})
        ASSERT_TRUE(SetFormula(line, cell, "_WALKGLUE(BegTrigger,EndTrigger,WalkPreference)"));
    for (const char* cell : {"EndX", "EndY"})
        ASSERT_TRUE(SetFormula(line, cell, "_WALKGLUE(EndTrigger,BegTrigger,WalkPreference)"));
    ASSERT_TRUE(SetFormula(line, "Width", "GUARD(EndX-BeginX)"));
    // Boxes of two by one inch at their lower left corners: from right border to left border.
    EXPECT_EQ(Get(line, "BeginX"), 3);
    EXPECT_EQ(Get(line, "BeginY"), 1.5);
    EXPECT_EQ(Get(line, "EndX"), 6);
    SetValue(other, "PinX", 10);
    EXPECT_EQ(Get(line, "EndX"), 10);
    EXPECT_EQ(Get(line, "Width"), 7);
    SetValue(*box_, "Width", 4);
    EXPECT_EQ(Get(line, "BeginX"), 5);
}

TEST_F(RecalculationTest, InstancesFollowTheirMastersFormulas) {
    Master& master = AddBoxMaster(document_, "Process");
    Shape& first = DropInstance(*page_, master, 3, 3);
    Shape& second = DropInstance(*page_, master, 6, 6);
    recalculation_->Dropped(*page_, first);
    recalculation_->Dropped(*page_, second);
    SetValue(first, "Width", 5);
    EXPECT_EQ(Get(first, "LocPinX"), 2.5);
    EXPECT_EQ(Get(first, "Geometry1.X3"), 5);
    EXPECT_EQ(Get(second, "LocPinX"), 0.5);
    recalculation_->Settle();
    // What is inherited is marked as such, and its row keeps its type.
    const Cell* corner = first.FindLocal(Ref("Geometry1.X3"));
    ASSERT_NE(corner, nullptr);
    EXPECT_TRUE(corner->inherited);
    EXPECT_EQ(first.Find(Name::Geometry)->Find(RowKey::Number(3))->type, Name::LineTo);
    EXPECT_EQ(second.FindLocal(Ref("LocPinX")), nullptr);
    // An own formula hides the master's.
    ASSERT_TRUE(SetFormula(first, "LocPinX", "Width"));
    SetValue(first, "Width", 6);
    EXPECT_EQ(Get(first, "LocPinX"), 6);
    // Refused against the inherited formula as well: the master's LocPinX reads the width.
    EXPECT_FALSE(SetFormula(second, "Width", "LocPinX*2"));
}

TEST_F(RecalculationTest, PartsOfAGroupFollowTheirGroup) {
    Master& master = document_.AddMaster("Group");
    auto group = std::make_unique<Shape>();
    group->kind = ShapeKind::Group;
    group->cells.Set(Name::PinX, 0).Set(Name::PinY, 0).Set(Name::Width, 1).Set(Name::Height, 1);
    Shape& top = master.Add(std::move(group));
    auto part = std::make_unique<Shape>();
    const std::string sheet = "Sheet." + std::to_string(top.id) + "!";
    part->cells.Set(Name::PinX, 0.5, sheet + "Width*0.5").Set(Name::Width, 1, sheet + "Width");
    master.Add(std::move(part), &top);
    Shape& one = DropInstance(*page_, master, 2, 2);
    Shape& two = DropInstance(*page_, master, 5, 5);
    recalculation_->Dropped(*page_, one);
    recalculation_->Dropped(*page_, two);
    SetValue(two, "Width", 8);
    EXPECT_EQ(Get(*two.shapes[0], "PinX"), 4);
    EXPECT_EQ(Get(*two.shapes[0], "Width"), 8);
    EXPECT_EQ(Get(*one.shapes[0], "PinX"), 0.5);
}

TEST_F(RecalculationTest, ADroppedShapeSeesThePageThatItCameTo) {
    Master& master = document_.AddMaster("Background");
    master.sheet.cells.Set(Name::PageWidth, 1).Set(Name::PageHeight, 1);
    auto shape = std::make_unique<Shape>();
    shape->cells.Set(Name::PinX, 0.5, "GUARD(ThePage!PageWidth*0.5)").Set(Name::PinY, 0.5);
    shape->cells.Set(Name::Width, 1, "ThePage!PageWidth").Set(Name::LocPinX, 0.5, "Width*0.5");
    master.Add(std::move(shape));
    Shape& dropped = DropInstance(*page_, master, 0, 0);
    recalculation_->Dropped(*page_, dropped);
    recalculation_->Settle();
    EXPECT_EQ(Number(dropped, Name::Width), 8.5);
    EXPECT_EQ(Number(dropped, Name::LocPinX), 4.25);
    EXPECT_EQ(Number(dropped, Name::PinX), 4.25);
}

TEST_F(RecalculationTest, CyclesAndChainsOfAFileEnd) {
    // Nobody refused these: they came with the document.
    box_->cells.Set(Name::Width, 1, "Height+1").Set(Name::Height, 2, "Width+1");
    Shape* before = box_;
    for (int i = 0; i < 600; ++i) {
        Shape& next = AddShape(0, 0);
        std::string formula = "Sheet." + std::to_string(before->id) + "!PinX";
        for (int term = 0; term < 100; ++term) formula += "+0";
        next.cells.Set(Name::PinX, 0, formula);
        before = &next;
    }
    Recalculation fresh(document_, fonts_);
    for (const auto& shape : page_->shapes) fresh.Renewed(*page_, *shape);
    fresh.Number(*page_, *before, Name::PinX);
    fresh.Settle();
    EXPECT_TRUE(std::isfinite(Number(*box_, Name::Width)));
    fresh.SetValue(*page_, *box_, Name::PinX, Value::Of(5));
    fresh.Settle();
    EXPECT_EQ(Number(*before, Name::PinX), 5);
}

}  // namespace
}  // namespace norvelis::drawing
