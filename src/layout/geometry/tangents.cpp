#include "layout/geometry/tangents.h"

#include <cstddef>

namespace norvelis::layout {

namespace {

using Way = std::vector<Point>;

constexpr int mostDepth = 3;
constexpr std::size_t mostWays = 4;

void KeepShortest(std::vector<Way>& ways) {
    std::stable_sort(ways.begin(), ways.end(),
                     [](const Way& a, const Way& b) { return LengthOf(a) < LengthOf(b); });
    if (ways.size() > mostWays) ways.resize(mostWays);
}

class TautSearch {
  public:
    TautSearch(const std::vector<Rect>& boxes, const Obstacles& obstacles, int from, int to, double clearance)
        : boxes_(boxes), obstacles_(obstacles), from_(from), to_(to), clearance_(clearance) {}

    std::vector<Way> Connect(Point a, Point b, int depth) const {
        const int blocker = FirstBlocker(a, b);
        if (blocker < 0) return {{a, b}};
        std::vector<Way> ways;
        if (depth == 0) return ways;
        for (const double side : {1.0, -1.0}) {
            const Way chain =
                AroundRect(a, b, boxes_[static_cast<std::size_t>(blocker)].Grown(clearance_), side);
            if (!chain.empty()) Follow(chain, depth - 1, ways);
        }
        KeepShortest(ways);
        return ways;
    }

  private:
    /// All ways along the chain, its pieces connected in turn.
    void Follow(const Way& chain, int depth, std::vector<Way>& ways) const {
        std::vector<Way> partial{{chain.front()}};
        for (std::size_t i = 1; i < chain.size() && !partial.empty(); ++i) {
            std::vector<Way> longer;
            for (const Way& next : Connect(chain[i - 1], chain[i], depth)) {
                for (const Way& way : partial) {
                    longer.push_back(way);
                    longer.back().insert(longer.back().end(), next.begin() + 1, next.end());
                }
            }
            KeepShortest(longer);
            partial = std::move(longer);
        }
        ways.insert(ways.end(), partial.begin(), partial.end());
    }

    int FirstBlocker(Point a, Point b) const {
        int first = -1;
        double nearest = 2;
        const int parts = 1 + static_cast<int>(Length(b - a) / 8);
        for (int k = 0; k < parts && first < 0; ++k) {
            const Point from = Between(a, b, static_cast<double>(k) / parts);
            const Point to = Between(a, b, static_cast<double>(k + 1) / parts);
            obstacles_.Near(RectOf(from, to).Grown(clearance_), [&](int i) {
                double enters, leaves;
                if (i == from_ || i == to_) return true;
                if (!ClipPiece(from, to, boxes_[static_cast<std::size_t>(i)].Grown(clearance_ * 0.5), enters,
                               leaves))
                    return true;
                if (enters < nearest || (enters == nearest && i < first)) {
                    nearest = enters;
                    first = i;
                }
                return true;
            });
        }
        return first;
    }

    const std::vector<Rect>& boxes_;
    const Obstacles& obstacles_;
    int from_, to_;
    double clearance_;
};

}  // namespace

std::vector<std::vector<Point>> TautWays(const std::vector<Rect>& boxes, const Obstacles& obstacles, int from,
                                         int to, double clearance) {
    return TautSearch(boxes, obstacles, from, to, clearance)
        .Connect(boxes[static_cast<std::size_t>(from)].Center(), boxes[static_cast<std::size_t>(to)].Center(),
                 mostDepth);
}

}  // namespace norvelis::layout
