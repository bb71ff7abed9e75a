#include "compare/name_match.h"

#include <algorithm>
#include <tuple>
#include <unordered_map>

#include "compare/values.h"

namespace norvelis::compare {

namespace {

constexpr double kNearlyOneName = 0.6;

struct Candidate {
    bool sameContent;
    double likeness;
    std::size_t former, present;
};

}  // namespace

Pairing MatchNamed(const std::vector<Named>& former, const std::vector<Named>& present) {
    Pairing pairs(former.size(), present.size());
    JoinEqualNames(former, present, pairs);
    std::unordered_map<std::string, std::vector<std::size_t>> byEnds;
    for (std::size_t p = 0; p < present.size(); ++p) {
        if (!pairs.FormerOf(p)) byEnds[present[p].ends].push_back(p);
    }
    std::vector<Candidate> candidates;
    for (std::size_t f = 0; f < former.size(); ++f) {
        const auto sameEnds = pairs.PresentOf(f) ? byEnds.end() : byEnds.find(former[f].ends);
        if (sameEnds == byEnds.end()) continue;
        for (const std::size_t p : sameEnds->second) {
            const Candidate candidate{SameText(former[f].content, present[p].content),
                                      Likeness(former[f].name, present[p].name), f, p};
            if (candidate.sameContent || candidate.likeness >= kNearlyOneName)
                candidates.push_back(candidate);
        }
    }
    std::ranges::sort(candidates, [](const Candidate& a, const Candidate& b) {
        return std::tuple(!a.sameContent, -a.likeness, a.former, a.present) <
               std::tuple(!b.sameContent, -b.likeness, b.former, b.present);
    });
    for (const Candidate& each : candidates) {
        if (pairs.BothSingle(each.former, each.present)) pairs.Join(each.former, each.present);
    }
    return pairs;
}

}  // namespace norvelis::compare
