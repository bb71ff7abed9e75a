#include "dictionary/names.h"

namespace norvelis::dictionary {

RowReader NamesOfRecords(Connection& store) {
    return RowReader(
        store,
        "Select schemaname, Recordname, areaname, tableid FROM Record_Details where recordtype = "
        "'Record' order by rowid");
}

RowReader NamesOfFields(Connection& store) {
    return RowReader(store, "Select schemaname, Recordname, fieldname FROM Record_layout order by rowid");
}

RowReader NamesOfSets(Connection& store) {
    return RowReader(store,
                     "Select schemaname, set, Recordname, next_step FROM Connection_Details order by rowid");
}

RowReader NamesOfIndexes(Connection& store) {
    return RowReader(store, "Select schemaname, Recordname, next_step FROM Index_Details order by rowid");
}

}  // namespace norvelis::dictionary
