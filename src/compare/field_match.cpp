#include "compare/field_match.h"

#include <algorithm>
#include <map>
#include <string>
#include <unordered_map>

#include "compare/values.h"

namespace norvelis::compare {

namespace {

using dictionary::FieldContents;
using dictionary::RecordContents;

/// A run of fields that have no counterpart, between two that have one or an end of the record.
struct Gap {
    std::size_t begin, end;
    std::optional<std::size_t> before, behind;  ///< Places in the former record of the fields around it.
};

class FieldMatch {
  public:
    FieldMatch(const RecordContents& former, const RecordContents& present)
        : former_(former), present_(present), pairs_(former.fields.size(), present.fields.size()) {
        for (const FieldContents& field : former.fields) formerKeys_.push_back(DefinitionKey(field));
        for (const FieldContents& field : present.fields) presentKeys_.push_back(DefinitionKey(field));
    }

    Pairing Run() {
        MatchNames();
        if (!SameText(former_.id, present_.id)) MatchStems();
        MatchGaps();
        return std::move(pairs_);
    }

  private:
    using Places = std::vector<std::size_t>;

    const FieldContents& Former(std::size_t f) const { return former_.fields[f]; }
    const FieldContents& Present(std::size_t p) const { return present_.fields[p]; }
    bool SameDefinition(std::size_t f, std::size_t p) const { return formerKeys_[f] == presentKeys_[p]; }
    bool SameStart(std::size_t f, std::size_t p) const { return SameText(Former(f).start, Present(p).start); }
    bool SameNeighbor(std::size_t f, std::size_t p) const {
        if (f == 0 || p == 0) return f == p;
        return SameName(Former(f - 1).name, Present(p - 1).name);
    }

    void MatchNames() {
        std::unordered_map<std::string, std::pair<Places, Places>> named;
        for (std::size_t p = 0; p < present_.fields.size(); ++p)
            named[NameKey(Present(p).name)].second.push_back(p);
        for (std::size_t f = 0; f < former_.fields.size(); ++f) {
            const auto entry = named.find(NameKey(Former(f).name));
            if (entry != named.end()) entry->second.first.push_back(f);
        }
        for (const auto& [name, places] : named) {
            const auto& [formers, presents] = places;
            JoinWhere(formers, presents,
                      [this](auto f, auto p) { return SameDefinition(f, p) && SameStart(f, p); });
            JoinWhere(formers, presents,
                      [this](auto f, auto p) { return SameDefinition(f, p) && SameNeighbor(f, p); });
            JoinWhere(formers, presents, [this](auto f, auto p) { return SameDefinition(f, p); });
            JoinWhere(formers, presents, [this](auto f, auto p) { return SameStart(f, p); });
            JoinWhere(formers, presents, [](auto, auto) { return true; });
        }
    }

    template <class Condition>
    void JoinWhere(const Places& formers, const Places& presents, Condition holds) {
        for (const std::size_t f : formers) {
            if (pairs_.PresentOf(f)) continue;
            const auto p = std::ranges::find_if(
                presents, [&](std::size_t each) { return !pairs_.FormerOf(each) && holds(f, each); });
            if (p != presents.end()) pairs_.Join(f, *p);
        }
    }

    // The record has another number, and its fields with it.
    void MatchStems() {
        std::unordered_map<std::string, std::size_t> byStem;
        for (std::size_t p = 0; p < present_.fields.size(); ++p) {
            const auto stem = Stem(Present(p).name, present_.id);
            if (!stem.empty() && !pairs_.FormerOf(p)) byStem.try_emplace(NameKey(stem), p);
        }
        for (std::size_t f = 0; f < former_.fields.size(); ++f) {
            const auto p = byStem.find(NameKey(Stem(Former(f).name, former_.id)));
            if (p != byStem.end() && pairs_.BothSingle(f, p->second)) pairs_.Join(f, p->second);
        }
    }

