#include "compare/comparison.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "compare/descriptions.h"
#include "compare/schema_match.h"
#include "compare/values.h"

namespace norvelis::compare {

namespace {

using dictionary::FieldContents;
using dictionary::RecordContents;
using dictionary::SchemaContents;

constexpr const char* kName = "name";
constexpr const char* kPosition = "position";

/// What two things that are one differ in.
class Values {
  public:
    /// Nothing when the former text is the present one but for new names: `renamed` has these in it.
    void Compare(std::string what, std::string_view former, std::string_view present,
                 std::string_view renamed) {
        if (!SameText(renamed, present)) Add(std::move(what), former, present);
    }
    void Compare(std::string what, std::string_view former, std::string_view present) {
        Compare(std::move(what), former, present, former);
    }
    void Add(std::string what, std::string_view former, std::string_view present) {
        values_.push_back({std::move(what), Plain(former), Plain(present)});
    }
    std::vector<ChangedValue> Take() { return std::move(values_); }

  private:
    std::vector<ChangedValue> values_;
};

bool IsMoved(const FieldContents& former, const FieldContents& present,
             const std::vector<ChangedValue>& values) {
    return values.size() == 1 && values.front().what == kPosition &&
           Val(former.end) - Val(former.start) == Val(present.end) - Val(present.start);
}

/// The next member of that name that has not been taken; a damaged report may have a member twice.
template <class Member>
const Member* TakeMember(std::vector<const Member*>& members, std::string_view name) {
    const auto place =
        std::ranges::find_if(members, [&](const Member* each) { return SameName(each->member, name); });
    if (place == members.end()) return nullptr;
    const Member* member = *place;
    members.erase(place);
    return member;
}

/// Gathers the differences of two schemas whose parts have been matched.
class Differences {
  public:
    explicit Differences(const SchemaMatch& match) : match_(match) {}

    Comparison Take() {
        const auto &former = match_.former, &present = match_.present;
        CompareSchemas(former.schema, present.schema);
        CompareAll(Kind::Record, match_.Records(), former.schema.records, present.schema.records,
                   [this](std::size_t f, std::size_t p) { CompareRecords(f, p); });
        CompareAll(Kind::Set, match_.Sets(), former.sets, present.sets,
                   [&](std::size_t f, std::size_t p) { CompareSets(former.sets[f], present.sets[p]); });
        CompareAll(
            Kind::Index, match_.Indexes(), former.indexes, present.indexes,
            [&](std::size_t f, std::size_t p) { CompareIndexes(former.indexes[f], present.indexes[p]); });
        CompareAll(Kind::Area, match_.Areas(), former.areas, present.areas,
                   [&](std::size_t f, std::size_t p) {
                       AddChanges(Kind::Area, former.areas[f], present.areas[p], {});
                   });
        return std::move(differences_);
    }

  private:
    template <class Things, class CompareTwo>
    void CompareAll(Kind kind, const Pairing& pairs, const Things& former, const Things& present,
                    CompareTwo compareTwo) {
        for (std::size_t p = 0; p < present.size(); ++p) {
            if (const auto f = pairs.FormerOf(p)) {
                compareTwo(*f, p);
            } else {
                differences_.push_back({kind,
                                        Change::Added,
                                        Plain(present[p].name),
                                        PlaceOf(present[p]),
                                        {{{}, {}, Description(present[p])}}});
            }
        }
        for (std::size_t f = 0; f < former.size(); ++f) {
            if (pairs.PresentOf(f)) continue;
            differences_.push_back({kind,
                                    Change::Removed,
                                    Plain(former[f].name),
                                    PlaceOf(former[f]),
                                    {{{}, Description(former[f]), {}}}});
        }
    }

    /// The difference that was added; null when there is none.
    template <class Thing>
    Difference* AddChanges(Kind kind, const Thing& former, const Thing& present, Values values) {
        std::vector<ChangedValue> changes = values.Take();
        Change change = Change::Changed;
        if (!SameName(former.name, present.name)) {
            change = Change::Renamed;
            changes.insert(changes.begin(), {kName, Plain(former.name), Plain(present.name)});
        }
        if (changes.empty()) return nullptr;
        return &differences_.emplace_back(
            Difference{kind, change, Plain(present.name), PlaceOf(present), std::move(changes)});
    }

    void CompareSchemas(const SchemaContents& former, const SchemaContents& present) {
        Values values;
        values.Compare("release", former.release, present.release);
        values.Compare("version", former.version, present.version);
        values.Compare("date", former.date, present.date);
        AddChanges(Kind::Schema, former, present, std::move(values));
    }

