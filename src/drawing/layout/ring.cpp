#include "drawing/layout/ring.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>

namespace norvelis::layout {

namespace {

constexpr int arcs = 360;  // pieces in which a ring is measured

/// A lane of a ring, measured in places: the way along it in units of one box with its gaps, whichever of
/// width or height keeps neighbours apart there.
class Lane {
  public:
    Lane(const RingShape& shape, double pitchX, double pitchY) : shape_(shape), places_(arcs + 1) {
        for (int i = 1; i <= arcs; ++i) {
            const Point a = shape.At(AngleOf(i - 1)), b = shape.At(AngleOf(i));
            places_[static_cast<std::size_t>(i)] =
                places_[static_cast<std::size_t>(i - 1)] +
                std::max(std::abs(b.x - a.x) / pitchX, std::abs(b.y - a.y) / pitchY);
        }
    }
    double Places() const { return places_.back(); }
    double PlaceOf(double angle) const {
        double turn = angle / (2 * M_PI);
        turn -= std::floor(turn);
        const double at = turn * arcs;
        const std::size_t i = std::min<std::size_t>(static_cast<std::size_t>(at), arcs - 1);
        return places_[i] + (places_[i + 1] - places_[i]) * (at - static_cast<double>(i));
    }
    Point PointAt(double place) const {
        place -= std::floor(place / Places()) * Places();
        const auto next = std::upper_bound(places_.begin() + 1, places_.end() - 1, place);
        const auto i = next - places_.begin() - 1;
        const double length = *next - *(next - 1);
        const double part = length > 0 ? (place - *(next - 1)) / length : 0;
        return shape_.At(AngleOf(0) + 2 * M_PI * (static_cast<double>(i) + part) / arcs);
    }

