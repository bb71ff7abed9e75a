#include "layout/circular/circle_order.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <deque>
#include <numeric>

#include "layout/graph/eigenvectors.h"

namespace norvelis::layout {

namespace {

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

using Neighbours = std::vector<std::vector<int>>;

std::vector<int> Insert(int count, const Neighbours& neighbours) {
    std::deque<int> order;
    std::vector<int> placed(At(count)), isPlaced(At(count));
    std::vector<int> place(At(count));  // grows to the right, falls to the left
    int leftEnd = 0, rightEnd = 0;
    for (int k = 0; k < count; ++k) {
        // Most neighbours on the circle already, then fewest still to come.
        int next = -1;
        for (int v = 0; v < count; ++v) {
            if (isPlaced[At(v)]) continue;
            if (next < 0) {
                next = v;
                continue;
            }
            const auto rest = [&](int u) {
                return static_cast<int>(neighbours[At(u)].size()) - placed[At(u)];
            };
            if (placed[At(v)] != placed[At(next)] ? placed[At(v)] > placed[At(next)] : rest(v) < rest(next))
                next = v;
        }
        double sum = 0;
        for (const int other : neighbours[At(next)])
            if (isPlaced[At(other)]) sum += place[At(other)] - (leftEnd + rightEnd) / 2.0;
        if (sum >= 0) {
            place[At(next)] = ++rightEnd;
            order.push_back(next);
        } else {
            place[At(next)] = --leftEnd;
            order.push_front(next);
        }
        isPlaced[At(next)] = 1;
        for (const int other : neighbours[At(next)]) ++placed[At(other)];
    }
    return {order.begin(), order.end()};
}

class Sifter {
  public:
    Sifter(std::vector<int> order, const Neighbours& neighbours)
        : order_(std::move(order)), neighbours_(neighbours), place_(order_.size()) {
        Number();
    }

    /// Moves every vertex once around the circle and leaves it where crossings were fewest; true if one
    /// moved.
    bool Round() {
        bool moved = false;
        const std::vector<int> walk = order_;
        for (const int vertex : walk) {
            if (budget_ < 0) return false;
            moved = Sift(vertex) || moved;
        }
        return moved;
    }
    const std::vector<int>& Order() const { return order_; }

  private:
    void Number() {
        for (std::size_t i = 0; i < order_.size(); ++i) place_[At(order_[i])] = static_cast<int>(i);
    }

    /// Crossings gained by u, left of v and next to it, changing places with v.
    int Change(int u, int v) {
        const int n = static_cast<int>(order_.size());
        const int start = place_[At(v)];
        const auto behind = [&](int x) {
            const int distance = place_[At(x)] - start;
            return distance < 0 ? distance + n : distance;
        };
        ends_.clear();
        for (const int y : neighbours_[At(v)])
            if (y != u) ends_.push_back(behind(y));
        int change = 0;
        for (const int x : neighbours_[At(u)]) {
            if (x == v) continue;
            const int here = behind(x);
            for (const int end : ends_) change += (end < here) - (end > here);
        }
        budget_ -= static_cast<long>(neighbours_[At(u)].size() * neighbours_[At(v)].size()) + 4;
        return change;
    }

    bool Sift(int vertex) {
        const std::size_t n = order_.size();
        const std::size_t from = At(place_[At(vertex)]);
        int sum = 0, best = 0;
        std::size_t bestSteps = 0, at = from;
        for (std::size_t steps = 1; steps < n; ++steps) {
            const std::size_t next = (at + 1) % n;
            const int other = order_[next];
            sum += Change(vertex, other);
            std::swap(order_[at], order_[next]);
            place_[At(other)] = static_cast<int>(at);
            place_[At(vertex)] = static_cast<int>(next);
            at = next;
            if (sum < best) {
                best = sum;
                bestSteps = steps;
            }
        }
        // After n-1 steps the vertex is behind its start on the circle; go on (back) to the best place.
        std::rotate(order_.begin(), order_.begin() + static_cast<std::ptrdiff_t>(at), order_.end());
        std::rotate(order_.begin(), order_.begin() + 1,
                    order_.begin() + static_cast<std::ptrdiff_t>(bestSteps) + 1);
        Number();
        return best < 0;
    }

