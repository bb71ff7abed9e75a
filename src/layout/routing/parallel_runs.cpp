#include "layout/routing/parallel_runs.h"

#include <cstddef>

namespace norvelis::layout {

namespace {
constexpr double kShelfHeight = 0.5;
}

ParallelRuns::ParallelRuns(double spacing, double first, double last)
    : spacing_(spacing),
      first_(first),
      shelves_(1 + static_cast<std::size_t>(std::clamp((last - first) / kShelfHeight, 0.0, 20000.0))) {}

std::size_t ParallelRuns::Shelf(double at) const {
    const double place = (at - first_) / kShelfHeight;
    return place > 0 ? std::min(shelves_.size() - 1, static_cast<std::size_t>(place)) : 0;
}

void ParallelRuns::Add(const Run& run) {
    shelves_[Shelf(run.at)].push_back(run);
}

void ParallelRuns::Remove(const Run& run) {
    std::vector<Run>& shelf = shelves_[Shelf(run.at)];
    const auto found = std::find_if(shelf.begin(), shelf.end(), [&](const Run& other) {
        return other.at == run.at && other.lo == run.lo && other.hi == run.hi && other.net == run.net;
    });
    if (found != shelf.end()) shelf.erase(found);
}

ParallelRuns::Space ParallelRuns::Nearest(double wish, double from, double to, double lo, double hi,
                                          int net) const {
    wish = std::clamp(wish, from, std::max(from, to));
    // Most wishes come true nearby; only a crowded channel is looked at in its whole width.
    for (double reach = 1;; reach *= 6) {
        const double a = std::max(from, wish - reach), b = std::min(to, wish + reach);
        std::vector<double> taken;
        double trunk = 0;
        bool hasTrunk = false;
        const std::size_t last = Shelf(b + spacing_);
        for (std::size_t shelf = Shelf(a - spacing_); shelf <= last; ++shelf) {
            for (const Run& run : shelves_[shelf]) {
                if (run.hi + spacing_ / 2 <= lo || hi + spacing_ / 2 <= run.lo) continue;
                if (run.net != net) {
                    taken.push_back(run.at);
                } else if (run.at >= from && run.at <= to &&
                           (!hasTrunk || std::abs(run.at - wish) < std::abs(trunk - wish))) {
                    trunk = run.at;
                    hasTrunk = true;
                }
            }
        }
        if (hasTrunk) return {trunk, false};
        std::sort(taken.begin(), taken.end());
        double best = 0, distance = -1;
        const auto offer = [&](double at) {
            if (distance >= 0 && std::abs(at - wish) >= distance) return;
            best = at;
            distance = std::abs(at - wish);
        };
        double free = a;  // the first place that the runs so far leave free
        for (const double at : taken) {
            if (at - spacing_ >= free - 1e-9 && free <= b)
                offer(std::clamp(wish, free, std::max(free, std::min(b, at - spacing_))));
            free = std::max(free, at + spacing_);
        }
        if (free <= b + 1e-9) offer(std::clamp(wish, std::min(free, b), b));
        if (distance >= 0) return {best, false};
        if (a > from || b < to) continue;

        double before = from, width = -1;  // crowded: the middle of the widest gap
        const auto widest = [&](double next) {
            if (next - before > width) {
                width = next - before;
                best = (before + next) / 2;
            }
        };
        for (std::size_t i = 0; i < taken.size(); ++i) {
            if (taken[i] <= from || taken[i] >= to) continue;
            widest(taken[i]);
            before = taken[i];
        }
        widest(to);
        return {best, width < spacing_};
    }
}

}  // namespace norvelis::layout