  private:
    static double AngleOf(int i) { return 2 * M_PI * i / arcs; }
    RingShape shape_;
    std::vector<double> places_;
};

/// Moves wishes (ascending) as little as possible so that each keeps its distance from the one before: blocks
/// of equal shift are merged (pool adjacent violators: isotonic regression).
std::vector<double> Separate(const std::vector<double>& wishes, const std::vector<double>& distance) {
    struct Block {
        double sum;
        int count;
        double Mean() const { return sum / count; }
    };
    std::vector<Block> blocks;
    std::vector<double> offset(wishes.size());
    for (std::size_t i = 0; i < wishes.size(); ++i) {
        offset[i] = i > 0 ? offset[i - 1] + distance[i] : 0;
        blocks.push_back({wishes[i] - offset[i], 1});
        while (blocks.size() > 1 && blocks[blocks.size() - 2].Mean() >= blocks.back().Mean()) {
            const Block last = blocks.back();
            blocks.pop_back();
            blocks.back().sum += last.sum;
            blocks.back().count += last.count;
        }
    }
    std::vector<double> places;
    for (const Block& block : blocks)
        for (int k = 0; k < block.count; ++k) places.push_back(block.Mean() + offset[places.size()]);
    return places;
}

double NeededPlaces(const std::vector<RingBox*>& boxes, std::size_t i, std::size_t j, double gapX,
                    double gapY, double pitchX, double pitchY) {
    const Box &a = boxes[i]->size, &b = boxes[j]->size;
    return 1.06 *
           std::max(((a.width + b.width) / 2 + gapX) / pitchX, ((a.height + b.height) / 2 + gapY) / pitchY);
}

double PlacesOf(const std::vector<RingBox*>& boxes, double gapX, double gapY, double pitchX, double pitchY) {
    double sum = 0;
    for (std::size_t i = 0; i < boxes.size(); ++i)
        sum += NeededPlaces(boxes, i, (i + 1) % boxes.size(), gapX, gapY, pitchX, pitchY);
    return sum;
}

void PlaceOnLane(const std::vector<RingBox*>& boxes, const Lane& lane, double gapX, double gapY,
                 double pitchX, double pitchY) {
    const std::size_t n = boxes.size();
    std::vector<double> wishes;
    for (const RingBox* box : boxes) wishes.push_back(lane.PlaceOf(box->angle));
    // The ring is cut open where the wishes leave the widest gap.
    std::size_t cut = 0;
    double widest = -1;
    for (std::size_t i = 0; i < n; ++i) {
        double gap = wishes[i] - wishes[(i + n - 1) % n];
        if (gap < 0 || n == 1) gap += lane.Places();
        if (gap > widest) {
            widest = gap;
            cut = i;
        }
    }
    std::vector<double> opened, distance;
    for (std::size_t k = 0; k < n; ++k) {
        const std::size_t i = (cut + k) % n;
        double wish = wishes[i];
        while (k > 0 && wish < opened.back() - 1e-9) wish += lane.Places();
        opened.push_back(wish);
        distance.push_back(NeededPlaces(boxes, (i + n - 1) % n, i, gapX, gapY, pitchX, pitchY));
    }
    std::vector<double> places = Separate(opened, distance);
    if (places.back() - places.front() > lane.Places() - distance.front() + 1e-9) {
        const double whole = std::accumulate(distance.begin(), distance.end(), 0.0);
        const double scale = lane.Places() / whole;
        places[0] = opened[0];
        for (std::size_t k = 1; k < n; ++k) places[k] = places[k - 1] + distance[k] * scale;
    }
    for (std::size_t k = 0; k < n; ++k) boxes[(cut + k) % n]->center = lane.PointAt(places[k]);
}

}  // namespace

Point RingShape::At(double angle) const {
    const double x = std::cos(angle), y = std::sin(angle);
    const double norm =
        power == 2 ? 1.0 : std::pow(std::pow(std::abs(x), power) + std::pow(std::abs(y), power), 1 / power);
    return {a * x / norm, b * y / norm};
}

void PlaceOnRing(std::vector<RingBox>& boxes, RingShape& hole, double gapX, double gapY, int mostLanes) {
    if (boxes.empty()) return;
    std::stable_sort(boxes.begin(), boxes.end(),
                     [](const RingBox& a, const RingBox& b) { return a.angle < b.angle; });
    double width = 0, height = 0, meanWidth = 0, meanHeight = 0;
    for (const RingBox& box : boxes) {
        width = std::max(width, box.size.width);
        height = std::max(height, box.size.height);
        meanWidth += box.size.width / static_cast<double>(boxes.size());
        meanHeight += box.size.height / static_cast<double>(boxes.size());
    }
    const double pitchX = meanWidth + gapX, pitchY = meanHeight + gapY;
    const double slant = std::pow(2.0, 1 / hole.power);  // lanes come closest at the diagonals
    const double stepX = (width + gapX) * slant, stepY = (height + gapY) * slant;
    const RingShape first{hole.a + (width / 2 + gapX) * slant, hole.b + (height / 2 + gapY) * slant,
                          hole.power};
    const auto laneShape = [&](int lane, double grown) {
        return RingShape{first.a * grown + stepX * lane, first.b * grown + stepY * lane, hole.power};
    };
    // Boxes go to the lanes in turn, so that neighbours stay neighbours. When even the most lanes are too
    // short, the ring grows.
    for (int lanes = 1;; ++lanes) {
        std::vector<std::vector<RingBox*>> members(static_cast<std::size_t>(lanes));
        std::vector<double> capacity;
        double whole = 0;
        double grown = 1;
        for (int attempt = 0;; ++attempt) {
            capacity.clear();
            whole = 0;
            for (int lane = 0; lane < lanes; ++lane) {
                capacity.push_back(Lane(laneShape(lane, grown), pitchX, pitchY).Places());
                whole += capacity.back();
            }
            for (auto& lane : members) lane.clear();
            std::vector<double> filled(static_cast<std::size_t>(lanes));
            for (RingBox& box : boxes) {
                std::size_t least = 0;
                for (std::size_t lane = 1; lane < members.size(); ++lane)
                    if (filled[lane] / capacity[lane] < filled[least] / capacity[least]) least = lane;
                members[least].push_back(&box);
                filled[least] +=
                    std::max((box.size.width + gapX) / pitchX, (box.size.height + gapY) / pitchY);
            }
            bool fits = true;
            for (std::size_t lane = 0; lane < members.size(); ++lane)
                fits = fits && (members[lane].size() < 2 ||
                                PlacesOf(members[lane], gapX, gapY, pitchX, pitchY) <= capacity[lane]);
            if (fits) {
                for (int lane = 0; lane < lanes; ++lane) {
                    const auto& here = members[static_cast<std::size_t>(lane)];
                    if (!here.empty())
                        PlaceOnLane(here, Lane(laneShape(lane, grown), pitchX, pitchY), gapX, gapY, pitchX,
                                    pitchY);
                }
                const RingShape outer = laneShape(lanes - 1, grown);
                hole.a = outer.a + width / 2;
                hole.b = outer.b + height / 2;
                return;
            }
            if (lanes < mostLanes && attempt >= 3) break;
            grown *= 1.1;
        }
    }
}

bool AreApart(const std::vector<Box>& boxes, const std::vector<Point>& centers, double gapX, double gapY) {
    std::vector<std::size_t> order(boxes.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    double widest = 0;
    for (const Box& box : boxes) widest = std::max(widest, box.width);
    std::sort(order.begin(), order.end(),
              [&](std::size_t a, std::size_t b) { return centers[a].x < centers[b].x; });
    for (std::size_t k = 0; k < order.size(); ++k) {
        const std::size_t i = order[k];
        for (std::size_t m = k + 1; m < order.size(); ++m) {
            const std::size_t j = order[m];
            if (centers[j].x - centers[i].x >= (boxes[i].width + widest) / 2 + gapX) break;
            const bool besides =
                centers[j].x - centers[i].x >= (boxes[i].width + boxes[j].width) / 2 + gapX - 1e-9;
            const bool above = std::abs(centers[j].y - centers[i].y) >=
                               (boxes[i].height + boxes[j].height) / 2 + gapY - 1e-9;
            if (!besides && !above) return false;
        }
    }
    return true;
}

void KeepApart(const std::vector<Box>& boxes, std::vector<Point>& centers, double gapX, double gapY) {
    for (int round = 0; round < 200 && !AreApart(boxes, centers, gapX, gapY); ++round)
        for (Point& center : centers) center = {center.x * 1.04, center.y * 1.04};
}

}  // namespace norvelis::layout
