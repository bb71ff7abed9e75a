#include "dictionary/records.h"

namespace norvelis::dictionary {

Recordset RecordsNamed(Connection& store, std::string_view name) {
    return store.Select("Select * FROM Record_Details where recordtype = 'Record' and Recordname = ?",
                        {name});
}

Recordset RecordIn(Connection& store, std::string_view schema, std::string_view name) {
    return store.Select(
        "Select * FROM Record_Details where schemaname = ? and recordtype = 'Record' and recordname = ?",
        {schema, name});
}

Recordset RecordsByName(Connection& store, std::string_view schema) {
    return store.Select(
        "Select * FROM Record_Details where schemaname = ? and recordtype = 'Record' order by recordname asc",
        {schema});
}

Recordset RecordNames(Connection& store, std::string_view schema) {
    return store.Select(
        "Select Recordname FROM Record_Details where schemaname = ? and recordtype = 'Record' "
        "order by recordname asc, rowid",
        {schema});
}

Recordset MemberLists(Connection& store) {
    return store.Select("Select Recordname, next_step FROM Record_Details where recordtype = 'Record'");
}

Recordset FieldsOf(Connection& store, std::string_view record) {
    return store.Select("Select * FROM Record_layout where Recordname = ?", {record});
}

bool HasIndexBoxes(Connection& store) {
    return store.Count("Select count(*) FROM Record_Details where recordtype = 'index'") > 0;
}

Recordset IndexBoxesOf(Connection& store, std::string_view record) {
    return store.Select("Select * FROM Record_Details where recordtype = 'index' and next_step = ?",
                        {record});
}

}  // namespace norvelis::dictionary
