#include "layout/rings/former_centers.h"

#include <cstddef>
#include <limits>

#include "layout/geometry/obstacles.h"
#include "layout/graph/reach.h"
#include "layout/rings/gaps.h"
#include "layout/spacing/spacing.h"

namespace norvelis::layout {

namespace {

class Placer {
  public:
    Placer(const Graph& graph, const Style& style, const FormerPlaces& former)
        : graph_(graph),
          gaps_(LeastGaps(graph, style)),
          centers_(former.centers),
          neighbours_(NeighboursOf(graph)),
          placed_(BoundsOf(KnownBoxes()), kSquare) {
        for (std::size_t i = 0; i < centers_.size(); ++i)
            if (centers_[i]) placed_.Add(At(i, *centers_[i]), static_cast<int>(i));
    }

    std::vector<Rect> Place() {
        for (int next = Next(); next >= 0; next = Next()) {
            const auto box = static_cast<std::size_t>(next);
            centers_[box] = FreePlaceFor(next);
            placed_.Add(At(box, *centers_[box]), next);
        }
        std::vector<Rect> boxes;
        for (std::size_t i = 0; i < centers_.size(); ++i) boxes.push_back(At(i, *centers_[i]));
        return boxes;
    }

  private:
    static constexpr double kSquare = 4;  // inches

    std::vector<Rect> KnownBoxes() const {
        std::vector<Rect> boxes;
        for (std::size_t i = 0; i < centers_.size(); ++i)
            if (centers_[i]) boxes.push_back(At(i, *centers_[i]));
        return boxes;
    }

    Rect At(std::size_t box, Point center) const {
        return RectAround(center, graph_.boxes[box].width, graph_.boxes[box].height);
    }

    /// The box without a place that has most lines to boxes with one; -1 when all have theirs.
    int Next() const {
        int next = -1;
        std::ptrdiff_t most = -1;
        for (std::size_t i = 0; i < centers_.size(); ++i) {
            if (centers_[i]) continue;
            const auto lines = std::count_if(neighbours_[i].begin(), neighbours_[i].end(), [&](int other) {
                return centers_[static_cast<std::size_t>(other)].has_value();
            });
            if (lines <= most) continue;
            most = lines;
            next = static_cast<int>(i);
        }
        return next;
    }

    /// Looks on a lattice around the middle of the box's neighbours, farther and farther out.
    Point FreePlaceFor(int box) const {
        const auto i = static_cast<std::size_t>(box);
        Point sum;
        int known = 0;
        for (const int other : neighbours_[i]) {
            const auto& center = centers_[static_cast<std::size_t>(other)];
            if (!center) continue;
            sum = sum + *center;
            ++known;
        }
        const Point middle = known > 0 ? sum * (1.0 / known) : sum;
        const Point step{(graph_.boxes[i].width + gaps_.x) / 4, (graph_.boxes[i].height + gaps_.y) / 4};
        for (int ring = 0;; ++ring) {
            double least = std::numeric_limits<double>::infinity();
            Point best;
            for (int x = -ring; x <= ring; ++x) {
                for (int y = -ring; y <= ring; y += x == -ring || x == ring ? 1 : std::max(1, 2 * ring)) {
                    const Point off{x * step.x, y * step.y};
                    if (Length(off) >= least || !IsFree(At(i, middle + off))) continue;
                    least = Length(off);
                    best = middle + off;
                }
            }
            if (least < std::numeric_limits<double>::infinity()) return best;
        }
    }

    bool IsFree(const Rect& place) const {
        const Rect space{place.x0 - gaps_.x, place.y0 - gaps_.y, place.x1 + gaps_.x, place.y1 + gaps_.y};
        bool free = true;
        placed_.Near(space, [&](int other) {
            const auto i = static_cast<std::size_t>(other);
            free = !Overlap(At(i, *centers_[i]), space);
            return free;
        });
        return free;
    }

    const Graph& graph_;
    Gaps gaps_;
    std::vector<std::optional<Point>> centers_;
    Neighbours neighbours_;
    SpatialIndex placed_;
};

}  // namespace

std::vector<Point> CentersAsBefore(const Graph& graph, const Style& style, const FormerPlaces& former) {
    std::vector<Rect> boxes = Placer(graph, style, former).Place();
    SpreadBoxes(boxes, style.boxGapX, style.boxGapY);
    std::vector<Point> centers;
    for (const Rect& box : boxes) centers.push_back(box.Center());
    return centers;
}

}  // namespace norvelis::layout
