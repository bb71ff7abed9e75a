#include "browse/record_list.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/paths.h"
#include "base/text.h"
#include "core/places.h"
#include "dictionary/records.h"
#include "dictionary/schemas.h"
#include "dictionary/sets.h"

namespace norvelis {

namespace {

/// The names already listed, ten at most: the repeats of an eleventh are listed again. A free slot is an
/// empty name: a row without a name counts as listed while there is one.
class NameMemory {
  public:
    bool Holds(std::string_view name) const { return std::ranges::find(slots_, name) != slots_.end(); }
    void Put(const std::string& name) {
        const auto free = std::ranges::find(slots_, "");
        if (free != slots_.end()) *free = name;
    }

  private:
    std::array<std::string, 10> slots_;
};

std::vector<Neighbor> ReadNeighbors(Recordset sets, std::string_view column, std::string_view schema) {
    std::vector<Neighbor> neighbors;
    NameMemory memory;
    for (; !sets.Eof(); sets.MoveNext()) {
        const std::string name = sets.Text(column);
        if (!memory.Holds(name)) {
            memory.Put(name);
            neighbors.push_back({name, {}, {}});
        }
        const auto entry = std::ranges::find(neighbors.rbegin(), neighbors.rend(), name, &Neighbor::name);
        if (entry == neighbors.rend()) continue;
        const std::string ofSchema = sets.Text("schemaname");
        if (schema.empty() || SameName(ofSchema, schema)) {
            entry->otherSchema.clear();
        } else if (entry->sets.empty()) {
            entry->otherSchema = ofSchema;
        }
        std::string set = sets.Text("set");
        if (std::ranges::find(entry->sets, set) == entry->sets.end()) entry->sets.push_back(std::move(set));
    }
    return neighbors;
}

std::vector<std::string> TrimmedColumn(Recordset rows, std::string_view column) {
    std::vector<std::string> texts;
    for (; !rows.Eof(); rows.MoveNext()) texts.emplace_back(Trim(rows.Text(column)));
    return texts;
}

}  // namespace

std::vector<std::string> LoadSchemaList(AppState& app) {
    if (!FileExists(app.AppPath(places::kStore))) {
        app.host.MessageBox("Please locate and extract IDMS Report File.");
        return {};
    }
    return TrimmedColumn(dictionary::SchemasOfRecords(*app.gConnection), "schemaname");
}

std::vector<std::string> LoadRecordsList(Connection& store, std::string_view schema) {
    return TrimmedColumn(dictionary::RecordNames(store, schema), "Recordname");
}

ChosenRecord ShowRecord(Connection& store, std::string_view name, std::string_view schema) {
    const std::string key = UpperCase(Trim(name));
    ChosenRecord chosen;
    chosen.record = ReadListedRecord(store, name);
    chosen.owners = ReadNeighbors(dictionary::SetsOfMember(store, key), "Recordname", schema);
    chosen.members = ReadNeighbors(dictionary::SetsOfOwner(store, key), "next_step", schema);
    return chosen;
}

void RecordTrail::Choose(std::string_view name) {
    if (!names_.empty() && SameName(names_.back(), name)) return;
    names_.emplace_back(name);
    if (names_.size() > kMost + 1) names_.erase(names_.begin());
}

const std::string& RecordTrail::Back() {
    names_.pop_back();
    return names_.back();
}

}  // namespace norvelis
