#include "layout/layered/straightening.h"

#include <algorithm>
#include <limits>

namespace norvelis::layout {

namespace {

class Straightener {
  public:
    Straightener(const Style& style, Grid& grid) : style_(style), grid_(grid), index_(grid.places.size()) {
        for (const auto& row : grid.rows)
            for (std::size_t i = 0; i < row.size(); ++i) index_[row[i]] = i;
    }

    /// Whether a run of the line was moved.
    bool Straighten(const std::vector<int>& path, const Reach& reach) {
        bool moved = false;
        const std::size_t first = 1, end = path.size() - 1;  // without the boxes
        for (std::size_t from = first, to; from < end; from = to) {
            for (to = from; to < end && XOf(path[to]) == XOf(path[from]);) ++to;
            const double x = XOf(path[from]);
            const double above =
                from == first ? std::clamp(x, reach.upperLeast, reach.upperMost) : XOf(path[from - 1]);
            const double below = to == end ? std::clamp(x, reach.lowerLeast, reach.lowerMost) : XOf(path[to]);
            if (above == x || below == x) {
                // One of its bends is not there: only a move that leaves none is worth it.
                const double other = above == x ? below : above;
                const bool isEnd = above == x ? from == first : to == end;
                const bool reaches = above == x ? other >= reach.upperLeast && other <= reach.upperMost
                                                : other >= reach.lowerLeast && other <= reach.lowerMost;
                if (other != x && isEnd && reaches) moved |= Move(path, from, to, other);
                continue;
            }
            moved |= Move(path, from, to, above) || Move(path, from, to, below);
        }
        return moved;
    }

  private:
    double XOf(int place) const { return grid_.places[place].x; }

    bool Move(const std::vector<int>& path, std::size_t from, std::size_t to, double x) {
        for (std::size_t i = from; i < to; ++i)
            if (!HasSpace(path[i], x)) return false;
        for (std::size_t i = from; i < to; ++i) grid_.places[path[i]].x = x;
        return true;
    }

    bool HasSpace(int place, double x) const {
        constexpr double kHair = 1e-9;
        const Place& at = grid_.places[place];
        const auto& row = grid_.rows[at.row];
        const std::size_t i = index_[place];
        if (i > 0) {
            const Place& left = grid_.places[row[i - 1]];
            if (x < left.x + LeastDistance(left, at, style_) - kHair) return false;
        }
        if (i + 1 == row.size()) return true;
        const Place& right = grid_.places[row[i + 1]];
        return x <= right.x - LeastDistance(at, right, style_) + kHair;
    }

    const Style& style_;
    Grid& grid_;
    std::vector<std::size_t> index_;  ///< For each place, where it is in its row.
};

}  // namespace

void StraightenLines(const Style& style, const std::vector<Reach>& reaches, Grid& grid) {
    constexpr int kMostRounds = 8;
    Straightener straightener(style, grid);
    bool moved = true;
    for (int round = 0; round < kMostRounds && moved; ++round) {
        moved = false;
        for (std::size_t line = 0; line < grid.paths.size(); ++line)
            if (!grid.paths[line].empty()) moved |= straightener.Straighten(grid.paths[line], reaches[line]);
    }
}

}  // namespace norvelis::layout
