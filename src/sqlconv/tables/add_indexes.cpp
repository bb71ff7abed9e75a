#include <algorithm>

#include "base/name_key.h"
#include "base/text.h"
#include "sqlconv/tables/build.h"

namespace norvelis::tables {

namespace {

/// The columns of a set's foreign key in the member's table; none for a set without an owner.
const ForeignKey* OwnerOf(const RecordPlan& member, std::string_view set) {
    const auto& keys = member.table.foreignKeys;
    const auto found = std::ranges::find_if(keys, [set](const auto& key) { return SameName(key.set, set); });
    return found == keys.end() ? nullptr : &*found;
}

/// A sort key's name is taken from a column early, so that the last of 30 characters is lost.
KeyColumns ColumnsOfSortKey(const RecordPlan& member, std::string_view name) {
    constexpr std::size_t kCut = 29;
    KeyColumns found = ColumnsOfKey(member, name);
    return found.why.empty() || name.size() < kCut ? found : ColumnsOfCutKey(member, name);
}

class IndexAdder {
  public:
    IndexAdder(Build& build, const dictionary::IndexContents& contents, RecordPlan& member)
        : build_(build), contents_(contents), member_(member) {}

    void Add() {
        Index index;
        index.name = IndexName(build_, contents_.name, contents_.member);
        AddOwner(index);
        std::string refusal = AddKeys(index);
        if (refusal.empty()) {
            index.unique = Trim(contents_.sortOption).ends_with("DN");
            CheckOptional(index);
            std::string became =
                (index.unique ? "unique index " : "index ") + index.name + " on " + member_.table.name;
            refusal = AddIndex(build_, member_.table, std::move(index));
            if (refusal.empty()) return Report(became, why_);
        } else {
            member_.table.notes.push_back("no index " + contents_.name + ": " + refusal);
        }
        lookAt_ = true;
        Report({}, refusal);
    }

  private:
    void Report(const std::string& became, const std::string& why) {
        build_.outcomes.push_back(
            {Outcome::Subject::Index, contents_.member, contents_.name, became, why, lookAt_, {}});
    }

    void AddOwner(Index& index) {
        const ForeignKey* owner = OwnerOf(member_, contents_.name);
        owned_ = owner != nullptr;
        if (!owned_) return;
        for (const auto& column : owner->columns) {
            index.keys.push_back({column});
            if (!member_.table.Find(column)->required) index.optional.push_back(column);
        }
    }

    std::string AddKeys(Index& index) const {
        for (const auto& [name, order] : contents_.keys) {
            const KeyColumns found = ColumnsOfSortKey(member_, name);
            if (!found.why.empty()) return found.why;
            for (const auto& column : found.columns)
                index.keys.push_back({column, UpperCase(order).starts_with("DSC")});
        }
        return contents_.keys.empty() ? "it has no keys" : "";
    }

    void CheckOptional(const Index& index) {
        const std::string_view membership = Trim(contents_.sortOption).substr(0, 2);
        const bool some = membership == "OA" || membership == "OM" || membership == "MM";
        if (owned_ || !index.unique || !some) return;
        lookAt_ = true;
        why_ = "rows outside the index must keep to its unique key, too";
    }

    Build& build_;
    const dictionary::IndexContents& contents_;
    RecordPlan& member_;
    bool owned_ = false, lookAt_ = false;
    std::string why_;
};

bool HasRow(const Build& build, const std::string& index, const std::string& member) {
    return std::ranges::any_of(build.contents.indexes, [&](const auto& row) {
        return SameName(row.name, index) && SameName(row.member, member);
    });
}

/// A record may name an index of which the dictionary has no keys.
void NoteIndexesWithoutKeys(Build& build, RecordPlan& plan) {
    for (const auto& stored : plan.record->indexes) {
        const std::string name(Trim(stored));
        if (name.empty() || HasRow(build, name, plan.record->name)) continue;
        const std::string why = "the dictionary has no keys of it";
        plan.table.notes.push_back("no index " + name + ": " + why);
        build.outcomes.push_back({Outcome::Subject::Index, plan.record->name, name, {}, why, true, {}});
    }
}

/// Records are found by a CALC key, whether it is unique or not.
void AddCalcIndex(Build& build, RecordPlan& plan) {
    const auto& record = *plan.record;
    if (record.mode != "CALC") return;
    const bool unique = Trim(record.dn) == "DN";
    if (unique && !plan.table.columns.front().identity) return;  // It is the primary key.
    Index index;
    index.name = "ix_calc_" + build.names.Of(record.name);
    const auto words = KeyWords(record);
    std::string refusal = words.empty() ? "it is empty" : "";
    for (const auto& word : words) {
        const KeyColumns found = ColumnsOfKey(plan, word);
        const bool mayBeCut = unique && &word == &words.back() && !index.keys.empty();
        if (!found.why.empty() && !mayBeCut) refusal = found.why;
        for (const auto& column : found.columns) index.keys.push_back({column});
    }
    if (refusal.empty()) refusal = AddIndex(build, plan.table, std::move(index));
    if (refusal.empty()) {
        plan.keyReason += ", which has an index";
        return;
    }
    plan.lookAt = true;
    plan.keyReason += "; no index on it, " + refusal;
    plan.table.notes.push_back("no index on the CALC key " + record.key + ": " + refusal);
}

}  // namespace

void AddIndexes(Build& build) {
    for (const auto& index : build.contents.indexes) {
        RecordPlan* member = build.PlanOf(index.member);
        if (member != nullptr) {
            IndexAdder(build, index, *member).Add();
        } else {
            build.outcomes.push_back({Outcome::Subject::Index,
                                      index.member,
                                      index.name,
                                      {},
                                      "there is no table for its member " + index.member,
                                      true,
                                      {}});
        }
    }
    for (RecordPlan& plan : build.plans) {
        NoteIndexesWithoutKeys(build, plan);
        AddCalcIndex(build, plan);
    }
}

}  // namespace norvelis::tables
