#include "drawing/arrange/line_jumps.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdio>

#include "drawing/package/package.h"
#include "drawing/render/sample_drawing.h"
#include "drawing/session/connectors.h"

namespace norvelis::drawing {
namespace {

layout::Route Path(std::vector<Point> points, bool curved = false) {
    return {std::move(points), curved, {}};
}

/// The jumps of a first route over the others, as "segment: from to".
std::string JumpsOver(const layout::Route& route, const std::vector<layout::Route>& others) {
    std::vector<layout::Route> all{route};
    all.insert(all.end(), others.begin(), others.end());
    const auto jumps = FindJumps(all);
    for (std::size_t k = 1; k < jumps.size(); ++k) EXPECT_TRUE(jumps[k].empty()) << "a vertical line jumps";
    std::string text;
    for (const LineJump& jump : jumps.front()) {
        char words[64];
        std::snprintf(words, sizeof words, "%zu: %.2f %.2f; ", jump.segment, jump.from, jump.to);
        text += words;
    }
    return text;
}

TEST(FindJumps, HorizontalSegmentsJumpOverWhatCrossesThem) {
    const layout::Route right = Path({{0, 0}, {0, 1}, {4, 1}, {4, 2}}), left = Path({{4, 1}, {0, 1}});
    const auto down = [](double x, double to = 0) { return Path({{x, 3}, {x, to}}); };
    const struct {
        const char* what;
        layout::Route route;
        std::vector<layout::Route> others;
        const char* jumps;
    } cases[] = {
        {"in the order of the way", right, {down(3), down(1)}, "1: 0.96 1.04; 1: 2.96 3.04; "},
        {"also from right to left", left, {down(1), down(3)}, "0: 3.04 2.96; 0: 1.04 0.96; "},
        {"close ones are one", right, {down(2), down(2.05)}, "1: 1.96 2.09; "},
        {"two lines in one place too", right, {down(2), down(2)}, "1: 1.96 2.04; "},
        {"over slanting lines", right, {Path({{1, 0}, {3, 2}})}, "1: 1.96 2.04; "},
        {"not where a line ends", right, {down(2, 1)}, ""},
        {"not in a corner", right, {down(0.05), down(3.97)}, ""},
        {"not over curves", right, {Path({{2, 3}, {2, 2}, {2, 0}}, true)}, ""},
        {"not of curves", Path({{0, 1}, {2, 1}, {4, 1}}, true), {down(1)}, ""},
    };
    for (const auto& c : cases) EXPECT_EQ(JumpsOver(c.route, c.others), c.jumps) << c.what;
}

TEST(WriteRoute, ABendThatIsTooShortForACurveStaysABend) {
    SampleDrawing sample;
    sample.AddLine(0.5, 0.5, 3, 3, 0.01, "#000000");
    Workshop workshop({});
    OpenDocument document(workshop, ReadPackage(WritePackage(sample.document)), "", false);
    Page& page = *document.model->pages.front();
    Shape& line = *page.shapes.front();
    const Point bend{3, 0.5};
    const std::vector<Point> points{{0.5, 0.5}, {2.9999, 0.5}, bend, {3, 0.5001}, {3, 3}};
    WriteRoute(document, page, line, Path(points, true), {});
    const std::vector<Point> drawn = RouteOf(document, page, line);
    EXPECT_TRUE(std::ranges::any_of(drawn, [&](Point point) { return Length(point - bend) < 0.001; }));
}

}  // namespace
}  // namespace norvelis::drawing
