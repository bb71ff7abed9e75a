#include <algorithm>
#include <unordered_set>

#include "base/name_key.h"
#include "base/text.h"
#include "base/words.h"
#include "sqlconv/tables/build.h"

namespace norvelis::tables {

namespace {

/// What the second line of a connection says: "MA ASC MAKER-NAME DL", "OA LAST", "MA SORTED DN".
struct Membership {
    std::string words;  ///< MA, OA, MM or OM; empty when it says something else.
    std::string order;  ///< NEXT, LAST ..., ASC, DSC, SORTED; empty when it is cut off.
    std::string key, duplicates;
};

Membership ReadMembership(std::string_view connection) {
    const auto line = connection.find('\n');
    std::string_view rest = line == std::string_view::npos ? std::string_view() : connection.substr(line + 1);
    rest = rest.substr(0, rest.find_first_of("\r\n"));
    Membership membership;
    membership.words = UpperCase(NextWord(rest));
    if (membership.words == "MANDATORY" || membership.words == "OPTIONAL") {
        const std::string second = UpperCase(NextWord(rest));
        membership.words = membership.words.substr(0, 1) + (second.empty() ? "" : second.substr(0, 1));
    }
    for (const char* known : {"MA", "OA", "MM", "OM"}) {
        if (membership.words != known) continue;
        membership.order = UpperCase(NextWord(rest));
        membership.key = NextWord(rest);
        membership.duplicates = UpperCase(NextWord(rest));
        return membership;
    }
    return {};
}

class SetAdder {
  public:
    SetAdder(Build& build, const dictionary::SetContents& set, const RecordPlan& owner, RecordPlan& member)
        : build_(build),
          set_(set),
          owner_(owner),
          member_(member),
          membership_(ReadMembership(set.connection)) {}

    void Add() {
        AddForeignKey();
        AddOrder();
        build_.outcomes.push_back({Outcome::Subject::Set,
                                   set_.member,
                                   set_.name,
                                   "foreign key " + key_.name + " of " + member_.table.name + " to " +
                                       key_.owner + (required_ ? ", required" : ", may be null") + order_,
                                   why_,
                                   lookAt_,
                                   {}});
        member_.table.foreignKeys.push_back(std::move(key_));
    }

  private:
    void LookAt(const std::string& words) {
        why_ += why_.empty() ? words : "; " + words;
        lookAt_ = true;
        member_.table.notes.push_back("set " + set_.name + ": " + words);
    }

    void AddForeignKey() {
        required_ = membership_.words == "MA";
        if (membership_.words.empty())
            LookAt("the dictionary does not say whether members must have an owner");
        const std::string set = build_.names.Of(set_.name);
        for (const auto& name : owner_.table.primaryKey) {
            Column column = *owner_.table.Find(name);
            key_.ownerColumns.push_back(name);
            column.name = member_.columns.Take(build_.names, {set + "_" + name});
            column.item = Column::kAdded;
            column.identity = column.notNegative = false;
            column.required = required_;
            column.comment = "Set " + set_.name + ": owner in " + owner_.table.name;
            key_.columns.push_back(column.name);
            member_.table.columns.push_back(std::move(column));
        }
        key_.name = build_.objects.Take(build_.names, {"fk_" + set + "_" + build_.names.Of(set_.member)});
        key_.set = set_.name;
        key_.owner = owner_.table.name;
    }

    void AddOrder() {
        Index index;
        index.name = IndexName(build_, set_.name, set_.member);
        for (const auto& column : key_.columns) index.keys.push_back({column});
        if (!required_) index.optional = key_.columns;
        if (membership_.order == "SORTED" && IsIndexed()) return;  // The index set's own row says the order.
        if (membership_.order == "ASC" || membership_.order == "DSC") {
            AddSortKey(index);
        } else if (membership_.order == "SORTED" || membership_.order.empty()) {
            LookAt("its order is not in the dictionary");
        } else {
            AddPlace(index);
        }
        if (const auto refusal = AddIndex(build_, member_.table, std::move(index)); !refusal.empty())
            LookAt("no index, " + refusal);
    }

    bool IsIndexed() const {
        return std::ranges::any_of(build_.contents.indexes, [this](const auto& index) {
            return SameName(index.name, set_.name) && SameName(index.member, set_.member);
        });
    }

    void AddSortKey(Index& index) {
        const KeyColumns found = ColumnsOfCutKey(member_, membership_.key);
        if (!found.why.empty()) return LookAt("its sort key cannot be told, " + found.why);
        const bool descending = membership_.order == "DSC";
        for (const auto& column : found.columns) index.keys.push_back({column, descending});
        index.unique = membership_.duplicates == "DN";
        order_ = std::string(index.unique ? "; unique order by " : "; order by ") + membership_.key +
                 (descending ? ", descending" : "");
        if (membership_.duplicates.empty()) LookAt("whether its sort key allows duplicates is cut off");
    }

    /// Members in the order of a person's making have a column for their place.
    void AddPlace(Index& index) {
        if (!build_.options.orderColumns) {
            member_.table.notes.push_back("set " + set_.name + ": its order is " + membership_.order);
            return;
        }
        Column place;
        place.name = member_.columns.Take(build_.names, {build_.names.Of(set_.name) + "_seq"});
        place.type = {ColumnType::Kind::BigInteger};
        place.comment =
            "Set " + set_.name + ": place among the members, which are added " + membership_.order;
        index.keys.push_back({place.name});
        order_ = "; order " + membership_.order + " by " + place.name;
        member_.table.columns.push_back(std::move(place));
    }

    Build& build_;
    const dictionary::SetContents& set_;
    const RecordPlan& owner_;
    RecordPlan& member_;
    const Membership membership_;
    ForeignKey key_;
    bool required_ = false, lookAt_ = false;
    std::string order_, why_;
};

}  // namespace

std::string IndexName(const Build& build, std::string_view set, std::string_view member) {
    return "ix_" + build.names.Of(set) + "_" + build.names.Of(member);
}

void AddSets(Build& build) {
    std::unordered_set<std::string> seen;
    for (const auto& set : build.contents.sets) {
        const auto leaveOut = [&](const std::string& why) {
            build.outcomes.push_back({Outcome::Subject::Set, set.member, set.name, {}, why, true, {}});
        };
        if (!seen.insert(NameKey(set.name) + "\n" + NameKey(set.owner) + "\n" + NameKey(set.member)).second) {
            leaveOut("the dictionary has it twice");
            continue;
        }
        const RecordPlan* owner = build.PlanOf(set.owner);
        RecordPlan* member = build.PlanOf(set.member);
        if (owner == nullptr) leaveOut("there is no table for its owner " + set.owner);
        if (owner != nullptr && member == nullptr) leaveOut("there is no table for its member " + set.member);
        if (owner == nullptr && member != nullptr)
            member->table.notes.push_back("set " + set.name + ": no foreign key, its owner " + set.owner +
                                          " is no table");
        if (owner != nullptr && member != nullptr) SetAdder(build, set, *owner, *member).Add();
    }
}

}  // namespace norvelis::tables
