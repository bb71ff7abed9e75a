#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "layout/former/match.h"
#include "layout/place_and_route.h"
#include "layout/routing/drawing_rules.h"

// Drawing again what was drawn before: what was there is found where it was.
namespace norvelis::layout {
namespace {

const Style kChoices[] = {StyleOfCells(1, 0, 5, 0),  StyleOfCells(3, 2, 2, 2), StyleOfCells(3, 3, 1, 1),
                          StyleOfCells(3, 3, 22, 2), StyleOfCells(1, 1, 3, 1), StyleOfCells(2, 1, 1, 2),
                          StyleOfCells(6, 2, 21, 2), StyleOfCells(6, 2, 0, 0)};

std::vector<int> AllNamed(std::size_t count) {
    std::vector<int> named;
    for (std::size_t i = 0; i < count; ++i) named.push_back(static_cast<int>(i));
    return named;
}

struct Redraw {
    Graph graph;
    std::vector<int> named;
    Placement placement;
};

/// With a new first box that two others own.
Redraw WithOneMore(const Graph& graph, const Placement& before, const Style& style) {
    Redraw redraw{graph, {-1}, {}};
    for (Line& line : redraw.graph.lines) ++line.from, ++line.to;
    redraw.graph.boxes.insert(redraw.graph.boxes.begin(), {2.05, 1.1});
    const Line near = redraw.graph.lines.back();
    for (const int owner : {near.from, near.to}) redraw.graph.lines.push_back({owner, 0, 0.9, 0.2});
    for (const int box : AllNamed(graph.boxes.size())) redraw.named.push_back(box);
    const Matches matches = MatchGraphs(redraw.graph, graph, redraw.named);
    redraw.placement = PlaceAndRoute(redraw.graph, style, PlacesOf(matches, before));
    return redraw;
}

/// Pairs of boxes of before that were beside each other, or one above the other, and are so the other way
/// round.
int ReversedPairs(const Redraw& redraw, const Placement& before) {
    constexpr double kInLine = 1;  // inches
    int reversed = 0;
    for (std::size_t i = 0; i < redraw.named.size(); ++i) {
        for (std::size_t k = 0; k < i; ++k) {
            if (redraw.named[i] < 0 || redraw.named[k] < 0) continue;
            const Point was = before.centers[static_cast<std::size_t>(redraw.named[i])] -
                              before.centers[static_cast<std::size_t>(redraw.named[k])];
            const Point is = redraw.placement.centers[i] - redraw.placement.centers[k];
            reversed += (std::abs(was.y) < kInLine && was.x * is.x < 0) ||
                        (std::abs(was.x) < kInLine && was.y * is.y < 0);
        }
    }
    return reversed;
}

TEST(Former, OneMoreBoxLeavesTheOthersInTheirOrder) {
    // A network, one with a hub of forty, a tree, and a star of leaves.
    const Graph graphs[] = {SchemaLike(30, 1.4, 3), SchemaLike(70, 1.2, 5), SchemaLike(40, 0.9, 7), [] {
                                Graph star = SchemaLike(61, 0.9, 1);
                                for (Line& line : star.lines) line.from = 0;
                                return star;
                            }()};
    for (const Graph& graph : graphs) {
        for (const Style& style : kChoices) {
            SCOPED_TRACE(NameOf(style) + ", boxes " + std::to_string(graph.boxes.size()));
            const Placement before = PlaceAndRoute(graph, style);
            const Redraw redraw = WithOneMore(graph, before, style);
            EXPECT_EQ(ReversedPairs(redraw, before), 0);
            EXPECT_EQ(BrokenRules(redraw.graph, redraw.placement), std::set<std::string>());
        }
    }
}

TEST(Former, RenamedBoxesAreKnownByTheirLines) {
    // 0 owns 1 and 2, 2 owns 3; in the second graph 2 and 3 have other names, and 4 is new.
    const Graph former{std::vector<Box>(4, Box{2, 1}), {{0, 1}, {0, 2}, {2, 3}}};
    const Graph graph{std::vector<Box>(5, Box{2, 1}), {{0, 4}, {2, 3}, {0, 2}, {0, 1}}};
    const Matches matches = MatchGraphs(graph, former, {0, 1, -1, -1, -1});
    EXPECT_EQ(matches.boxes, (std::vector<int>{0, 1, 2, 3, -1})) << "4 owns nothing, as 2 did";
    const Matches same = MatchGraphs(former, former, {0, 1, -1, -1});
    EXPECT_EQ(same.boxes, (std::vector<int>{0, 1, 2, 3})) << "one after the other";
    EXPECT_EQ(same.lines, (std::vector<int>{0, 1, 2}));
    const Matches other = MatchGraphs(former, former, {-1, -1, -1, -1});
    EXPECT_EQ(other.boxes, (std::vector<int>{-1, -1, -1, -1})) << "another schema of the same form";
}

TEST(Former, ADrawingOfWhichMuchChangedIsNotGoneBy) {
    const Placement before{std::vector<Point>(9), {}};
    const auto kept = [&](int known, std::size_t boxes) {
        Matches matches{std::vector<int>(boxes, -1), {}};
        for (int i = 0; i < known; ++i) matches.boxes[static_cast<std::size_t>(i)] = i;
        return !PlacesOf(matches, before).centers.empty();
    };
    EXPECT_TRUE(kept(9, 9));
    EXPECT_TRUE(kept(9, 12) && kept(6, 6)) << "three came, or went";
    EXPECT_FALSE(kept(9, 14) || kept(5, 5) || kept(7, 9));
}

TEST(Former, ADrawingStaysOnlyWhileItShowsWhatThereIsAndKeepsTheRules) {
    const Graph graph{{{2, 1}, {2, 1}, {2, 1}}, {{0, 1, 0.5, 0.2}, {0, 2, 0.5, 0.2}}};
    const Placement good{
        {{0, 5}, {-3, 0}, {3, 0}},
        {{{{-0.5, 4.5}, {-3, 0.5}}, false, {-2, 2}}, {{{0.5, 4.5}, {3, 0.5}}, false, {2, 2}}}};
    const Matches all{{0, 1, 2}, {0, 1}};
    const auto stays = [&](const Graph& now, const Matches& matches,
                           const std::function<void(Placement&)>& change) {
        Placement before = good;
        change(before);
        return CanStay(now, matches, graph, before);
    };
    const auto asItIs = [](Placement&) {};
    EXPECT_TRUE(stays(graph, all, asItIs));
    EXPECT_FALSE(stays(graph, {{0, 1, 2}, {0, -1}}, asItIs)) << "a new line";
    EXPECT_FALSE(stays({graph.boxes, {graph.lines[0]}}, {{0, 1, 2}, {0}}, asItIs)) << "a line that is gone";
    Graph wider = graph;
    wider.boxes[2].width = 2.5;
    EXPECT_FALSE(stays(wider, all, asItIs));
    Graph wordy = graph;
    wordy.lines[0].labelWidth = 9;
    EXPECT_FALSE(stays(wordy, all, asItIs)) << "its label covers the other one";
    EXPECT_FALSE(stays(graph, all, [](Placement& before) {
        before.centers[2] = {-2, 0};
    })) << "moved on another";
    EXPECT_FALSE(stays(graph, all, [](Placement& before) { before.routes[0].label = {0, 5}; }));
    EXPECT_FALSE(stays(graph, all, [](Placement& before) {
        before.routes[0].label = {-60, 2};
    })) << "far from its line";
    EXPECT_FALSE(stays(graph, all, [](Placement& before) {
        before.routes[0].points = {{-0.5, 4.5}, {4, 0}, {-2, 0}};
    })) << "through the third box";
    EXPECT_FALSE(stays(graph, all, [](Placement& before) { before.routes[1].points.clear(); }));
}

TEST(Former, ComponentsStayWhereTheyWere) {
    // Three chains, which grow and shrink; the least would be packed elsewhere.
    Graph graph{std::vector<Box>(12, Box{2, 1}), {}};
    for (const auto& [from, to] :
         {std::pair{0, 1}, {1, 2}, {2, 3}, {3, 4}, {5, 6}, {6, 7}, {7, 8}, {9, 10}, {10, 11}})
        graph.lines.push_back({from, to, 0.5, 0.2});
    const Style style = kChoices[0];
    Redraw redraw{graph, AllNamed(12), {}};
    const Placement before = PlaceAndRoute(graph, style);
    for (int i = 0; i < 3; ++i) {
        redraw.graph.boxes.push_back({2, 1});
        redraw.named.push_back(-1);
        redraw.graph.lines.push_back({i == 0 ? 11 : 11 + i, 12 + i, 0.5, 0.2});
    }
    const Matches matches = MatchGraphs(redraw.graph, graph, redraw.named);
    redraw.placement = PlaceAndRoute(redraw.graph, style, PlacesOf(matches, before));
    EXPECT_EQ(ReversedPairs(redraw, before), 0);
    EXPECT_EQ(BrokenRules(redraw.graph, redraw.placement), std::set<std::string>());
}

TEST(Former, PlacesThatNoLayoutWouldGiveBreakNoRule) {
    Random random(17);
    for (const int spread : {0, 3, 40}) {
        for (const Style& style : kChoices) {
            SCOPED_TRACE(NameOf(style) + ", spread " + std::to_string(spread));
            const Graph graph = SchemaLike(35, 1.5, 11);
            FormerPlaces places;
            for (std::size_t i = 0; i < graph.boxes.size(); ++i)
                places.centers.emplace_back(Point{random.Rnd() * spread, random.Rnd() * spread});
            places.routes.resize(graph.lines.size());
            const Placement placement = PlaceAndRoute(graph, style, places);
            EXPECT_EQ(BrokenRules(graph, placement), std::set<std::string>());
        }
    }
}

}  // namespace
}  // namespace norvelis::layout
