#include "paper/sheet_plan.h"

#include <gmock/gmock.h>

#include "base/failure.h"

namespace norvelis::paper {
namespace {

constexpr double kRounding = 1e-9;

// An A4 sheet keeps 186 by 267 mm for the drawing, turned 273 by 180.
TEST(SheetPlan, OneSheetIsAsLargeAsFitsButNoLargerThanLife) {
    SheetChoice choice;
    const SheetPlan small = PlanSheets({100, 50}, choice);
    EXPECT_EQ(small.scale, 1);
    ASSERT_EQ(small.sheets.size(), 1u);
    EXPECT_GT(small.paper.height, small.paper.width) << "portrait where both serve";
    EXPECT_NEAR(small.sheets[0].origin.x, 12 + (186 - 100) / 2.0, kRounding) << "in the middle";

    const SheetPlan wide = PlanSheets({1092, 300}, choice);
    EXPECT_NEAR(wide.scale, 0.25, kRounding);
    EXPECT_EQ(wide.paper.width, 297) << "turned, for that is larger";
    choice.turn = Turn::Portrait;
    EXPECT_NEAR(PlanSheets({1092, 300}, choice).scale, 186.0 / 1092, kRounding);
    choice.mayEnlarge = true;
    EXPECT_NEAR(PlanSheets({93, 50}, choice).scale, 2, kRounding);
    choice.paper = PaperNamed("A0");
    EXPECT_NEAR(PlanSheets({817, 100}, choice).scale, 1, kRounding);
}

TEST(SheetPlan, AGridIsFilledAndAScaleTakesWhatItNeeds) {
    SheetChoice choice;
    choice.fit = Fit::Grid;
    choice.columns = 3;
    choice.rows = 2;
    const SheetPlan grid = PlanSheets({1000, 200}, choice);
    EXPECT_EQ(grid.sheets.size(), 6u);
    EXPECT_NEAR(grid.scale, (3 * 273 - 2 * 10) / 1000.0, kRounding);
    EXPECT_EQ(grid.sheets[2].row, 1);
    EXPECT_EQ(grid.sheets[2].column, 3);

    choice.fit = Fit::Scale;
    choice.turn = Turn::Landscape;
    for (const auto& [percent, width, columns] :
         {std::tuple{100, 273.0, 1}, {100, 273.1, 2}, {50, 546.0, 1}, {100, 536.0, 2}, {100, 536.1, 3}}) {
        choice.percent = percent;
        const SheetPlan plan = PlanSheets({width, 100}, choice);
        EXPECT_EQ(plan.columns, columns) << width << " at " << percent;
        EXPECT_EQ(plan.scale, percent / 100.0);
    }
    choice.percent = kMostPercent;
    EXPECT_THROW(PlanSheets({30'000, 30'000}, choice), RuntimeFailure);
    EXPECT_THROW(PlanSheets({1e12, 10}, choice), RuntimeFailure);
}

/// Cut sheets laid edge to edge: each place of the drawing is on exactly one, at its place.
void ExpectWhole(Size drawing, const SheetChoice& choice) {
    const SheetPlan plan = PlanSheets(drawing, choice);
    double y = 0;
    for (int row = 0; row < plan.rows; ++row) {
        double x = 0;
        const auto at = [&](int column) -> const Sheet& {
            return plan.sheets[static_cast<std::size_t>(row * plan.columns + column)];
        };
        for (int column = 0; column < plan.columns; ++column) {
            const Sheet& sheet = at(column);
            if (sheet.cut.Width() * sheet.cut.Height() > 0) {
                EXPECT_NEAR((sheet.cut.x0 - sheet.origin.x) / plan.scale, x, kRounding);
                EXPECT_NEAR((sheet.cut.y0 - sheet.origin.y) / plan.scale, y, kRounding);
            }
            EXPECT_GE(sheet.cut.x0, plan.area.x0 - kRounding);
            EXPECT_LE(sheet.cut.x1, plan.area.x1 + kRounding);
            EXPECT_LE(sheet.cut.y1, plan.area.y1 + kRounding);
            x += sheet.cut.Width() / plan.scale;
        }
        EXPECT_NEAR(x, drawing.width, 1e-6);
        y += at(0).cut.Height() / plan.scale;
    }
    EXPECT_NEAR(y, drawing.height, 1e-6);
}

TEST(SheetPlan, CutSheetsShowEveryPlaceOnce) {
    for (const Size drawing : {Size{50, 40}, Size{1000, 200}, Size{200, 3000}, Size{900, 900}}) {
        for (const double overlap : {0.0, 10.0, 50.0}) {
            SheetChoice choice;
            choice.overlap = overlap;
            ExpectWhole(drawing, choice);
            for (const double percent : {30.0, 100.0, 240.0}) {
                choice.fit = Fit::Scale;
                choice.percent = percent;
                ExpectWhole(drawing, choice);
            }
            choice.fit = Fit::Grid;
            for (const auto& [columns, rows] : {std::pair{1, 1}, {3, 2}, {2, 5}}) {
                choice.columns = columns;
                choice.rows = rows;
                ExpectWhole(drawing, choice);
            }
        }
    }
}

}  // namespace
}  // namespace norvelis::paper