    std::vector<int> order_;
    const Neighbours& neighbours_;
    std::vector<int> place_;
    std::vector<int> ends_;     ///< Of the chords of one vertex, for Change.
    long budget_ = 40'000'000;  // steps; keeps the densest graphs within a fraction of a second
};

/// Vertices at the angles of a spectral drawing.
std::vector<int> SpectralOrder(const Neighbours& neighbours) {
    std::vector<double> angle;
    for (const Point& place : SpectralPlaces(neighbours)) angle.push_back(std::atan2(place.y, place.x));
    std::vector<int> order(neighbours.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return angle[At(a)] < angle[At(b)]; });
    return order;
}

/// Two vertices change places where that makes their chords shorter.
void ShortenChords(std::vector<int>& order, const Neighbours& neighbours) {
    const std::size_t count = order.size();
    std::vector<std::size_t> place(count);
    for (std::size_t i = 0; i < count; ++i) place[At(order[i])] = i;
    std::vector<double> chord;
    for (std::size_t i = 0; i < count; ++i)
        chord.push_back(std::sin(M_PI * static_cast<double>(i) / static_cast<double>(count)));
    const auto lengthOf = [&](int vertex) {
        const std::size_t here = place[At(vertex)];
        double length = 0;
        for (const int other : neighbours[At(vertex)]) {
            const std::size_t there = place[At(other)];
            length += chord[here > there ? here - there : there - here];
        }
        return length;
    };
    constexpr int kMostRounds = 4;
    bool changed = true;
    for (int round = 0; round < kMostRounds && changed; ++round) {
        changed = false;
        for (std::size_t i = 1; i < count; ++i) {
            for (std::size_t j = 0; j < i; ++j) {
                const int a = order[i], b = order[j];
                const double before = lengthOf(a) + lengthOf(b);
                std::swap(place[At(a)], place[At(b)]);
                if (lengthOf(a) + lengthOf(b) < before - 1e-9) {
                    std::swap(order[i], order[j]);
                    changed = true;
                } else {
                    std::swap(place[At(a)], place[At(b)]);
                }
            }
        }
    }
}

}  // namespace

long CrossingsOnCircle(const std::vector<int>& order, const std::vector<std::pair<int, int>>& edges) {
    std::vector<int> place(order.size());
    for (std::size_t i = 0; i < order.size(); ++i) place[At(order[i])] = static_cast<int>(i);
    std::vector<std::pair<int, int>> chords;
    for (const auto& [a, b] : edges)
        if (a != b) chords.push_back(std::minmax(place[At(a)], place[At(b)]));
    std::sort(chords.begin(), chords.end());
    long crossings = 0;
    for (std::size_t i = 0; i < chords.size(); ++i)
        for (std::size_t k = i + 1; k < chords.size() && chords[k].first < chords[i].second; ++k)
            crossings += chords[k].first > chords[i].first && chords[k].second > chords[i].second;
    return crossings;
}

std::vector<int> CircleOrder(int count, const std::vector<std::pair<int, int>>& edges) {
    Neighbours neighbours(At(count));
    for (const auto& [a, b] : edges) {
        if (a == b) continue;
        neighbours[At(a)].push_back(b);
        neighbours[At(b)].push_back(a);
    }
    constexpr int kManyVertices = 400;  // with them, fewer rounds and the better start of the two must do
    const int rounds = count < kManyVertices ? 6 : 3;
    std::vector<std::vector<int>> starts{SpectralOrder(neighbours)};
    if (count < kManyVertices) starts.push_back(Insert(count, neighbours));
    std::vector<int> best;
    long fewest = -1;
    for (std::vector<int>& start : starts) {
        ShortenChords(start, neighbours);
        Sifter sifter(std::move(start), neighbours);
        for (int round = 0; round < rounds && sifter.Round(); ++round) {
        }
        const long crossings = CrossingsOnCircle(sifter.Order(), edges);
        if (fewest >= 0 && crossings >= fewest) continue;
        fewest = crossings;
        best = sifter.Order();
    }
    return best;
}

}  // namespace norvelis::layout
