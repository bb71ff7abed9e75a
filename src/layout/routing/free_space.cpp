#include "layout/routing/free_space.h"

#include <cstddef>

#include "layout/geometry/obstacles.h"

namespace norvelis::layout {

namespace {

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

}  // namespace

FreeSpace::FreeSpace(const std::vector<Rect>& boxes, double clearance, double margin) : exits_(boxes.size()) {
    std::vector<Rect> grown;
    for (const Rect& box : boxes) grown.push_back(box.Grown(clearance));
    const Rect page = BoundsOf(grown).Grown(margin);

    struct Event {
        double y;
        bool opens;
        int box;
    };
    std::vector<Event> events;
    for (std::size_t i = 0; i < grown.size(); ++i) {
        events.push_back({grown[i].y0, true, static_cast<int>(i)});
        events.push_back({grown[i].y1, false, static_cast<int>(i)});
    }
    std::sort(events.begin(), events.end(), [](const Event& a, const Event& b) {
        return a.y != b.y ? a.y < b.y : a.opens != b.opens ? !a.opens : a.box < b.box;
    });

    std::vector<int> passing;  // the boxes that the sweep is passing, by their left side
    const auto isLeftOf = [&](int a, int b) {
        return grown[At(a)].x0 != grown[At(b)].x0 ? grown[At(a)].x0 < grown[At(b)].x0 : a < b;
    };
    const auto open = [&](Gap& gap, double y) {
        gap.cell = static_cast<int>(cells_.size());
        cells_.push_back({{gap.lo, y, gap.hi, page.y1}, {}});
        leftBox_.push_back(gap.left);
        rightBox_.push_back(gap.right);
    };
    std::vector<Gap> gaps = GapsAt(passing, grown, page);
    open(gaps.front(), page.y0);
    for (std::size_t i = 0; i < events.size();) {
        const double y = events[i].y;
        std::size_t end = i;
        while (end < events.size() && events[end].y == y) ++end;
        for (std::size_t k = i; k < end; ++k) {
            if (events[k].opens) {
                passing.insert(std::upper_bound(passing.begin(), passing.end(), events[k].box, isLeftOf),
                               events[k].box);
            } else {
                passing.erase(std::find(passing.begin(), passing.end(), events[k].box));
            }
        }
        std::vector<Gap> next = GapsAt(passing, grown, page);
        std::size_t old = 0;
        for (Gap& gap : next) {
            while (old < gaps.size() && gaps[old].lo < gap.lo) ++old;
            const bool same = old < gaps.size() && gaps[old].lo == gap.lo && gaps[old].hi == gap.hi &&
                              gaps[old].left == gap.left && gaps[old].right == gap.right;
            if (same) gap.cell = gaps[old].cell;
            if (!same) open(gap, y);
        }
        Join(gaps, next, y);
        for (std::size_t k = i; k < end; ++k)
            AddExits(boxes, events[k].opens ? gaps : next, events[k].box,
                     events[k].opens ? Side::Bottom : Side::Top);
        gaps = std::move(next);
        i = end;
    }
    AddSideExits(boxes);
}

std::vector<FreeSpace::Gap> FreeSpace::GapsAt(const std::vector<int>& passing, const std::vector<Rect>& grown,
                                              const Rect& page) const {
    std::vector<Gap> gaps;
    double x = page.x0;
    int left = -1;
    for (const int box : passing) {
        if (grown[At(box)].x0 > x) gaps.push_back({x, grown[At(box)].x0, left, box, -1});
        if (grown[At(box)].x1 > x) {
            x = grown[At(box)].x1;
            left = box;
        }
    }
    gaps.push_back({x, page.x1, left, -1, -1});
    return gaps;
}

void FreeSpace::Join(const std::vector<Gap>& below, const std::vector<Gap>& above, double y) {
    std::size_t first = 0;
    for (const Gap& lower : below) {
        while (first < above.size() && above[first].hi <= lower.lo) ++first;
        for (std::size_t k = first; k < above.size() && above[k].lo < lower.hi; ++k) {
            if (above[k].cell == lower.cell) continue;
            const double lo = std::max(lower.lo, above[k].lo), hi = std::min(lower.hi, above[k].hi);
            if (hi <= lo) continue;
            cells_[At(lower.cell)].portals.push_back({above[k].cell, lo, hi, y, portalCount_});
            cells_[At(above[k].cell)].portals.push_back({lower.cell, lo, hi, y, portalCount_});
            ++portalCount_;
        }
    }
    for (const Gap& lower : below) {
        const bool stays =
            std::any_of(above.begin(), above.end(), [&](const Gap& gap) { return gap.cell == lower.cell; });
        if (!stays) cells_[At(lower.cell)].area.y1 = y;
    }
}

void FreeSpace::AddExits(const std::vector<Rect>& boxes, const std::vector<Gap>& gaps, int box, Side side) {
    const Rect& rect = boxes[At(box)];
    const double corner = rect.Width() * 0.02;
    for (const Gap& gap : gaps) {
        const double lo = std::max(gap.lo, rect.x0 + corner), hi = std::min(gap.hi, rect.x1 - corner);
        if (hi > lo) exits_[At(box)].push_back({gap.cell, side, lo, hi, exitCount_++});
    }
}

void FreeSpace::AddSideExits(const std::vector<Rect>& boxes) {
    for (std::size_t i = 0; i < cells_.size(); ++i) {
        const auto add = [&](int box, Side side) {
            if (box < 0) return;
            const Rect& rect = boxes[At(box)];
            const double corner = rect.Height() * 0.05;
            const double lo = std::max(cells_[i].area.y0, rect.y0 + corner);
            const double hi = std::min(cells_[i].area.y1, rect.y1 - corner);
            if (hi > lo) exits_[At(box)].push_back({static_cast<int>(i), side, lo, hi, exitCount_++});
        };
        add(leftBox_[i], Side::Right);
        add(rightBox_[i], Side::Left);
    }
}

}  // namespace norvelis::layout