    void CompareRecords(std::size_t f, std::size_t p) {
        const RecordContents& former = match_.former.schema.records[f];
        const RecordContents& present = match_.present.schema.records[p];
        const Renames& keyNames =
            SameText(former.mode, "VIA") ? match_.SetNames() : match_.FieldNames(former.name);
        Values values;
        values.Compare("id", former.id, present.id);
        values.Compare("mode", former.mode, present.mode);
        values.Compare("key", former.key, present.key, keyNames.PresentWords(former.key));
        values.Compare("duplicates", former.dn, present.dn);
        values.Compare("area", former.area, present.area, match_.AreaNames().Present(former.area));
        values.Compare("length", Length(former), Length(present));
        AddChanges(Kind::Record, former, present, std::move(values));

        if (former.fields == present.fields) return;  // As a rule.
        const std::size_t firstField = differences_.size();
        CompareAll(Kind::Field, match_.Fields(f), former.fields, present.fields,
                   [&](std::size_t i, std::size_t j) { CompareFields(former.fields[i], present.fields[j]); });
        for (std::size_t i = firstField; i < differences_.size(); ++i)
            differences_[i].where = Plain(present.name);
    }

    void CompareFields(const FieldContents& former, const FieldContents& present) {
        Values values;
        values.Compare("level", former.level, present.level);
        values.Compare("picture", Picture(former), Picture(present));
        values.Compare("usage", former.usage, present.usage);
        values.Compare(kPosition, Position(former), Position(present));
        Difference* difference = AddChanges(Kind::Field, former, present, std::move(values));
        if (difference != nullptr && IsMoved(former, present, difference->values))
            difference->change = Change::Moved;
    }

    void CompareSets(const SetOfRecords& former, const SetOfRecords& present) {
        const auto name = [](const std::string& owner) { return owner; };
        const auto now = [this](const std::string& owner) { return match_.RecordNames().Present(owner); };
        Values values;
        if (SortedList(former.owners, now) != SortedList(present.owners, name))
            values.Add("owner", PlaceOf(former), PlaceOf(present));
        ForEachMember(former, present, values,
                      [&](const Membership& before, const Membership& after, const std::string& of) {
                          values.Compare("pointers" + of, before.pointers, after.pointers);
                          values.Compare("order" + of, before.order, after.order,
                                         match_.FieldNames(before.member).PresentWords(before.order));
                      });
        AddChanges(Kind::Set, former, present, std::move(values));
    }

    void CompareIndexes(const Index& former, const Index& present) {
        Values values;
        ForEachMember(former, present, values,
                      [&](const IndexedRecord& before, const IndexedRecord& after, const std::string& of) {
                          values.Compare("keys" + of, KeyList(before), KeyList(after),
                                         KeyList(before, match_.FieldNames(before.member)));
                          values.Compare("order" + of, before.sortOption, after.sortOption);
                      });
        AddChanges(Kind::Index, former, present, std::move(values));
    }

    /// By their former names, which may be the present names of other records; the own present ones are then
    /// said behind them.
    template <class Link>
    std::string FormerMembers(const Link& former, const Link& present) const {
        const auto isNamedNow = [&present](std::string_view name) {
            return std::ranges::any_of(present.members,
                                       [&](const auto& each) { return SameName(each.member, name); });
        };
        return List(former.members, [&](const auto& each) {
            const std::string_view now = match_.RecordNames().Present(each.member);
            if (SameName(now, each.member) || !isNamedNow(each.member)) return each.member;
            return each.member + " (now " + std::string(now) + ")";
        });
    }

    /// The members as a value when they are not the same; calls `compareTwo` for those that have stayed, with
    /// words for which one it is when there are several.
    template <class Link, class CompareTwo>
    void ForEachMember(const Link& former, const Link& present, Values& values, CompareTwo compareTwo) const {
        const auto name = [](const auto& each) { return each.member; };
        const auto now = [this](const auto& each) { return match_.RecordNames().Present(each.member); };
        if (SortedList(former.members, now) != SortedList(present.members, name))
            values.Add("members", FormerMembers(former, present), List(present.members, name));
        const bool several = former.members.size() > 1 || present.members.size() > 1;
        std::vector<const typename decltype(Link::members)::value_type*> left;
        for (const auto& member : present.members) left.push_back(&member);
        for (const auto& before : former.members) {
            const auto* after = TakeMember(left, now(before));
            if (after != nullptr)
                compareTwo(before, *after, several ? " of " + after->member : std::string());
        }
    }

    const SchemaMatch& match_;
    Comparison differences_;
};

}  // namespace

Comparison Compare(const SchemaContents& former, const SchemaContents& present) {
    const SchemaMatch match(former, present);
    return Differences(match).Take();
}

}  // namespace norvelis::compare
