#include "drawing/layout/ring.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>

#include "drawing/routing/separate.h"

namespace norvelis::layout {

namespace {

constexpr int arcs = 360;  // pieces in which a lane is measured

double AngleAt(double arc) {
    return 2 * M_PI * arc / arcs;
}

}  // namespace

Point RingShape::At(double angle) const {
    const double x = std::cos(angle), y = std::sin(angle);
    const double norm =
        power == 2 ? 1.0 : std::pow(std::pow(std::abs(x), power) + std::pow(std::abs(y), power), 1 / power);
    return {a * x / norm, b * y / norm};
}

Ring::Ring(const RingShape& hole, const std::vector<Box>& sizes, double gapX, double gapY, int mostLanes)
    : gapX_(gapX), gapY_(gapY), hole_(hole) {
    const double count = static_cast<double>(std::max<std::size_t>(sizes.size(), 1));
    double meanWidth = 0, meanHeight = 0;
    for (const Box& size : sizes) {
        width_ = std::max(width_, size.width);
        height_ = std::max(height_, size.height);
        meanWidth += size.width / count;
        meanHeight += size.height / count;
    }
    pitchX_ = std::max(meanWidth + gapX, 1e-3);
    pitchY_ = std::max(meanHeight + gapY, 1e-3);
    double needed = 0;
    for (const Box& size : sizes)
        needed += std::max((size.width + gapX) / pitchX_, (size.height + gapY) / pitchY_);
    constexpr double shareUsed = 0.94, step = 1.1;
    constexpr int stepsBeforeAnotherLane = 3;
    double grown = 1;
    for (int lanes = 1, steps = 0;; ++steps) {
        MakeLanes(lanes, grown);
        if (sizes.size() < 2 || needed <= capacity_ * shareUsed) break;
        if (lanes < mostLanes && steps >= stepsBeforeAnotherLane) {
            ++lanes;
            steps = -1;
            grown = 1;
        } else {
            grown *= step;
        }
    }
}

void Ring::MakeLanes(int count, double grown) {
    const double slant = std::pow(2.0, 1 / hole_.power);  // lanes come closest at the diagonals
    const double stepX = (width_ + gapX_) * slant, stepY = (height_ + gapY_) * slant;
    lanes_.clear();
    capacity_ = 0;
    for (int lane = 0; lane < count; ++lane) {
        lanes_.push_back(
            MakeLane({(hole_.a + (width_ / 2 + gapX_) * slant) * grown + stepX * lane,
                      (hole_.b + (height_ / 2 + gapY_) * slant) * grown + stepY * lane, hole_.power}));
        capacity_ += lanes_.back().passed.back();
    }
}

Ring::Lane Ring::MakeLane(const RingShape& shape) const {
    Lane lane{shape, {0}};
    Point from = shape.At(0);
    for (int arc = 1; arc <= arcs; ++arc) {
        const Point to = shape.At(AngleAt(arc));
        lane.passed.push_back(lane.passed.back() +
                              std::max(std::abs(to.x - from.x) / pitchX_, std::abs(to.y - from.y) / pitchY_));
        from = to;
    }
    return lane;
}

double Ring::Lane::Angle(double turn) const {
    const double place = (turn - std::floor(turn)) * passed.back();
    const auto next = std::upper_bound(passed.begin() + 1, passed.end() - 1, place);
    const double length = *next - *(next - 1);
    return AngleAt(static_cast<double>(next - passed.begin() - 1) +
                   (length > 0 ? (place - *(next - 1)) / length : 0));
}

double Ring::AngleOf(double turn) const {
    return lanes_.front().Angle(turn);
}

double Ring::Distance(const Box& a, const Box& b) const {
    return std::max(((a.width + b.width) / 2 + gapX_) / pitchX_,
                    ((a.height + b.height) / 2 + gapY_) / pitchY_) /
           capacity_;
}

std::vector<Point> Ring::Place(const std::vector<Box>& sizes, const std::vector<double>& turns) const {
    // Lanes are taken in turn, so that boxes that follow each other stay near each other.
    std::vector<Point> centers;
    std::vector<double> filled(lanes_.size());
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        std::size_t least = 0;
        for (std::size_t lane = 1; lane < lanes_.size(); ++lane)
            if (filled[lane] / lanes_[lane].passed.back() < filled[least] / lanes_[least].passed.back())
                least = lane;
        filled[least] += Distance(sizes[i], sizes[i]);
        const Lane& lane = lanes_[least];
        centers.push_back(lane.shape.At(lane.Angle(turns[i])));
    }
    return centers;
}

RingShape Ring::Cover() const {
    const RingShape& outer = lanes_.back().shape;
    return {outer.a + width_ / 2, outer.b + height_ / 2, hole_.power};
}

std::vector<double> SeparateAround(const std::vector<double>& turns, const std::vector<double>& distance) {
    const std::size_t count = turns.size();
    if (count < 2) return turns;
    const double whole = std::accumulate(distance.begin(), distance.end(), 0.0);
    std::vector<double> separated;
    if (whole >= 1) {  // only the rotation is free
        double at = 0, sum = 0;
        for (std::size_t i = 0; i < count; ++i) {
            if (i > 0) at += distance[i] / whole;
            separated.push_back(at);
            sum += turns[i] - at;
        }
        for (double& turn : separated) turn += sum / static_cast<double>(count);
        return separated;
    }
    // The ring unrolled three times: what comes before and after the middle one holds it in its place.
    std::vector<double> unrolled, distances;
    for (const double round : {0.0, 1.0, 2.0}) {
        for (std::size_t i = 0; i < count; ++i) {
            unrolled.push_back(turns[i] + round);
            distances.push_back(distance[i]);
        }
    }
    const std::vector<double> places = Separate(unrolled, distances);
    for (std::size_t i = 0; i < count; ++i) separated.push_back(places[count + i] - 1);
    return separated;
}

}  // namespace norvelis::layout
