#include "paper/sheet_plan.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <tuple>

#include "base/failure.h"

namespace norvelis::paper {

namespace {

constexpr int kMostSheets = kMostSheetsInRow * kMostSheetsInRow;

/// Columns or rows: `count` windows, each `overlap` into the one before.
struct Axis {
    double window, overlap;
    int count = 1;

    double Step() const { return window - overlap; }
    double Capacity() const { return window + (count - 1) * Step(); }
};

struct Turned {
    Size paper;
    Rect area;
    Axis across, down;
    double scale;

    int Count() const { return across.count * down.count; }
};

int WindowsFor(double length, const Axis& axis) {
    constexpr double kRounding = 1e-6;
    const double more = std::ceil((length - axis.window) / axis.Step() - kRounding);
    if (more >= kMostSheets) throw RuntimeFailure(FailureNumber::InvalidCall, "that takes too many sheets");
    return 1 + std::max(0, static_cast<int>(more));
}

Turned Arrange(Size drawing, const SheetChoice& choice, Size paper) {
    const Rect area{kMargin, kMargin, paper.width - kMargin, paper.height - kFooterMargin};
    Turned turned{paper, area, {area.Width(), choice.overlap}, {area.Height(), choice.overlap}, 1};
    if (choice.fit == Fit::Scale) {
        turned.scale = choice.percent / 100;
        turned.across.count = WindowsFor(drawing.width * turned.scale, turned.across);
        turned.down.count = WindowsFor(drawing.height * turned.scale, turned.down);
        return turned;
    }
    if (choice.fit == Fit::Grid) {
        turned.across.count = choice.columns;
        turned.down.count = choice.rows;
    }
    turned.scale =
        std::min(turned.across.Capacity() / drawing.width, turned.down.Capacity() / drawing.height);
    if (choice.fit == Fit::OneSheet && !choice.mayEnlarge) turned.scale = std::min(turned.scale, 1.0);
    return turned;
}

Turned Best(Size drawing, const SheetChoice& choice) {
    const Paper& paper = choice.paper;
    const Turned portrait = Arrange(drawing, choice, {paper.width, paper.height});
    const Turned landscape = Arrange(drawing, choice, {paper.height, paper.width});
    if (choice.turn != Turn::Best) return choice.turn == Turn::Portrait ? portrait : landscape;
    const auto cost = [](const Turned& turned) { return std::tuple(turned.Count(), -turned.scale); };
    return cost(landscape) < cost(portrait) ? landscape : portrait;
}

struct Span {
    double origin, begin, end;  ///< Of the drawing, and of what is left when the sheet is cut.
};

/// Where a drawing of this length, in the middle of all windows, is in window i, counted from its start.
Span SpanOf(const Axis& axis, double length, int i) {
    const double origin = (axis.Capacity() - length) / 2 - i * axis.Step();
    const double firstCut = i == 0 ? 0 : axis.overlap / 2;
    const double lastCut = i == axis.count - 1 ? axis.window : axis.window - axis.overlap / 2;
    return {origin, std::clamp(origin, firstCut, lastCut), std::clamp(origin + length, firstCut, lastCut)};
}

}  // namespace

SheetPlan PlanSheets(Size drawing, const SheetChoice& choice) {
    const Turned turned = Best(drawing, choice);
    if (turned.Count() > kMostSheets)
        throw RuntimeFailure(FailureNumber::InvalidCall,
                             "that takes " + std::to_string(turned.Count()) + " sheets");
    SheetPlan plan{turned.paper, turned.area, turned.scale, turned.across.count, turned.down.count, {}};
    const Rect& area = plan.area;
    for (int row = 0; row < plan.rows; ++row) {
        const Span y = SpanOf(turned.down, drawing.height * plan.scale, row);
        for (int column = 0; column < plan.columns; ++column) {
            const Span x = SpanOf(turned.across, drawing.width * plan.scale, column);
            plan.sheets.push_back({row + 1,
                                   column + 1,
                                   {area.x0 + x.origin, area.y0 + y.origin},
                                   {area.x0 + x.begin, area.y0 + y.begin, area.x0 + x.end, area.y0 + y.end}});
        }
    }
    return plan;
}

}  // namespace norvelis::paper
