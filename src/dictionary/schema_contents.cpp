#include "dictionary/schema_contents.h"

#include <algorithm>
#include <optional>
#include <unordered_map>

#include "base/name_key.h"
#include "dictionary/schemas.h"
#include "store/inserter.h"
#include "store/row_reader.h"
#include "store/transaction.h"

namespace norvelis::dictionary {

namespace {

std::vector<RecordContents> ReadRecords(Connection& store, std::string_view schema) {
    std::vector<RecordContents> records;
    RowReader row(store,
                  "Select Recordname, Recmode, dn, areaname, tableid, reckey, rectype, reclen, Information, "
                  "Index1, Index2, Index3, Index4, Index5, Index6, Index7, Index8 FROM Record_Details where "
                  "schemaname = ? and recordtype = 'Record' order by rowid",
                  {schema});
    while (row.Next()) {
        RecordContents record{row.Copy(0), row.Copy(1), row.Copy(2), row.Copy(3), row.Copy(4), row.Copy(5),
                              row.Copy(6), row.Copy(7), row.Copy(8), {},          {}};
        for (std::size_t i = 0; i < record.indexes.size(); ++i)
            record.indexes[i] = row.Text(static_cast<int>(9 + i));
        records.push_back(std::move(record));
    }
    return records;
}

void ReadFields(Connection& store, std::string_view schema, std::vector<RecordContents>& records) {
    std::unordered_map<std::string, RecordContents*> byName;
    for (RecordContents& record : records) byName.try_emplace(NameKey(record.name), &record);
    RowReader row(store,
                  "Select Recordname, Fieldlevel, fieldname, fieldusage, fieldpicture, fieldstart, fieldend "
                  "FROM Record_layout where schemaname = ? order by rowid",
                  {schema});
    // The fields of a record come one behind the other.
    std::string name;
    auto record = byName.end();
    while (row.Next()) {
        if (record == byName.end() || row.Text(0) != name) {
            name = row.Text(0);
            record = byName.find(NameKey(name));
        }
        if (record == byName.end()) continue;
        record->second->fields.push_back(
            {row.Copy(1), row.Copy(2), row.Copy(3), row.Copy(4), row.Copy(5), row.Copy(6)});
    }
}

std::vector<SetContents> ReadSets(Connection& store, std::string_view schema) {
    std::vector<SetContents> sets;
    RowReader row(
        store,
        "Select set, Recordname, next_step, connection FROM Connection_Details where schemaname = ? "
        "order by rowid",
        {schema});
    while (row.Next()) sets.push_back({row.Copy(0), row.Copy(1), row.Copy(2), row.Copy(3)});
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

namespace {

using Texts = std::vector<std::optional<std::string_view>>;

/// The members of each owner, by its key, once each: as the column next_step lists them.
std::unordered_map<std::string, std::string> MemberLists(const SchemaContents& contents) {
    std::unordered_map<std::string, std::string> lists;
    std::unordered_map<std::string, std::vector<std::string>> listed;
    for (const SetContents& set : contents.sets) {
        auto& members = listed[NameKey(set.owner)];
        if (std::ranges::find(members, NameKey(set.member)) != members.end()) continue;
        members.push_back(NameKey(set.member));
        std::string& list = lists[NameKey(set.owner)];
        list += (list.empty() ? "" : ",") + set.member;
    }
    return lists;
}

void WriteRecords(Connection& store, const SchemaContents& contents) {
    Inserter records(
        store, "Record_Details",
        {"schemaname", "Recordname", "Recmode", "recordtype",  "dn",        "areaname", "tableid",
         "reckey",     "rectype",    "reclen",  "Information", "next_step", "Index1",   "Index2",
         "Index3",     "Index4",     "Index5",  "Index6",      "Index7",    "Index8"});
    Inserter fields(store, "Record_layout",
                    {"schemaname", "Recordname", "Fieldlevel", "fieldname", "fieldusage", "fieldpicture",
                     "fieldstart", "fieldend"});
    const auto members = MemberLists(contents);
    for (const RecordContents& record : contents.records) {
        const auto list = members.find(NameKey(record.name));
        Texts row{
            contents.name, record.name,        record.mode,
            "Record",      record.dn,          record.area,
            record.id,     record.key,         record.lengthKind,
            record.length, record.information, list == members.end() ? std::string_view() : list->second};
        row.insert(row.end(), record.indexes.begin(), record.indexes.end());
        records.Add(row);
        for (const FieldContents& field : record.fields) {
            fields.Add(Texts{contents.name, record.name, field.level, field.name, field.usage, field.picture,
                             field.start, field.end});
        }
    }
}

void WriteIndexes(Connection& store, const SchemaContents& contents) {
    constexpr std::size_t kSlots = 16;
    Inserter indexes(
        store, "Index_Details",
        {"schemaname",  "Recordname",  "next_step",   "Information", "sortoption",  "sortkey1",
         "sortkey2",    "sortkey3",    "sortkey4",    "sortkey5",    "sortkey6",    "sortkey7",
         "sortkey8",    "sortkey9",    "sortkey10",   "sortkey11",   "sortkey12",   "sortkey13",
         "sortkey14",   "sortkey15",   "sortkey16",   "sortorder1",  "sortorder2",  "sortorder3",
         "sortorder4",  "sortorder5",  "sortorder6",  "sortorder7",  "sortorder8",  "sortorder9",
         "sortorder10", "sortorder11", "sortorder12", "sortorder13", "sortorder14", "sortorder15",
         "sortorder16"});
    for (const IndexContents& index : contents.indexes) {
        Texts row{contents.name, index.name, index.member, index.information, index.sortOption};
        const std::size_t keys = std::min(index.keys.size(), kSlots), first = row.size();
        row.resize(first + 2 * kSlots);
        for (std::size_t i = 0; i < keys; ++i) {
            row[first + i] = index.keys[i].first;
            row[first + kSlots + i] = index.keys[i].second;
        }
        indexes.Add(row);
    }
}

}  // namespace

void WriteSchema(Connection& store, const SchemaContents& contents) {
    Transaction transaction(store);
    Inserter(store, "schema_details", {"schemaname", "schemarelease", "schemaversion", "schemadate"})
        .Add(Texts{contents.name, contents.release, contents.version, contents.date});
    Inserter entries(store, "Parents", {"schemaname", "Recordname"});
    for (const std::string& record : contents.entryRecords) entries.Add(Texts{contents.name, record});
    WriteRecords(store, contents);
    Inserter sets(store, "Connection_Details",
                  {"schemaname", "set", "Recordname", "next_step", "connection"});
    for (const SetContents& set : contents.sets)
        sets.Add(Texts{contents.name, set.name, set.owner, set.member, set.connection});
    WriteIndexes(store, contents);
    transaction.Commit();
}

}  // namespace norvelis::dictionary
