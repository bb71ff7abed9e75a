#include "compare/schema_match.h"

#include <map>
#include <optional>

#include "base/text.h"
#include "compare/descriptions.h"
#include "compare/field_match.h"
#include "compare/name_match.h"
#include "compare/record_match.h"

namespace norvelis::compare {

namespace {

using dictionary::RecordContents;
using dictionary::SchemaContents;

SchemaMatch::Parts PartsOf(const SchemaContents& schema) {
    return {schema, SetsOf(schema), IndexesOf(schema), AreasOf(schema)};
}

template <class Things>
Renames NewNames(const Pairing& pairs, const Things& former, const Things& present) {
    Renames names;
    for (std::size_t f = 0; f < former.size(); ++f) {
        const auto p = pairs.PresentOf(f);
        if (p && !SameName(former[f].name, present[*p].name)) names.Add(former[f].name, present[*p].name);
    }
    return names;
}

/// The names that the parts of one schema have in the present one.
struct PresentNames {
    const SchemaMatch* match;  ///< Null for the present schema itself.

    std::string Record(std::string_view name) const {
        return std::string(match != nullptr ? match->RecordNames().Present(name) : name);
    }
    const Renames& Fields(std::string_view record) const {
        static const Renames none;
        return match != nullptr ? match->FieldNames(record) : none;
    }
};

Named NamedLink(const SetOfRecords& set, const PresentNames& names) {
    const auto owner = [&names](const std::string& name) { return names.Record(name); };
    const auto member = [&names](const Membership& each) { return names.Record(each.member); };
    return {set.name, SortedList(set.owners, owner) + '\t' + SortedList(set.members, member),
            SortedList(set.members, [&](const Membership& each) {
                return member(each) + ' ' + each.pointers + ' ' +
                       names.Fields(each.member).PresentWords(each.order);
            })};
}

Named NamedLink(const Index& index, const PresentNames& names) {
    const auto member = [&names](const IndexedRecord& each) { return names.Record(each.member); };
    return {index.name, SortedList(index.members, member),
            SortedList(index.members, [&](const IndexedRecord& each) {
                return member(each) + ' ' + KeyList(each, names.Fields(each.member)) + ' ' + each.sortOption;
            })};
}

template <class Link>
Pairing MatchLinks(const std::vector<Link>& former, const std::vector<Link>& present,
                   const SchemaMatch& match) {
    std::vector<Named> formers, presents;
    for (const Link& link : former) formers.push_back(NamedLink(link, {&match}));
    for (const Link& link : present) presents.push_back(NamedLink(link, {nullptr}));
    return MatchNamed(formers, presents);
}

}  // namespace

SchemaMatch::SchemaMatch(const SchemaContents& formerSchema, const SchemaContents& presentSchema)
    : former(PartsOf(formerSchema)),
      present(PartsOf(presentSchema)),
      records_(MatchRecords(formerSchema, presentSchema)),
      fields_(formerSchema.records.size(), Pairing(0, 0)),
      recordNames_(NewNames(records_, formerSchema.records, presentSchema.records)),
      sets_(0, 0),
      indexes_(0, 0),
      areas_(0, 0) {
    for (std::size_t f = 0; f < formerSchema.records.size(); ++f) {
        const auto p = records_.PresentOf(f);
        if (!p || formerSchema.records[f].fields == presentSchema.records[*p].fields) continue;
        fields_[f] = MatchFields(formerSchema.records[f], presentSchema.records[*p]);
        NameFields(f, presentSchema.records[*p]);
    }
    sets_ = MatchLinks(former.sets, present.sets, *this);
    setNames_ = NewNames(sets_, former.sets, present.sets);
    indexes_ = MatchLinks(former.indexes, present.indexes, *this);
    areas_ = MatchAreas();
    areaNames_ = NewNames(areas_, former.areas, present.areas);
}

void SchemaMatch::NameFields(std::size_t formerRecord, const RecordContents& presentRecord) {
    const RecordContents& record = former.schema.records[formerRecord];
    Renames names = NewNames(fields_[formerRecord], record.fields, presentRecord.fields);
    for (std::size_t i = 0; i < record.fields.size(); ++i) {
        const auto j = fields_[formerRecord].PresentOf(i);
        if (!j) continue;
        const auto before = Stem(record.fields[i].name, record.id);
        const auto now = Stem(presentRecord.fields[*j].name, presentRecord.id);
        if (!before.empty() && !now.empty() && !SameName(before, now)) names.Add(before, now);
    }
    if (!names.Empty()) fieldNames_.try_emplace(NameKey(record.name), std::move(names));
}

const Renames& SchemaMatch::FieldNames(std::string_view formerRecord) const {
    static const Renames none;
    const auto names = fieldNames_.find(NameKey(formerRecord));
    return names == fieldNames_.end() ? none : names->second;
}

// An area under a new name is one to which most of its records went, and few from elsewhere.
Pairing SchemaMatch::MatchAreas() const {
    Pairing pairs(former.areas.size(), present.areas.size());
    JoinEqualNames(former.areas, present.areas, pairs);
    std::unordered_map<std::size_t, std::size_t> areaOf;  // By the present record.
    std::vector<std::size_t> stayedIn(present.areas.size());
    for (std::size_t area = 0; area < present.areas.size(); ++area) {
        for (const std::size_t record : present.areas[area].records) {
            if (!records_.FormerOf(record)) continue;
            areaOf.emplace(record, area);
            ++stayedIn[area];
        }
    }
    for (std::size_t f = 0; f < former.areas.size(); ++f) {
        std::size_t stayed = 0;
        std::map<std::size_t, std::size_t> wentTo;
        for (const std::size_t record : former.areas[f].records) {
            const auto p = records_.PresentOf(record);
            if (!p) continue;
            ++stayed;
            if (const auto area = areaOf.find(*p); area != areaOf.end()) ++wentTo[area->second];
        }
        for (const auto& [area, count] : wentTo) {
            if (pairs.BothSingle(f, area) && 2 * count > stayed && 2 * count > stayedIn[area])
                pairs.Join(f, area);
        }
    }
    return pairs;
}

}  // namespace norvelis::compare
