#include "drawing/layout/layered.h"

#include <algorithm>
#include <cmath>

#include "drawing/layout/channels.h"
#include "drawing/layout/coordinates.h"
#include "drawing/layout/crossing_reduction.h"
#include "drawing/layout/cycle_removal.h"
#include "drawing/layout/grid.h"
#include "drawing/layout/layers.h"
#include "drawing/layout/ranking.h"
#include "drawing/routing/route_style.h"

namespace norvelis::layout {

namespace {

constexpr int leftToRight = 2;

/// The phases work with layers from top to bottom, y growing downwards; for layers from left to right the
/// graph is turned over its diagonal before and back after.
Graph Turned(Graph graph) {
    for (Box& box : graph.boxes) std::swap(box.width, box.height);
    for (Line& line : graph.lines) std::swap(line.labelWidth, line.labelHeight);
    return graph;
}

/// The page as rows and channels, from the top down.
struct Heights {
    std::vector<double> middle;      ///< Of each row.
    std::vector<double> firstTrack;  ///< Of the channel under each row.
    std::vector<double> spacing;     ///< Of its tracks.
};

class Router {
  public:
    Router(const Graph& graph, const Style& style, bool trunks, const Grid& grid,
           const std::vector<Ports>& ports)
        : graph_(graph), style_(style), trunks_(trunks), grid_(grid), ports_(ports) {}

    Placement Route() {
        AssignChannels();
        StackRows();
        Placement placement;
        for (std::size_t i = 0; i < graph_.boxes.size(); ++i)
            placement.centers.push_back({grid_.places[i].x, heights_.middle[grid_.places[i].row]});
        placement.routes.resize(graph_.lines.size());
        for (std::size_t k = 0; k < graph_.lines.size(); ++k)
            if (!grid_.ways[k].empty()) placement.routes[k] = WayOf(static_cast<int>(k));
        RouteLoops(placement);
        return placement;
    }

  private:
    struct Channel {
        std::vector<Jog> jogs;
        Tracks tracks;
    };

    double XAt(int line, std::size_t step) const {
        const auto& way = grid_.ways[line];
        if (step == 0) return ports_[line].upper;
        if (step + 1 == way.size()) return ports_[line].lower;
        return grid_.places[way[step]].x;
    }

    void AssignChannels() {
        channels_.resize(grid_.rows.size());
        slot_.resize(grid_.ways.size());
        for (std::size_t k = 0; k < grid_.ways.size(); ++k) {
            const auto& way = grid_.ways[k];
            const int line = static_cast<int>(k);
            for (std::size_t step = 0; step + 1 < way.size(); ++step) {
                Channel& channel = channels_[grid_.places[way[step]].row];
                const bool fromTrunk = trunks_ && step == 0 && graph_.lines[k].from == way.front();
                slot_[k].push_back(static_cast<int>(channel.jogs.size()));
                channel.jogs.push_back({XAt(line, step), XAt(line, step + 1), fromTrunk ? way.front() : -1});
            }
        }
        for (Channel& channel : channels_) channel.tracks = AssignTracks(channel.jogs, style_.lineGap);
    }

    /// Lines stand closer in crowded channels, down to half their gap.
    double SpacingOf(int tracks) const {
        constexpr double crowd = 8;
        return style_.lineGap * std::clamp(crowd / std::max(1, tracks), 0.5, 1.0);
    }

    void StackRows() {
        const std::size_t rows = grid_.rows.size();
        std::vector<double> height(rows), under(rows);
        for (std::size_t r = 0; r < rows; ++r) {
            for (const int place : grid_.rows[r]) height[r] = std::max(height[r], grid_.places[place].height);
            heights_.spacing.push_back(SpacingOf(channels_[r].tracks.count));
            under[r] = 2 * style_.lineGap + heights_.spacing[r] * std::max(0, channels_[r].tracks.count - 1);
        }
        double y = 0;
        for (std::size_t r = 0; r < rows; ++r) {
            heights_.middle.push_back(y + height[r] / 2);
            heights_.firstTrack.push_back(y + height[r] + style_.lineGap);
            y += height[r] + under[r];
            if (r % 2 == 1) y += std::max(0.0, style_.boxGapY - under[r - 1] - height[r] - under[r]);
        }
    }

