#include "dictionary/sets.h"

namespace norvelis::dictionary {

Recordset Sets(Connection& store) {
    return store.Select(
        "Select schemaname, recordname, next_step, set, connection FROM Connection_Details "
        "order by recordname asc, next_step asc, rowid");
}

Recordset SetsBetween(Connection& store, std::string_view owner, std::string_view member) {
    return store.Select(
        "Select schemaname, set, connection FROM Connection_Details where Recordname = ? and next_step = ? "
        "order by rowid",
        {owner, member});
}

Recordset SetsOfMember(Connection& store, std::string_view member) {
    return store.Select(
        "Select schemaname, Recordname, next_step, set FROM Connection_Details where next_step = ? "
        "order by recordname, rowid",
        {member});
}

Recordset SetsOfOwner(Connection& store, std::string_view owner) {
    return store.Select(
        "Select schemaname, Recordname, next_step, set FROM Connection_Details where Recordname = ? "
        "order by next_step, rowid",
        {owner});
}

Recordset Indexes(Connection& store) {
    return store.Select("Select * FROM Index_Details");
}

Recordset IndexesOf(Connection& store, std::string_view member) {
    return store.Select("Select * FROM Index_Details where next_step = ?", {member});
}

}  // namespace norvelis::dictionary
