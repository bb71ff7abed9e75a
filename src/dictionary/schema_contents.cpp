#include "dictionary/schema_contents.h"

#include <optional>
#include <unordered_map>

#include "base/name_key.h"
#include "dictionary/schemas.h"

namespace norvelis::dictionary {

namespace {

// Statements that name their columns: their rows are read at once, which is several times as fast as "Select
// *".
std::vector<RecordContents> ReadRecords(Connection& store, std::string_view schema) {
    std::vector<RecordContents> records;
    auto row = store.Select(
        "Select Recordname, Recmode, dn, areaname, tableid, reckey, rectype, reclen, Information, Index1, "
        "Index2, "
        "Index3, Index4, Index5, Index6, Index7, Index8 FROM Record_Details where schemaname = ? and "
        "recordtype = 'Record' order by rowid",
        {schema});
    for (; !row.Eof(); row.MoveNext()) {
        RecordContents record{row.Text("Recordname"),
                              row.Text("Recmode"),
                              row.Text("dn"),
                              row.Text("areaname"),
                              row.Text("tableid"),
                              row.Text("reckey"),
                              row.Text("rectype"),
                              row.Text("reclen"),
                              row.Text("Information"),
                              {},
                              {}};
        for (std::size_t i = 0; i < record.indexes.size(); ++i)
            record.indexes[i] = row.Text("Index" + std::to_string(i + 1));
        records.push_back(std::move(record));
    }
    return records;
}

void ReadFields(Connection& store, std::string_view schema, std::vector<RecordContents>& records) {
    std::unordered_map<std::string, RecordContents*> byName;
    for (RecordContents& record : records) byName.try_emplace(NameKey(record.name), &record);
    auto row = store.Select(
        "Select Recordname, Fieldlevel, fieldname, fieldusage, fieldpicture, fieldstart, fieldend FROM "
        "Record_layout where schemaname = ? order by rowid",
        {schema});
    for (; !row.Eof(); row.MoveNext()) {
        const auto record = byName.find(NameKey(row.Text("Recordname")));
        if (record == byName.end()) continue;
        record->second->fields.push_back({row.Text("Fieldlevel"), row.Text("fieldname"),
                                          row.Text("fieldusage"), row.Text("fieldpicture"),
                                          row.Text("fieldstart"), row.Text("fieldend")});
    }
}

std::vector<SetContents> ReadSets(Connection& store, std::string_view schema) {
    std::vector<SetContents> sets;
    auto row = store.Select(
        "Select set, Recordname, next_step, connection FROM Connection_Details where schemaname = ? "
        "order by rowid",
        {schema});
    for (; !row.Eof(); row.MoveNext())
        sets.push_back(
            {row.Text("set"), row.Text("Recordname"), row.Text("next_step"), row.Text("connection")});
    return sets;
}

std::vector<IndexContents> ReadIndexes(Connection& store, std::string_view schema) {
    std::vector<IndexContents> indexes;
    auto row = store.Select("Select * FROM Index_Details where schemaname = ?", {schema});
    for (; !row.Eof(); row.MoveNext()) {
        IndexContents index{row.Text("Recordname"),
                            row.Text("next_step"),
                            row.Text("Information"),
                            row.Text("sortoption"),
                            {}};
        for (int slot = 1; slot <= 16; ++slot) {
            const std::string key = row.Text("sortkey" + std::to_string(slot));
            if (!key.empty()) index.keys.emplace_back(key, row.Text("sortorder" + std::to_string(slot)));
        }
        indexes.push_back(std::move(index));
    }
    return indexes;
}

}  // namespace

SchemaContents ReadSchema(Connection& store, std::string_view schema) {
    SchemaContents contents;
    contents.name = StoredSchemaName(store, schema).value_or(std::string(schema));
    if (auto header = SchemaHeader(store, schema); !header.Eof()) {
        contents.release = header.Text("schemarelease");
        contents.version = header.Text("schemaversion");
        contents.date = header.Text("schemadate");
    }
    for (auto row = EntryRecords(store, schema); !row.Eof(); row.MoveNext())
        contents.entryRecords.push_back(row.Text("Recordname"));
    contents.records = ReadRecords(store, schema);
    ReadFields(store, schema, contents.records);
    contents.sets = ReadSets(store, schema);
    contents.indexes = ReadIndexes(store, schema);
    return contents;
}

}  // namespace norvelis::dictionary