    layout::Route WayOf(int line) const {
        const auto& way = grid_.ways[line];
        layout::Route route;
        const auto add = [&](Point point) {
            auto& points = route.points;
            if (!points.empty() && points.back() == point) return;
            const std::size_t n = points.size();
            const bool straight =
                n > 1 && ((points[n - 2].x == points[n - 1].x && points[n - 1].x == point.x) ||
                          (points[n - 2].y == points[n - 1].y && points[n - 1].y == point.y));
            if (straight) points.pop_back();
            points.push_back(point);
        };
        const auto border = [&](int box, double side) {
            return heights_.middle[grid_.places[box].row] + side * graph_.boxes[box].height / 2;
        };
        add({ports_[line].upper, border(way.front(), 1)});
        for (std::size_t step = 0; step + 1 < way.size(); ++step) {
            const int row = grid_.places[way[step]].row;
            const int track = channels_[row].tracks.track[slot_[line][step]];
            if (track < 0) continue;
            const double y = heights_.firstTrack[row] + heights_.spacing[row] * track;
            add({XAt(line, step), y});
            add({XAt(line, step + 1), y});
        }
        add({ports_[line].lower, border(way.back(), -1)});
        route.label = {(route.points[0].x + route.points[1].x) / 2,
                       (route.points[0].y + route.points[1].y) / 2};
        for (const int place : way)
            if (grid_.places[place].label)
                route.label = {grid_.places[place].x, heights_.middle[grid_.places[place].row]};
        if (graph_.lines[line].from != way.front()) std::reverse(route.points.begin(), route.points.end());
        return route;
    }

    /// Lines from a box to itself leave and come back on its right side, one outside the other.
    void RouteLoops(Placement& placement) const {
        std::vector<std::vector<int>> loops(graph_.boxes.size());
        for (std::size_t k = 0; k < graph_.lines.size(); ++k)
            if (graph_.lines[k].from == graph_.lines[k].to)
                loops[graph_.lines[k].from].push_back(static_cast<int>(k));
        for (std::size_t i = 0; i < loops.size(); ++i) {
            const Point center = placement.centers[i];
            const Box& box = graph_.boxes[i];
            const double right = center.x + box.width / 2;
            double x = right;
            for (std::size_t n = 0; n < loops[i].size(); ++n) {
                const double room = std::max(style_.lineGap, graph_.lines[loops[i][n]].labelWidth);
                const double middle = x + style_.lineGap + room / 2;
                x += style_.lineGap + room;
                const double reach =
                    box.height / 2 * static_cast<double>(n + 1) / static_cast<double>(loops[i].size() + 1);
                layout::Route& route = placement.routes[loops[i][n]];
                route.points = {{right, center.y - reach},
                                {middle, center.y - reach},
                                {middle, center.y + reach},
                                {right, center.y + reach}};
                route.label = {middle, center.y};
            }
        }
    }

    const Graph& graph_;
    const Style& style_;
    const bool trunks_;
    const Grid& grid_;
    const std::vector<Ports>& ports_;
    std::vector<Channel> channels_;
    std::vector<std::vector<int>> slot_;  ///< For each line, its jogs' numbers in the channels it passes.
    Heights heights_;
};

/// Extra points keep the rounding of corners within the line gap of them, off everything else.
void Round(Route& route, double gap) {
    std::vector<Point> points;
    for (std::size_t i = 0; i + 1 < route.points.size(); ++i) {
        const Point a = route.points[i], b = route.points[i + 1];
        const double length = std::hypot(b.x - a.x, b.y - a.y);
        const auto at = [&](double distance) {
            return Point{a.x + (b.x - a.x) * distance / length, a.y + (b.y - a.y) * distance / length};
        };
        points.push_back(a);
        if (length > 4 * gap) {
            points.push_back(at(2 * gap));
            points.push_back(at(length - 2 * gap));
        } else if (length > 2 * gap) {
            points.push_back(at(length / 2));
        }
    }
    points.push_back(route.points.back());
    route.points = std::move(points);
    route.curved = true;
}

Placement PlaceTopDown(const Graph& graph, const Style& style) {
    const bool trunks = RuleOf(style.routeStyle).family == RouteFamily::Tree;
    const std::vector<Span> spans = SpansOf(graph, LinesAgainstTheFlow(graph));
    Layers layers = MakeLayers(graph, RanksOf(graph, spans));
    ReduceCrossings(layers);
    Grid grid = MakeGrid(graph, layers, style);
    const std::vector<Ports> ports = AssignCoordinates(graph, style, trunks, grid);
    return Router(graph, style, trunks, grid, ports).Route();
}

}  // namespace

Placement PlaceLayered(const Graph& graph, const Style& style) {
    const bool turned = style.placeStyle == leftToRight;
    Style turnedStyle = style;
    if (turned) std::swap(turnedStyle.boxGapX, turnedStyle.boxGapY);
    Placement placement = turned ? PlaceTopDown(Turned(graph), turnedStyle) : PlaceTopDown(graph, style);
    const auto toPage = [&](Point& point) {
        point = turned ? Point{point.y, -point.x} : Point{point.x, -point.y};
    };
    for (Point& center : placement.centers) toPage(center);
    for (Route& route : placement.routes) {
        for (Point& point : route.points) toPage(point);
        toPage(route.label);
        if (style.lineRouteExt == 2 && route.points.size() > 2) Round(route, style.lineGap);
    }
    return placement;
}

}  // namespace norvelis::layout
