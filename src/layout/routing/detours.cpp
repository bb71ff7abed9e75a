#include "layout/routing/detours.h"
#include "layout/graph/graph.h"

#include <algorithm>
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
    Leader(std::vector<std::vector<Point>>& paths, const std::vector<Line>& lines,
           const std::vector<Rect>& boxes, const std::vector<Point>& labels);
    void Lead(int line);

  private:
    struct Segment {
        Point a, b;
        int line;
        bool isThere;
    };
    void Keep(int line);
    std::vector<int> LinesAcross(const std::vector<Point>& chain, int line) const;
    std::optional<int> LabelOn(Point a, Point b, int line) const;
    bool IsFree(const std::vector<Point>& chain, int line) const;
    bool KeepsLabel(const std::vector<Point>& path, int line) const;

    std::vector<std::vector<Point>>& paths_;
    const std::vector<Line>& lines_;
    Obstacles boxes_;
    std::vector<Rect> labels_;
    SpatialIndex labelsNear_, segmentsNear_;
    std::vector<Segment> segments_;
    std::vector<std::vector<std::size_t>> segmentsOf_;  ///< Of each line, as it is now.
};

Leader::Leader(std::vector<std::vector<Point>>& paths, const std::vector<Line>& lines,
               const std::vector<Rect>& boxes, const std::vector<Point>& labels)
    : paths_(paths),
      lines_(lines),
      boxes_(boxes),
      labelsNear_(BoundsOf(boxes), 1.0),
      segmentsNear_(BoundsOf(boxes), 1.0),
      segmentsOf_(lines.size()) {
    for (std::size_t i = 0; i < paths.size(); ++i) Keep(static_cast<int>(i));
    for (std::size_t i = 0; i < lines.size(); ++i) {
        labels_.push_back(RectAround(labels[i], lines[i].labelWidth, lines[i].labelHeight));
        if (lines[i].labelWidth > 0) labelsNear_.Add(labels_.back(), static_cast<int>(i));
    }
}

/// As its path is now, in place of what it was.
void Leader::Keep(int line) {
    for (const std::size_t i : segmentsOf_[At(line)]) segments_[i].isThere = false;
    segmentsOf_[At(line)].clear();
    const std::vector<Point>& path = paths_[At(line)];
    for (std::size_t i = 1; i < path.size(); ++i) {
        segmentsNear_.AddSegment(path[i - 1], path[i], static_cast<int>(segments_.size()));
        segmentsOf_[At(line)].push_back(segments_.size());
        segments_.push_back({path[i - 1], path[i], line, true});
    }
}

/// The other lines that it crosses, in order, each as often as it does.
std::vector<int> Leader::LinesAcross(const std::vector<Point>& chain, int line) const {
    std::vector<int> across;
    for (std::size_t i = 1; i < chain.size(); ++i) {
        std::vector<int> here;
        segmentsNear_.Near(RectOf(chain[i - 1], chain[i]), [&](int id) {
            const Segment& other = segments_[At(id)];
            if (other.isThere && other.line != line &&
                SegmentsCross(chain[i - 1], chain[i], other.a, other.b))
                here.push_back(id);
            return true;
        });
        std::sort(here.begin(), here.end());
        here.erase(std::unique(here.begin(), here.end()), here.end());
        for (const int id : here) across.push_back(segments_[At(id)].line);
    }
    std::sort(across.begin(), across.end());
    return across;
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

void Leader::Lead(int line) {
    std::vector<Point>& path = paths_[At(line)];
    const bool hasLabel = KeepsLabel(path, line);
    for (std::size_t i = 1; i < path.size(); ++i) {
        const std::optional<int> label = LabelOn(path[i - 1], path[i], line);
        if (!label) continue;
        const std::vector<int> across = LinesAcross({path[i - 1], path[i]}, line);
        std::vector<std::vector<Point>> chains;
        for (const double side : {1.0, -1.0}) {
            std::vector<Point> chain =
                AroundRect(path[i - 1], path[i], labels_[At(*label)].Grown(kMargin), side);
            if (chain.empty() || !IsFree(chain, line)) continue;
            const std::vector<int> acrossChain = LinesAcross(chain, line);
            if (std::includes(across.begin(), across.end(), acrossChain.begin(), acrossChain.end()))
                chains.push_back(std::move(chain));
        }
        std::sort(chains.begin(), chains.end(),
                  [](const auto& x, const auto& y) { return LengthOf(x) < LengthOf(y); });
        for (const auto& chain : chains) {
            std::vector<Point> led(path.begin(), path.begin() + static_cast<std::ptrdiff_t>(i) - 1);
            led.insert(led.end(), chain.begin(), chain.end());
            led.insert(led.end(), path.begin() + static_cast<std::ptrdiff_t>(i) + 1, path.end());
            if (hasLabel && !KeepsLabel(led, line)) continue;
            path = std::move(led);
            Keep(line);
            i += chain.size() - 2;
            break;
        }
    }
}

}  // namespace

void LeadAroundLabels(std::vector<std::vector<Point>>& paths, const std::vector<Line>& lines,
                      const std::vector<Rect>& boxes, const std::vector<Point>& labels) {
    Leader leader(paths, lines, boxes, labels);
    for (std::size_t i = 0; i < paths.size(); ++i) leader.Lead(static_cast<int>(i));
}

}  // namespace norvelis::layout
