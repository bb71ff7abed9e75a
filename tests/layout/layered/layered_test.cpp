#include "layout/layered/layered.h"
#include "layout/graph/graph.h"
#include "layout/place_and_route.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "layout/routing/drawing_rules.h"

namespace norvelis::layout {
namespace {

using testing::IsEmpty;

const Style flowchart = StyleOfCells(1, 0, 5, 0), organisation = StyleOfCells(1, 1, 3, 1),
            leftToRight = StyleOfCells(2, 1, 1, 2);
const Style kChoices[] = {flowchart, organisation, leftToRight};

Graph WithLines(int boxes, const std::vector<std::pair<int, int>>& lines) {
    Graph graph{std::vector<Box>(static_cast<std::size_t>(boxes), Box{2.1, 1.1}), {}};
    for (const auto& [from, to] : lines) graph.lines.push_back({from, to, 0.8, 0.2});
    return graph;
}

/// Whether both lines join a box that has so many that they may have a trunk.
bool MayShareTrunk(const Graph& graph, std::size_t a, std::size_t b) {
    constexpr int kLeastLines = 12;
    const auto joins = [](const Line& line, int box) { return line.from == box || line.to == box; };
    for (const int box : {graph.lines[a].from, graph.lines[a].to}) {
        if (!joins(graph.lines[b], box)) continue;
        if (std::count_if(graph.lines.begin(), graph.lines.end(),
                          [&](const Line& line) { return joins(line, box); }) >= kLeastLines)
            return true;
    }
    return false;
}

/// Pairs of lines without a common trunk that run on top of each other for a while or share a port.
int RunTogether(const Graph& graph, const Placement& placement) {
    struct Run {
        double at, lo, hi;
        std::size_t line;
        bool horizontal;
    };
    std::vector<Run> runs;
    for (std::size_t line = 0; line < placement.routes.size(); ++line) {
        const auto& points = placement.routes[line].points;
        for (std::size_t i = 1; i < points.size(); ++i) {
            const Point a = points[i - 1], b = points[i];
            if (a.y == b.y) runs.push_back({a.y, std::min(a.x, b.x), std::max(a.x, b.x), line, true});
            if (a.x == b.x) runs.push_back({a.x, std::min(a.y, b.y), std::max(a.y, b.y), line, false});
        }
    }
    int together = 0;
    for (const Run& a : runs)
        for (const Run& b : runs)
            together += a.line < b.line && a.horizontal == b.horizontal && std::abs(a.at - b.at) < 1e-6 &&
                        std::min(a.hi, b.hi) - std::max(a.lo, b.lo) > 1e-6 &&
                        !MayShareTrunk(graph, a.line, b.line);
    std::map<std::pair<double, double>, std::size_t> ports;
    for (std::size_t line = 0; line < placement.routes.size(); ++line) {
        for (const Point& end :
             {placement.routes[line].points.front(), placement.routes[line].points.back()}) {
            const auto [port, isNew] = ports.try_emplace({end.x, end.y}, line);
            together += !isNew && !MayShareTrunk(graph, port->second, line);
        }
    }
    return together;
}

/// Lines through labels that are not theirs, and labels off their line.
int Unreadable(const Graph& graph, const Placement& placement) {
    int count = 0;
    for (std::size_t label = 0; label < graph.lines.size(); ++label) {
        const Line& owner = graph.lines[label];
        if (owner.labelWidth <= 0) continue;
        const Rect rect =
            RectAround(placement.routes[label].label, owner.labelWidth, owner.labelHeight).Grown(-1e-6);
        for (std::size_t line = 0; line < graph.lines.size(); ++line) {
            const std::vector<Point> path = Drawn(placement.routes[line]);
            bool hits = false;
            for (std::size_t i = 1; i < path.size(); ++i) hits |= SegmentHits(path[i - 1], path[i], rect);
            count += hits != (line == label);
        }
    }
    return count;
}

TEST(Layered, RulesHoldForSchemasOfManySeeds) {
    for (std::uint64_t seed = 1; seed <= 12; ++seed) {
        const int records = std::vector{2, 12, 30, 60, 90, 140}[seed % 6];
        const Graph graph = SchemaLike(records, 1.2 + 0.1 * static_cast<double>(seed % 8), seed);
        for (const Style& style : kChoices) {
            const Placement placement = PlaceAndRoute(graph, style);
            const auto trace = testing::Message() << "seed " << seed << ", " << NameOf(style);
            EXPECT_THAT(BrokenRules(graph, placement), IsEmpty()) << trace;
            EXPECT_EQ(Unreadable(graph, placement), 0) << trace;
            if (style.routeStyle == organisation.routeStyle) continue;
            EXPECT_EQ(RunTogether(graph, placement), 0) << trace;
        }
    }
}

TEST(Layered, RulesHoldForGraphsThatNobodyDraws) {
    Graph star = WithLines(301, {}), members = star, complete = WithLines(40, {}), pair = WithLines(2, {}),
          loops = WithLines(3, {}), chain = WithLines(400, {}), sizes = SchemaLike(60, 1.4, 9);
    for (int i = 1; i <= 300; ++i) star.lines.push_back({0, i, 0.9, 0.2});
    for (int i = 1; i <= 300; ++i) members.lines.push_back({i, 0, 0.9, 0.2});
    for (int i = 0; i < 40; ++i)
        for (int k = 0; k < i; ++k) complete.lines.push_back({k, i, 0.9, 0.2});
    for (int i = 0; i < 300; ++i) pair.lines.push_back({i % 2, 1 - i % 2, 0.9, 0.2});
    for (int i = 0; i < 40; ++i) loops.lines.push_back({i % 3, i % 2 == 0 ? i % 3 : (i + 1) % 3, 1.1, 0.2});
    for (int i = 1; i < 400; ++i) chain.lines.push_back({i - 1, i, 0.9, 0.2});
    for (std::size_t i = 0; i < sizes.boxes.size(); i += 5)
        sizes.boxes[i] = {0.2 + 0.5 * static_cast<double>(i), 12 - 0.2 * static_cast<double>(i)};
    const struct {
        const char* name;
        Graph graph;
    } cases[] = {{"one box", WithLines(1, {})},
                 {"no lines", WithLines(1000, {})},
                 {"one owner", star},
                 {"one member", members},
                 {"complete", complete},
                 {"pair", pair},
                 {"loops", loops},
                 {"chain", chain},
                 {"sizes", sizes}};
    for (const auto& [name, graph] : cases)
        for (const Style& style : kChoices)
            EXPECT_THAT(BrokenRules(graph, PlaceAndRoute(graph, style)), IsEmpty())
                << name << ", " << NameOf(style);
    EXPECT_TRUE(PlaceAndRoute({}, flowchart).centers.empty());
}

TEST(Layered, OwnersAreAboveOrLeftOfTheirMembers) {
    Graph graph = SchemaLike(80, 1.6, 21);
    for (Line& line : graph.lines)
        if (line.from > line.to) std::swap(line.from, line.to);
    std::erase_if(graph.lines, [](const Line& line) { return line.from == line.to; });
    for (const Style& style : kChoices) {
        const Placement placement = PlaceAndRoute(graph, style);
        for (const Line& line : graph.lines) {
            const Point owner = placement.centers[static_cast<std::size_t>(line.from)],
                        member = placement.centers[static_cast<std::size_t>(line.to)];
            EXPECT_TRUE(style.placeStyle == PlaceStyle::TopToBottom ? owner.y > member.y
                                                                    : owner.x < member.x);
        }
    }
}

TEST(Layered, KeepsTheGapsOfTheStyle) {
    const Graph graph = SchemaLike(60, 1.5, 4);
    Style style = flowchart;
    style.boxGapX = 0.8;
    style.boxGapY = 1.2;
    const Placement placement = PlaceAndRoute(graph, style);
    for (std::size_t i = 0; i < graph.boxes.size(); ++i) {
        const Rect box = RectAround(placement.centers[i], graph.boxes[i].width + 2 * style.boxGapX - 1e-6,
                                    graph.boxes[i].height + 2 * style.boxGapY - 1e-6);
        for (std::size_t k = 0; k < graph.boxes.size(); ++k)
            EXPECT_TRUE(i == k || !Overlap(box, RectAround(placement.centers[k], graph.boxes[k].width,
                                                           graph.boxes[k].height)));
    }
}

TEST(Layered, APlainChainIsStraightAndSetsOfOnePairRunSideBySide) {
    const Graph graph = WithLines(3, {{0, 1}, {1, 2}, {1, 2}, {2, 1}});
    for (const Style& style : {flowchart, leftToRight}) {
        const Placement placement = PlaceAndRoute(graph, style);
        for (const Route& route : placement.routes) EXPECT_EQ(route.points.size(), 2u);
        EXPECT_EQ(RunTogether(graph, placement), 0);
    }
}

TEST(Layered, LinesOfOneOwnerShareATrunkInAnOrganisationChart) {
    const Graph graph = WithLines(5, {{0, 1}, {0, 2}, {0, 3}, {0, 4}});
    const Placement placement = PlaceAndRoute(graph, organisation);
    std::map<double, int> bars;
    for (const Route& route : placement.routes) {
        EXPECT_EQ(route.points.front(), placement.routes[0].points.front());
        EXPECT_DOUBLE_EQ(route.points.front().x, placement.centers[0].x);
        if (route.points.size() > 2) ++bars[route.points[1].y];
    }
    EXPECT_EQ(bars.size(), 1u);
}

TEST(Layered, LinesAreHorizontalOrVerticalAndRoundedWhereTheStyleAsksForIt) {
    const Graph graph = SchemaLike(40, 1.5, 8);
    for (const Style& style : kChoices) {
        for (const Route& route : PlaceAndRoute(graph, style).routes) {
            EXPECT_EQ(route.curved, style.IsCurved() && route.points.size() > 2);
            for (std::size_t i = 1; i < route.points.size(); ++i)
                EXPECT_TRUE(route.points[i].x == route.points[i - 1].x ||
                            route.points[i].y == route.points[i - 1].y);
        }
    }
}

TEST(Layered, EqualInputGivesEqualDrawings) {
    const Graph graph = SchemaLike(90, 1.6, 17);
    for (const Style& style : kChoices) ExpectEqual(PlaceAndRoute(graph, style), PlaceAndRoute(graph, style));
}

}  // namespace
}  // namespace norvelis::layout
