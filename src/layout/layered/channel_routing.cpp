#include "layout/layered/channel_routing.h"
#include "layout/graph/graph.h"

#include <algorithm>

#include "layout/layered/channels.h"

namespace norvelis::layout {

namespace {

/// The page as rows and channels, from the top down.
struct Heights {
    std::vector<double> middle;      ///< Of each row.
    std::vector<double> firstTrack;  ///< Of the channel under each row.
    std::vector<double> spacing;     ///< Of its tracks.
};

class Router {
  public:
    Router(const Graph& graph, const Style& style, const std::vector<bool>& trunks, const Grid& grid,
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
            if (!grid_.paths[k].empty()) placement.routes[k] = PathOf(static_cast<int>(k));
        return placement;
    }

  private:
    struct Channel {
        std::vector<Jog> jogs;
        Tracks tracks;
    };

    double XAt(int line, std::size_t step) const {
        const auto& path = grid_.paths[line];
        if (step == 0) return ports_[line].upper;
        if (step + 1 == path.size()) return ports_[line].lower;
        return grid_.places[path[step]].x;
    }

    void AssignChannels() {
        channels_.resize(grid_.rows.size());
        slot_.resize(grid_.paths.size());
        for (std::size_t k = 0; k < grid_.paths.size(); ++k) {
            const auto& path = grid_.paths[k];
            const int line = static_cast<int>(k);
            for (std::size_t step = 0; step + 1 < path.size(); ++step) {
                Channel& channel = channels_[grid_.places[path[step]].row];
                const bool fromTrunk =
                    step == 0 && trunks_[path.front()] && graph_.lines[k].from == path.front();
                slot_[k].push_back(static_cast<int>(channel.jogs.size()));
                channel.jogs.push_back({XAt(line, step), XAt(line, step + 1), fromTrunk ? path.front() : -1});
            }
        }
        for (Channel& channel : channels_) channel.tracks = AssignTracks(channel.jogs, style_.lineGap);
    }

    /// Lines are closer in crowded channels, down to half their gap, and to a quarter where one box has
    /// more lines than anybody follows.
    double SpacingOf(int tracks) const {
        constexpr double kCrowd = 8, kThrong = 32;
        if (tracks <= kThrong) return style_.lineGap * std::clamp(kCrowd / std::max(1, tracks), 0.5, 1.0);
        return style_.lineGap * std::max(0.25, 0.5 * kThrong / tracks);
    }

    void StackRows() {
        const std::size_t rows = grid_.rows.size();
        std::vector<double> height(rows), under(rows);
        for (std::size_t r = 0; r < rows; ++r) {
            for (const int place : grid_.rows[r]) height[r] = std::max(height[r], grid_.places[place].height);
            heights_.spacing.push_back(SpacingOf(channels_[r].tracks.count));
            under[r] = 2 * style_.lineGap + heights_.spacing[r] * std::max(0, channels_[r].tracks.count - 1);
        }
        double y = 0, underBoxes = -style_.boxGapY;
        for (std::size_t r = 0; r < rows; ++r) {
            if (grid_.isLayer[r]) y = std::max(y, underBoxes + style_.boxGapY);
            heights_.middle.push_back(y + height[r] / 2);
            heights_.firstTrack.push_back(y + height[r] + style_.lineGap);
            y += height[r];
            if (grid_.isLayer[r]) underBoxes = y;
            y += under[r];
        }
    }

    const Detour* DetourOf(int row, int jog) const {
        const auto& detours = channels_[row].tracks.detours;
        const auto at = std::lower_bound(detours.begin(), detours.end(), jog,
                                         [](const Detour& detour, int j) { return detour.jog < j; });
        return at != detours.end() && at->jog == jog ? &*at : nullptr;
    }

    layout::Route PathOf(int line) const {
        const auto& path = grid_.paths[line];
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
        add({ports_[line].upper, border(path.front(), 1)});
        for (std::size_t step = 0; step + 1 < path.size(); ++step) {
            const int row = grid_.places[path[step]].row;
            const int track = channels_[row].tracks.track[slot_[line][step]];
            if (track < 0) continue;
            const auto yOf = [&](int t) { return heights_.firstTrack[row] + heights_.spacing[row] * t; };
            add({XAt(line, step), yOf(track)});
            if (const Detour* detour = DetourOf(row, slot_[line][step])) {
                add({detour->x, yOf(track)});
                add({detour->x, yOf(detour->track)});
                add({XAt(line, step + 1), yOf(detour->track)});
            } else {
                add({XAt(line, step + 1), yOf(track)});
            }
        }
        add({ports_[line].lower, border(path.back(), -1)});
        route.label = {(route.points[0].x + route.points[1].x) / 2,
                       (route.points[0].y + route.points[1].y) / 2};
        for (const int place : path)
            if (grid_.places[place].label)
                route.label = {grid_.places[place].x, heights_.middle[grid_.places[place].row]};
        if (graph_.lines[line].from != path.front()) std::reverse(route.points.begin(), route.points.end());
        return route;
    }

    const Graph& graph_;
    const Style& style_;
    const std::vector<bool>& trunks_;
    const Grid& grid_;
    const std::vector<Ports>& ports_;
    std::vector<Channel> channels_;
    std::vector<std::vector<int>> slot_;  ///< For each line, its jogs' numbers in the channels it passes.
    Heights heights_;
};

}  // namespace

Placement RouteThroughChannels(const Graph& graph, const Style& style, const std::vector<bool>& trunks,
                               const Grid& grid, const std::vector<Ports>& ports) {
    return Router(graph, style, trunks, grid, ports).Route();
}

}  // namespace norvelis::layout
