#include "layout/routing/curves.h"

#include <cstddef>

#include "layout/geometry/obstacles.h"

namespace norvelis::layout {

namespace {

class Fitter {
  public:
    Fitter(const std::vector<Rect>& boxes, const std::vector<Rect>& labels, double radius)
        : obstacles_(boxes), labels_(labels), labelsNear_(BoundsOf(boxes), 1.0), radius_(radius) {
        for (std::size_t i = 0; i < labels.size(); ++i) labelsNear_.Add(labels[i], static_cast<int>(i));
    }

    std::vector<Point> Fit(const std::vector<Point>& path) const {
        if (path.size() < 3) return path;
        std::vector<Point> fitted{path.front()};
        for (std::size_t i = 1; i + 1 < path.size(); ++i) {
            const Point corner = path[i];
            const Point in = path[i - 1] - corner, out = path[i + 1] - corner;
            const double inLength = Length(in), outLength = Length(out);
            if (inLength <= 0 || outLength <= 0) continue;
            // The curve spans the middles of the corner's segments, so the segments are twice as long as it
            // reaches; two corners share the segment between them.
            double size = 2 * radius_;
            const auto before = [&] { return corner + in * (std::min(size, inLength / 2) / inLength); };
            const auto after = [&] { return corner + out * (std::min(size, outLength / 2) / outLength); };
            while (size > 1e-4 &&
                   IsCovered(Between(corner, before(), 0.5), corner, Between(corner, after(), 0.5)))
                size /= 2;
            if (!(before() == fitted.back())) fitted.push_back(before());
            fitted.push_back(corner);
            fitted.push_back(after());
        }
        fitted.push_back(path.back());
        return fitted;
    }

  private:
    bool IsCovered(Point a, Point b, Point c) const {
        if (obstacles_.Cover(a, b, c)) return true;
        bool covered = false;
        const Rect bounds{std::min({a.x, b.x, c.x}), std::min({a.y, b.y, c.y}), std::max({a.x, b.x, c.x}),
                          std::max({a.y, b.y, c.y})};
        labelsNear_.Near(bounds, [&](int i) {
            covered = TriangleHits(a, b, c, labels_[static_cast<std::size_t>(i)]);
            return !covered;
        });
        return covered;
    }

    Obstacles obstacles_;
    const std::vector<Rect>& labels_;
    SpatialIndex labelsNear_;
    double radius_;
};

}  // namespace

void FitCurves(std::vector<std::vector<Point>>& paths, const std::vector<Rect>& boxes,
               const std::vector<Rect>& labels, double radius) {
    const Fitter fitter(boxes, labels, radius);
    for (auto& path : paths) path = fitter.Fit(path);
}

}  // namespace norvelis::layout
