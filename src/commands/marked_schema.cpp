#include "commands/marked_schema.h"

#include <algorithm>
#include <optional>
#include <set>
#include <tuple>
#include <unordered_map>

#include "base/name_key.h"
#include "compare/values.h"

namespace norvelis::commands {

namespace {

using compare::Change;
using compare::Difference;
using compare::Kind;
using dictionary::SetContents;

Marking MarkingOf(const Difference& difference) {
    switch (difference.change) {
        case Change::Added:
            return {Mark::Added, "ADDED"};
        case Change::Removed:
            return {Mark::Removed, "REMOVED"};
        case Change::Renamed:
            return {Mark::Changed, "RENAMED, WAS " + difference.values.front().former};
        case Change::Changed:
        case Change::Moved:
            break;
    }
    return {Mark::Changed, "CHANGED"};
}

/// One set with one of its members.
using SetKey = std::tuple<std::string, std::string, std::string>;
SetKey KeyOf(const SetContents& set) {
    return {NameKey(set.name), NameKey(set.owner), NameKey(set.member)};
}

class Marker {
  public:
    explicit Marker(const compare::ComparedEditions& editions) : editions_(editions) {
        for (const Difference& each : editions.differences) {
            if (each.kind == Kind::Set || each.kind == Kind::Index)
                byName_.try_emplace(PartKey(each.kind, each.name), &each);
            if (each.change != Change::Renamed) continue;
            if (each.kind == Kind::Record) recordNames_.Add(each.values.front().former, each.name);
            if (each.kind == Kind::Set) setNames_.Add(each.values.front().former, each.name);
        }
    }

    MarkedSchema Mark() {
        result_.contents = editions_.present.contents;
        MarkRecords();
        MarkSets();
        MarkIndexes();
        return std::move(result_);
    }

  private:
    static std::string PartKey(Kind kind, std::string_view name) {
        return (kind == Kind::Set ? "set " : "index ") + NameKey(name);
    }

    // A record is changed when one of its fields is, be it only moved. Each is an entry of the drawing, so
    // that it has a box although no set may lead to it; the entries of the schema come last, for one gives
    // the page its name.
    void MarkRecords() {
        std::vector<std::string> entries;
        for (const Difference& each : editions_.differences) {
            if (each.kind == Kind::Record) {
                result_.marks.AddRecord(each.name, MarkingOf(each));
                entries.push_back(each.name);
            } else if (each.kind == Kind::Field) {
                result_.marks.AddRecord(each.where, {Mark::Changed, "CHANGED"});
                entries.push_back(each.where);
            }
        }
        auto& schema = result_.contents;
        schema.entryRecords.insert(schema.entryRecords.begin(), entries.begin(), entries.end());
        for (const auto& record : editions_.former.contents.records) {
            const auto* marking = result_.marks.OfRecord(record.name);
            if (marking != nullptr && marking->mark == Mark::Removed) schema.records.push_back(record);
        }
    }

    // Line by line, for a set may have lost or won a member.
    void MarkSets() {
        std::set<SetKey> present, former;
        for (const SetContents& set : editions_.present.contents.sets) present.insert(KeyOf(set));
        for (const SetContents& set : editions_.former.contents.sets) {
            const SetContents now{std::string(setNames_.Present(set.name)),
                                  std::string(recordNames_.Present(set.owner)),
                                  std::string(recordNames_.Present(set.member)), set.connection};
            former.insert(KeyOf(now));
            if (present.contains(KeyOf(now))) continue;
            result_.contents.sets.push_back(now);
            result_.marks.AddSet(now.name, now.owner, now.member, {Mark::Removed, "REMOVED"});
        }
        for (const SetContents& set : editions_.present.contents.sets) {
            const auto marking = former.contains(KeyOf(set)) ? MarkingOfLine(set.name)
                                                             : std::optional(Marking{Mark::Added, "ADDED"});
            if (marking) result_.marks.AddSet(set.name, set.owner, set.member, *marking);
        }
    }

    /// Of a line that has stayed: none when its set has only other members.
    std::optional<Marking> MarkingOfLine(const std::string& set) const {
        const auto difference = byName_.find(PartKey(Kind::Set, set));
        if (difference == byName_.end()) return std::nullopt;
        const auto isOfLine = [](const auto& value) { return value.what != "members"; };
        if (std::ranges::none_of(difference->second->values, isOfLine)) return std::nullopt;
        return MarkingOf(*difference->second);
    }

    // The notes of indexes have no outline to mark: the words are behind the name.
    void MarkIndexes() {
        for (auto& index : result_.contents.indexes) {
            const auto difference = byName_.find(PartKey(Kind::Index, index.name));
            if (difference != byName_.end()) index.name += " (" + MarkingOf(*difference->second).words + ")";
        }
        for (const auto& index : editions_.former.contents.indexes) {
            const auto difference = byName_.find(PartKey(Kind::Index, index.name));
            if (difference == byName_.end() || difference->second->change != Change::Removed) continue;
            auto& removed = result_.contents.indexes.emplace_back(index);
            removed.name += " (REMOVED)";
            removed.member = recordNames_.Present(index.member);
        }
    }

    const compare::ComparedEditions& editions_;
    MarkedSchema result_;
    std::unordered_map<std::string, const Difference*> byName_;
    compare::Renames recordNames_, setNames_;
};

}  // namespace

MarkedSchema MarkSchema(const compare::ComparedEditions& editions) {
    return Marker(editions).Mark();
}

}  // namespace norvelis::commands
