#include "layout/layered/cycle_removal.h"

#include <algorithm>
#include <set>

namespace norvelis::layout {

namespace {

struct Neighbours {
    explicit Neighbours(const Graph& graph) : members(graph.boxes.size()), owners(graph.boxes.size()) {
        for (const Line& line : graph.lines) {
            if (line.from == line.to) continue;
            members[line.from].push_back(line.to);
            owners[line.to].push_back(line.from);
        }
    }
    std::vector<std::vector<int>> members, owners;
};

/// Sinks go to the end, sources to the front, and when there is neither, the box with the most lines out over
/// lines in. Of equals the first box, so that a plain ring starts where the user's schema does.
std::vector<int> GreedyOrder(const Neighbours& neighbours) {
    const int count = static_cast<int>(neighbours.members.size());
    std::vector<int> in(count), out(count);
    std::set<std::pair<int, int>> sources, sinks, others;  // key and box
    const auto setOf = [&](int box) -> std::set<std::pair<int, int>>& {
        return out[box] == 0 ? sinks : in[box] == 0 ? sources : others;
    };
    const auto key = [&](int box) { return std::pair(in[box] - out[box], box); };
    for (int i = 0; i < count; ++i) {
        in[i] = static_cast<int>(neighbours.owners[i].size());
        out[i] = static_cast<int>(neighbours.members[i].size());
        setOf(i).insert(key(i));
    }
    std::vector<bool> gone(count);
    const auto remove = [&](int box) {
        setOf(box).erase(key(box));
        gone[box] = true;
        for (const int member : neighbours.members[box]) {
            if (gone[member]) continue;
            setOf(member).erase(key(member));
            --in[member];
            setOf(member).insert(key(member));
        }
        for (const int owner : neighbours.owners[box]) {
            if (gone[owner]) continue;
            setOf(owner).erase(key(owner));
            --out[owner];
            setOf(owner).insert(key(owner));
        }
    };
    std::vector<int> front, back;
    while (!sources.empty() || !sinks.empty() || !others.empty()) {
        auto& from = !sinks.empty() ? sinks : !sources.empty() ? sources : others;
        const int box = from.begin()->second;
        (&from == &sinks ? back : front).push_back(box);
        remove(box);
    }
    front.insert(front.end(), back.rbegin(), back.rend());
    return front;
}

/// Moves each box to the place in the order where the fewest of its lines run backwards.
void Sift(const Neighbours& neighbours, std::vector<int>& place) {
    constexpr int kRounds = 4;
    const int count = static_cast<int>(place.size());
    std::vector<int> order(count);
    for (int i = 0; i < count; ++i) order[place[i]] = i;
    for (int round = 0; round < kRounds; ++round) {
        bool changed = false;
        for (int box = 0; box < count; ++box) {
            // Passing an owner costs a line, passing a member saves one; only they matter.
            std::vector<std::pair<int, int>> steps;
            for (const int owner : neighbours.owners[box]) steps.emplace_back(place[owner], 1);
            for (const int member : neighbours.members[box]) steps.emplace_back(place[member], -1);
            std::sort(steps.begin(), steps.end());
            int best = 0, bestPlace = place[box], cost = 0;
            for (const auto& [at, step] : steps) {  // to the right: behind the one passed
                if (at < place[box]) continue;
                cost -= step;
                if (cost < best) best = cost, bestPlace = at;
            }
            cost = 0;
            for (auto s = steps.rbegin(); s != steps.rend(); ++s) {  // to the left: in front of it
                if (s->first > place[box]) continue;
                cost += s->second;
                if (cost < best) best = cost, bestPlace = s->first;
            }
            if (best == 0) continue;
            changed = true;
            order.erase(order.begin() + place[box]);
            order.insert(order.begin() + bestPlace, box);
            for (int i = std::min(place[box], bestPlace); i < count; ++i) place[order[i]] = i;
        }
        if (!changed) break;
    }
}

/// Boxes without owners first, every box before those that it reaches but where a cycle closes.
std::vector<int> DepthFirstOrder(const Neighbours& neighbours) {
    const int count = static_cast<int>(neighbours.members.size());
    std::vector<bool> seen(count);
    std::vector<int> done;
    std::vector<std::pair<int, std::size_t>> walk;  // box, and how many of its members were looked at
    const auto walkFrom = [&](int start) {
        if (!seen[start]) walk.emplace_back(start, 0);
        while (!walk.empty()) {
            auto& [box, next] = walk.back();
            seen[box] = true;
            const auto& members = neighbours.members[box];
            while (next < members.size() && seen[members[next]]) ++next;
            if (next < members.size()) {
                walk.emplace_back(members[next++], 0);
            } else {
                done.push_back(box);
                walk.pop_back();
            }
        }
    };
    for (int box = 0; box < count; ++box)
        if (neighbours.owners[box].empty()) walkFrom(box);
    for (int box = 0; box < count; ++box) walkFrom(box);
    std::reverse(done.begin(), done.end());
    return done;
}

}  // namespace

std::vector<Reversed> CycleBreaks(const Graph& graph) {
    const Neighbours neighbours(graph);
    std::vector<Reversed> breaks;
    for (const std::vector<int>& order : {GreedyOrder(neighbours), DepthFirstOrder(neighbours)}) {
        std::vector<int> place(order.size());
        for (std::size_t i = 0; i < order.size(); ++i) place[order[i]] = static_cast<int>(i);
        const auto isBackward = [&](const Line& line) { return place[line.from] > place[line.to]; };
        if (std::any_of(graph.lines.begin(), graph.lines.end(), isBackward)) Sift(neighbours, place);
        Reversed reversed;
        for (const Line& line : graph.lines) reversed.push_back(isBackward(line));
        breaks.push_back(std::move(reversed));
    }
    const auto countOf = [](const Reversed& choice) {
        return std::count(choice.begin(), choice.end(), true);
    };
    if (countOf(breaks[1]) < countOf(breaks[0])) breaks.erase(breaks.begin());
    if (breaks.size() == 2 && (countOf(breaks[1]) > countOf(breaks[0]) || breaks[1] == breaks[0]))
        breaks.pop_back();
    return breaks;
}

}  // namespace norvelis::layout