    void MatchGaps() {
        const std::vector<Gap> formers =
            Gaps(former_.fields.size(), [this](std::size_t f) -> std::optional<std::size_t> {
                return pairs_.PresentOf(f) ? std::optional(f) : std::nullopt;
            });
        const std::vector<Gap> presents =
            Gaps(present_.fields.size(), [this](std::size_t p) { return pairs_.FormerOf(p); });
        std::map<std::optional<std::size_t>, const Gap*> byBefore, byBehind;
        for (const Gap& gap : presents) {
            byBefore.try_emplace(gap.before, &gap);
            byBehind.try_emplace(gap.behind, &gap);
        }
        for (const Gap& gap : formers) {
            auto counterpart = byBefore.find(gap.before);
            if (counterpart == byBefore.end()) {
                counterpart = byBehind.find(gap.behind);
                if (counterpart == byBehind.end()) continue;
            }
            Align(gap, *counterpart->second);
        }
    }

    /// `formerPlace` says where the field at a place is in the former record; nothing for one in a gap.
    template <class FormerPlace>
    static std::vector<Gap> Gaps(std::size_t count, FormerPlace formerPlace) {
        std::vector<Gap> gaps;
        std::optional<std::size_t> before;
        for (std::size_t at = 0; at < count; ++at) {
            if (const auto place = formerPlace(at)) {
                before = place;
                continue;
            }
            const std::size_t begin = at;
            while (at < count && !formerPlace(at)) ++at;
            gaps.push_back({begin, at, before, at < count ? formerPlace(at) : std::nullopt});
            if (at < count) before = formerPlace(at);
        }
        return gaps;
    }

    /// How well a field would be another under a new name; 0 when it cannot be.
    double Fit(std::size_t f, std::size_t p) const {
        if (!pairs_.BothSingle(f, p) || !SameDefinition(f, p)) return 0;
        if (IsFiller(Former(f)) || IsFiller(Present(p))) return 0;
        return 2 + (SameStart(f, p) ? 0.5 : 0) + Likeness(Former(f).name, Present(p).name);
    }

    // The joins that fit best in sum and keep the order: an alignment of two sequences, best sums from the
    // ends of the gaps on.
    void Align(const Gap& former, const Gap& present) {
        const std::size_t rows = former.end - former.begin, columns = present.end - present.begin;
        std::vector<double> best((rows + 1) * (columns + 1), 0);
        std::vector<double> fits(rows * columns, 0);
        const auto bestAt = [&](std::size_t i, std::size_t j) -> double& {
            return best[i * (columns + 1) + j];
        };
        const auto fitAt = [&](std::size_t i, std::size_t j) -> double& { return fits[i * columns + j]; };
        for (std::size_t i = rows; i-- > 0;) {
            for (std::size_t j = columns; j-- > 0;) {
                fitAt(i, j) = Fit(former.begin + i, present.begin + j);
                bestAt(i, j) = std::max(bestAt(i + 1, j), bestAt(i, j + 1));
                if (fitAt(i, j) > 0)
                    bestAt(i, j) = std::max(bestAt(i, j), fitAt(i, j) + bestAt(i + 1, j + 1));
            }
        }
        for (std::size_t i = 0, j = 0; i < rows && j < columns;) {
            if (bestAt(i, j) == bestAt(i + 1, j)) {
                ++i;
            } else if (bestAt(i, j) == bestAt(i, j + 1)) {
                ++j;
            } else {
                pairs_.Join(former.begin + i++, present.begin + j++);
            }
        }
    }

    const RecordContents& former_;
    const RecordContents& present_;
    Pairing pairs_;
    std::vector<std::string> formerKeys_, presentKeys_;
};

}  // namespace

Pairing MatchFields(const RecordContents& former, const RecordContents& present) {
    return FieldMatch(former, present).Run();
}

}  // namespace norvelis::compare
