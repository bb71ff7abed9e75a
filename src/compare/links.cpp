#include "compare/links.h"

#include <algorithm>
#include <unordered_map>

#include "base/text.h"

namespace norvelis::compare {

namespace {

/// The thing of that name in a list, added when it is new.
template <class Thing>
class ByName {
  public:
    Thing& operator[](std::string_view name) {
        const auto [place, isNew] = places_.try_emplace(NameKey(name), things_.size());
        if (isNew) things_.emplace_back().name = Plain(name);
        return things_[place->second];
    }
    std::vector<Thing> Take() { return std::move(things_); }

  private:
    std::vector<Thing> things_;
    std::unordered_map<std::string, std::size_t> places_;
};

}  // namespace

std::vector<SetOfRecords> SetsOf(const dictionary::SchemaContents& schema) {
    ByName<SetOfRecords> sets;
    for (const dictionary::SetContents& row : schema.sets) {
        SetOfRecords& set = sets[row.name];
        const auto isOwner = [&row](const std::string& owner) { return SameName(owner, row.owner); };
        if (std::ranges::none_of(set.owners, isOwner)) set.owners.push_back(Plain(row.owner));
        const std::size_t lineEnd = std::min(row.connection.find('\n'), row.connection.size());
        const std::string_view connection = row.connection;
        set.members.push_back(
            {Plain(row.member), Plain(connection.substr(0, lineEnd)), Plain(connection.substr(lineEnd))});
    }
    return sets.Take();
}

std::vector<Index> IndexesOf(const dictionary::SchemaContents& schema) {
    ByName<Index> indexes;
    for (const dictionary::IndexContents& row : schema.indexes)
        indexes[row.name].members.push_back({Plain(row.member), Plain(row.sortOption), row.keys});
    for (const dictionary::RecordContents& record : schema.records) {
        for (const std::string& name : record.indexes) {
            if (Trim(name).empty()) continue;
            Index& index = indexes[name];
            const auto isMember = [&record](const IndexedRecord& each) {
                return SameName(each.member, record.name);
            };
            if (std::ranges::none_of(index.members, isMember))
                index.members.push_back({Plain(record.name), {}, {}});
        }
    }
    return indexes.Take();
}

std::vector<Area> AreasOf(const dictionary::SchemaContents& schema) {
    ByName<Area> areas;
    for (std::size_t at = 0; at < schema.records.size(); ++at) {
        const std::string& name = schema.records[at].area;
        if (!Trim(name).empty()) areas[name].records.push_back(at);
    }
    return areas.Take();
}

}  // namespace norvelis::compare
