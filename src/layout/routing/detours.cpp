#include "layout/routing/detours.h"
#include "layout/graph/graph.h"

#include <cstddef>
#include <optional>

#include "layout/geometry/obstacles.h"

namespace norvelis::layout {

namespace {

constexpr double kMargin = 0.06;
constexpr double kTouch = 1e-6;

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

class Leader {
  public:
    Leader(const std::vector<Line>& lines, const std::vector<Rect>& boxes, const std::vector<Point>& labels);
    void Lead(std::vector<Point>& path, int line) const;

  private:
    std::optional<int> LabelOn(Point a, Point b, int line) const;
    bool IsFree(const std::vector<Point>& chain, int line) const;
    bool KeepsLabel(const std::vector<Point>& path, int line) const;

    const std::vector<Line>& lines_;
    Obstacles boxes_;
    std::vector<Rect> labels_;
    SpatialIndex labelsNear_;
};

Leader::Leader(const std::vector<Line>& lines, const std::vector<Rect>& boxes,
               const std::vector<Point>& labels)
    : lines_(lines), boxes_(boxes), labelsNear_(BoundsOf(boxes), 1.0) {
    for (std::size_t i = 0; i < lines.size(); ++i) {
        labels_.push_back(RectAround(labels[i], lines[i].labelWidth, lines[i].labelHeight));
        if (lines[i].labelWidth > 0) labelsNear_.Add(labels_.back(), static_cast<int>(i));
    }
}

std::optional<int> Leader::LabelOn(Point a, Point b, int line) const {
    std::optional<int> found;
    labelsNear_.Near(RectOf(a, b), [&](int label) {
        if (label != line && SegmentHits(a, b, labels_[At(label)])) found = label;
        return !found;
    });
    return found;
}

bool Leader::IsFree(const std::vector<Point>& chain, int line) const {
    for (std::size_t i = 1; i < chain.size(); ++i) {
        const Point a = chain[i - 1], b = chain[i];
        if (boxes_.Bar(a, b, -kTouch, -1, -1)) return false;
        if (boxes_.Bar(a, b, kMargin / 2, lines_[At(line)].from, lines_[At(line)].to)) return false;
        if (LabelOn(a, b, line)) return false;
    }
    return true;
}

bool Leader::KeepsLabel(const std::vector<Point>& path, int line) const {
    const Rect core = labels_[At(line)].Grown(-0.25 * lines_[At(line)].labelHeight);
    for (std::size_t i = 1; i < path.size(); ++i)
        if (SegmentHits(path[i - 1], path[i], core)) return true;
    return false;
}

void Leader::Lead(std::vector<Point>& path, int line) const {
    const bool hasLabel = KeepsLabel(path, line);
    for (std::size_t i = 1; i < path.size(); ++i) {
        const std::optional<int> label = LabelOn(path[i - 1], path[i], line);
        if (!label) continue;
        std::vector<std::vector<Point>> chains;
        for (const double side : {1.0, -1.0}) {
            std::vector<Point> chain =
                AroundRect(path[i - 1], path[i], labels_[At(*label)].Grown(kMargin), side);
            if (!chain.empty() && IsFree(chain, line)) chains.push_back(std::move(chain));
        }
        std::sort(chains.begin(), chains.end(),
                  [](const auto& x, const auto& y) { return LengthOf(x) < LengthOf(y); });
        for (const auto& chain : chains) {
            std::vector<Point> led(path.begin(), path.begin() + static_cast<std::ptrdiff_t>(i) - 1);
            led.insert(led.end(), chain.begin(), chain.end());
            led.insert(led.end(), path.begin() + static_cast<std::ptrdiff_t>(i) + 1, path.end());
            if (hasLabel && !KeepsLabel(led, line)) continue;
            path = std::move(led);
            i += chain.size() - 2;
            break;
        }
    }
}

}  // namespace

void LeadAroundLabels(std::vector<std::vector<Point>>& paths, const std::vector<Line>& lines,
                      const std::vector<Rect>& boxes, const std::vector<Point>& labels) {
    const Leader leader(lines, boxes, labels);
    for (std::size_t i = 0; i < paths.size(); ++i) leader.Lead(paths[i], static_cast<int>(i));
}

}  // namespace norvelis::layout
