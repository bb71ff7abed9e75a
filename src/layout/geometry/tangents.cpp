#include "layout/geometry/tangents.h"

#include <cstddef>

namespace norvelis::layout {

namespace {

using Path = std::vector<Point>;

constexpr int kMostDepth = 3;
constexpr std::size_t kMostPaths = 4;

void KeepShortest(std::vector<Path>& paths) {
    std::stable_sort(paths.begin(), paths.end(),
                     [](const Path& a, const Path& b) { return LengthOf(a) < LengthOf(b); });
    if (paths.size() > kMostPaths) paths.resize(kMostPaths);
}

class TautSearch {
  public:
    TautSearch(const std::vector<Rect>& boxes, const Obstacles& obstacles, int from, int to, double clearance)
        : boxes_(boxes), obstacles_(obstacles), from_(from), to_(to), clearance_(clearance) {}

    std::vector<Path> Connect(Point a, Point b, int depth) const {
        const int blocker = FirstBlocker(a, b);
        if (blocker < 0) return {{a, b}};
        std::vector<Path> paths;
        if (depth == 0) return paths;
        for (const double side : {1.0, -1.0}) {
            const Path chain =
                AroundRect(a, b, boxes_[static_cast<std::size_t>(blocker)].Grown(clearance_), side);
            if (!chain.empty()) Follow(chain, depth - 1, paths);
        }
        KeepShortest(paths);
        return paths;
    }

  private:
    /// All paths along the chain, its segments connected in turn.
    void Follow(const Path& chain, int depth, std::vector<Path>& paths) const {
        std::vector<Path> partial{{chain.front()}};
        for (std::size_t i = 1; i < chain.size() && !partial.empty(); ++i) {
            std::vector<Path> longer;
            for (const Path& next : Connect(chain[i - 1], chain[i], depth)) {
                for (const Path& path : partial) {
                    longer.push_back(path);
                    longer.back().insert(longer.back().end(), next.begin() + 1, next.end());
                }
            }
            KeepShortest(longer);
            partial = std::move(longer);
        }
        paths.insert(paths.end(), partial.begin(), partial.end());
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
                if (!ClipSegment(from, to, boxes_[static_cast<std::size_t>(i)].Grown(clearance_ * 0.5),
                                 enters, leaves))
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

std::vector<std::vector<Point>> TautPaths(const std::vector<Rect>& boxes, const Obstacles& obstacles,
                                          int from, int to, double clearance) {
    return TautSearch(boxes, obstacles, from, to, clearance)
        .Connect(boxes[static_cast<std::size_t>(from)].Center(), boxes[static_cast<std::size_t>(to)].Center(),
                 kMostDepth);
}

}  // namespace norvelis::layout
