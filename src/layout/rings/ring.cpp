#include "layout/rings/ring.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>

#include "layout/spacing/separate.h"

namespace norvelis::layout {

namespace {

constexpr int kArcs = 360;  // segments in which a lane is measured

double AngleAt(double arc) {
    return 2 * M_PI * arc / kArcs;
}

}  // namespace

Point RingShape::At(double angle) const {
    const double x = std::cos(angle), y = std::sin(angle);
    const double norm =
        power == 2 ? 1.0 : std::pow(std::pow(std::abs(x), power) + std::pow(std::abs(y), power), 1 / power);
    return {a * x / norm, b * y / norm};
}

Ring::Ring(const RingShape& hole, const Box& largest, const Box& gaps, const Box& step, double steps,
           int mostLanes)
    : hole_(hole), largest_(largest), gaps_(gaps), step_(step) {
    constexpr double kShareUsed = 0.94, kGrowth = 1.05;
    constexpr int kGrowthsBeforeAnotherLane = 5;
    double grown = 1;
    for (int lanes = 1, growths = 0;; ++growths) {
        MakeLanes(lanes, grown);
        if (steps <= capacity_ * kShareUsed) break;
        if (lanes < mostLanes && growths >= kGrowthsBeforeAnotherLane) {
            ++lanes;
            growths = -1;
            grown = 1;
        } else {
            grown *= kGrowth;
        }
    }
}

void Ring::MakeLanes(int count, double grown) {
    const double slant = std::pow(2.0, 1 / hole_.power);  // lanes come closest at the diagonals
    const double stepX = (largest_.width + gaps_.width) * slant,
                 stepY = (largest_.height + gaps_.height) * slant;
    lanes_.clear();
    capacity_ = 0;
    for (int lane = 0; lane < count; ++lane) {
        lanes_.push_back(MakeLane(
            {(hole_.a + (largest_.width / 2 + gaps_.width) * slant) * grown + stepX * lane,
             (hole_.b + (largest_.height / 2 + gaps_.height) * slant) * grown + stepY * lane, hole_.power}));
        capacity_ += lanes_.back().passed.back();
    }
}

Ring::Lane Ring::MakeLane(const RingShape& shape) const {
    Lane lane{shape, {0}};
    Point from = shape.At(0);
    for (int arc = 1; arc <= kArcs; ++arc) {
        const Point to = shape.At(AngleAt(arc));
        lane.passed.push_back(lane.passed.back() + std::max(std::abs(to.x - from.x) / step_.width,
                                                            std::abs(to.y - from.y) / step_.height));
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

bool Ring::RunsHorizontally(double turn) const {
    const double angle = lanes_.front().Angle(turn);
    const Point a = lanes_.front().shape.At(angle - 0.01), b = lanes_.front().shape.At(angle + 0.01);
    return std::abs(b.x - a.x) / step_.width > std::abs(b.y - a.y) / step_.height;
}

std::vector<Point> Ring::Places(const std::vector<double>& turns,
                                const std::vector<bool>& isOutermost) const {
    std::vector<Point> places;
    std::vector<double> filled(lanes_.size());
    for (std::size_t i = 0; i < turns.size(); ++i) {
        std::size_t least = lanes_.size() - 1;
        for (std::size_t lane = 0; lane < lanes_.size() && !isOutermost[i]; ++lane)
            if (filled[lane] / lanes_[lane].passed.back() < filled[least] / lanes_[least].passed.back())
                least = lane;
        filled[least] += 1;
        places.push_back(lanes_[least].shape.At(lanes_[least].Angle(turns[i])));
    }
    return places;
}

RingShape Ring::Cover() const {
    const RingShape& outer = lanes_.back().shape;
    return {outer.a + largest_.width / 2, outer.b + largest_.height / 2, hole_.power};
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
