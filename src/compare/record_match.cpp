#include "compare/record_match.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <unordered_map>

#include "compare/values.h"

namespace norvelis::compare {

namespace {

using dictionary::FieldContents;
using dictionary::RecordContents;
using dictionary::SchemaContents;

// What counts how much, and how much of it makes two records one.
constexpr double kFieldsWeight = 0.6, kSetsWeight = 0.3, kIdWeight = 0.1;
constexpr double kEnough = 0.45;
// Of fields with names of their own that stayed, of such but for the record's number, of a layout alone.
constexpr double kSameNames = 1, kSameStems = 0.7, kSameLayout = 0.35;
constexpr double kNearlyAll = 0.8;
// A set between the same roles at another name says less than the set itself.
constexpr double kSamePlace = 0.5;

/// What is looked at of a record that has no counterpart of its name.
struct Traits {
    std::size_t fieldCount = 0;  ///< Without fillers.
    std::set<std::string> fieldNames, stems, roles, places;
    std::vector<std::string> layout;  ///< Definition and start of all fields.
    std::string id;

    template <class Use>
    void ForEachKey(Use use) const {
        for (const auto& name : fieldNames) use("field " + name);
        for (const auto& stem : stems) use("stem " + stem);
        for (const auto& role : roles) use("set " + role);
        for (const auto& place : places) use("place " + place);
        if (!id.empty()) use("id " + id);
    }
};

using AllTraits = std::map<std::size_t, Traits>;  ///< By the record's place in its schema.

Traits TraitsOf(const RecordContents& record) {
    Traits traits;
    for (const FieldContents& field : record.fields) {
        const std::string definition = DefinitionKey(field);
        traits.layout.push_back(definition + '\t' + Plain(field.start));
        if (IsFiller(field)) continue;
        ++traits.fieldCount;
        traits.fieldNames.insert(NameKey(field.name));
        const auto stem = Stem(field.name, record.id);
        if (!stem.empty()) traits.stems.insert(NameKey(stem) + '\t' + definition);
    }
    traits.id = UpperCase(Plain(record.id));
    return traits;
}

/// The traits of the records whose place is `single`, with the sets that they own or are members of.
template <class Single>
AllTraits CollectTraits(const SchemaContents& schema, Single single) {
    AllTraits all;
    std::unordered_map<std::string, Traits*> byName;
    for (std::size_t at = 0; at < schema.records.size(); ++at) {
        if (!single(at)) continue;
        Traits& traits = all.emplace(at, TraitsOf(schema.records[at])).first->second;
        byName.try_emplace(NameKey(schema.records[at].name), &traits);
    }
    const auto add = [&byName](std::string_view record, const char* role, std::string_view set,
                               std::string_view other) {
        const auto traits = byName.find(NameKey(record));
        if (traits == byName.end()) return;
        traits->second->roles.insert(role + NameKey(set));
        traits->second->places.insert(role + NameKey(other));
    };
    for (const auto& set : schema.sets) {
        add(set.owner, "owner of ", set.name, set.member);
        add(set.member, "member of ", set.name, set.owner);
    }
    return all;
}

double ShareInCommon(const std::set<std::string>& a, const std::set<std::string>& b, std::size_t all) {
    if (all == 0) return 0;
    const auto common = std::ranges::count_if(a, [&b](const std::string& key) { return b.contains(key); });
    return static_cast<double>(common) / static_cast<double>(all);
}

double LayoutInCommon(const Traits& a, const Traits& b) {
    const std::size_t longer = std::max(a.layout.size(), b.layout.size());
    std::size_t equal = 0;
    for (std::size_t i = 0; i < std::min(a.layout.size(), b.layout.size()); ++i)
        equal += a.layout[i] == b.layout[i];
    const double share = longer == 0 ? 0 : static_cast<double>(equal) / static_cast<double>(longer);
    return share >= kNearlyAll ? share : 0;
}

/// From 0 to 1; kinds of evidence that neither record can give do not count.
double Sameness(const Traits& a, const Traits& b) {
    double sum = 0, weights = 0;
    const auto count = [&](bool given, double weight, double share) {
        if (!given) return;
        weights += weight;
        sum += weight * share;
    };
    const std::size_t fields = std::max(a.fieldCount, b.fieldCount);
    const double fieldsInCommon =
        std::max({kSameNames * ShareInCommon(a.fieldNames, b.fieldNames, fields),
                  kSameStems * ShareInCommon(a.stems, b.stems, fields), kSameLayout * LayoutInCommon(a, b)});
    const double setsInCommon =
        std::max(ShareInCommon(a.roles, b.roles, std::max(a.roles.size(), b.roles.size())),
                 kSamePlace * ShareInCommon(a.places, b.places, std::max(a.places.size(), b.places.size())));
    count(!a.layout.empty() || !b.layout.empty(), kFieldsWeight, fieldsInCommon);
    count(!a.roles.empty() || !b.roles.empty(), kSetsWeight, setsInCommon);
    if (sum == 0) return 0;
    count(!a.id.empty() && !b.id.empty(), kIdWeight, a.id == b.id ? 1 : 0);
    return sum / weights;
}

/// Pairs that have something in common which few others have: looking at all pairs of two large schemas would
/// take minutes.
std::set<std::pair<std::size_t, std::size_t>> PairsWorthALook(const AllTraits& former,
                                                              const AllTraits& present) {
    constexpr std::size_t kFew = 8;
    std::unordered_map<std::string, std::pair<std::vector<std::size_t>, std::vector<std::size_t>>> holders;
    for (const auto& each : former)
        each.second.ForEachKey([&](const std::string& key) { holders[key].first.push_back(each.first); });
    for (const auto& each : present)
        each.second.ForEachKey([&](const std::string& key) { holders[key].second.push_back(each.first); });
    std::set<std::pair<std::size_t, std::size_t>> pairs;
    for (const auto& [key, both] : holders) {
        if (both.first.size() > kFew || both.second.size() > kFew) continue;
        for (const std::size_t f : both.first) {
            for (const std::size_t p : both.second) pairs.emplace(f, p);
        }
    }
    return pairs;
}

}  // namespace

Pairing MatchRecords(const SchemaContents& former, const SchemaContents& present) {
    Pairing pairs(former.records.size(), present.records.size());
    JoinEqualNames(former.records, present.records, pairs);
    const AllTraits formers = CollectTraits(former, [&](std::size_t f) { return !pairs.PresentOf(f); });
    const AllTraits presents = CollectTraits(present, [&](std::size_t p) { return !pairs.FormerOf(p); });
    std::vector<std::tuple<double, std::size_t, std::size_t>> candidates;  // The best first.
    for (const auto& [f, p] : PairsWorthALook(formers, presents)) {
        const double sameness = Sameness(formers.at(f), presents.at(p));
        if (sameness >= kEnough) candidates.emplace_back(-sameness, f, p);
    }
    std::ranges::sort(candidates);
    for (const auto& [sameness, f, p] : candidates) {
        if (pairs.BothSingle(f, p)) pairs.Join(f, p);
    }
    return pairs;
}

}  // namespace norvelis::compare
