#include "browse/found_name.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

#include "base/text.h"
#include "dictionary/records.h"
#include "dictionary/schemas.h"
#include "dictionary/sets.h"

namespace norvelis {

namespace {

bool HasRow(Recordset rows, std::initializer_list<std::pair<const char*, std::string_view>> wanted) {
    for (; !rows.Eof(); rows.MoveNext()) {
        if (std::ranges::all_of(wanted, [&rows](const auto& column) {
                return SameName(rows.Text(column.first), column.second);
            }))
            return true;
    }
    return false;
}

NodeIndex MemberBelow(const RecordTree& tree, NodeIndex owner, const std::string& member) {
    const auto members = tree.Children(owner);
    const auto found = std::ranges::find_if(
        members, [&](NodeIndex node) { return SameName(tree.Text(node), Trim(member)); });
    return found == members.end() ? kNoNode : *found;
}

}  // namespace

std::string WhereOf(const FoundName& found) {
    switch (found.kind) {
        case FindKind::Schema:
        case FindKind::Record:
            return {};
        case FindKind::Set:
            return found.record + " > " + found.member;
        case FindKind::Index:
        case FindKind::Area:
        case FindKind::Id:
        case FindKind::Field:
            break;
    }
    return found.record;
}

bool IsInDictionary(Connection& store, const FoundName& found) {
    const std::string& schema = found.schema;
    switch (found.kind) {
        case FindKind::Schema:
            return dictionary::StoredSchemaName(store, schema).has_value();
        case FindKind::Record:
            return HasRow(dictionary::RecordIn(store, schema, found.record), {});
        case FindKind::Area:
            return HasRow(dictionary::RecordIn(store, schema, found.record), {{"areaname", found.name}});
        case FindKind::Id:
            return HasRow(dictionary::RecordIn(store, schema, found.record), {{"tableid", found.name}});
        case FindKind::Field:
            return HasRow(dictionary::FieldsOf(store, found.record),
                          {{"schemaname", schema}, {"fieldname", found.name}});
        case FindKind::Set:
            return HasRow(dictionary::SetsOfOwner(store, found.record),
                          {{"schemaname", schema}, {"next_step", found.member}, {"set", found.name}});
        case FindKind::Index:
            return HasRow(dictionary::IndexesOf(store, found.record),
                          {{"schemaname", schema}, {"Recordname", found.name}});
    }
    return false;
}

std::string WordsForGone(const FoundName& found) {
    const std::string where = WhereOf(found);
    return "The dictionary has no " + std::string(NameOf(found.kind)) + " " + found.name +
           (where.empty() ? "" : " (" + where + ")") + " in schema " + found.schema +
           " any more. The list now shows what it has.";
}

NodeIndex NodeOf(const RecordTree& tree, const FoundName& found) {
    const std::string schema(Trim(found.schema)), record(Trim(found.record));
    if (found.kind == FindKind::Schema) return tree.FirstOf(schema, schema);
    const NodeIndex node = tree.FirstOf(record, schema);
    return found.kind == FindKind::Set && node != kNoNode ? MemberBelow(tree, node, found.member) : node;
}

}  // namespace norvelis
