#include "dictionary/writer.h"

#include <algorithm>
#include <forward_list>

#include "base/name_key.h"

namespace norvelis::dictionary {

namespace {

std::string Key(std::initializer_list<std::string_view> parts) {
    std::string key;
    for (const auto part : parts) {
        key += NameKey(part);
        key += '\0';
    }
    return key;
}

// The values of one row as the store takes them. Most report text is plain ASCII and needs no copy.
class RowValues {
  public:
    void Add(std::string_view reportText) { AddUntrimmed(Trim(reportText)); }
    void AddUntrimmed(std::string_view reportText) {
        const bool ascii = std::all_of(reportText.begin(), reportText.end(),
                                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
        AddUtf8(ascii ? reportText : converted_.emplace_front(ToUtf8(reportText)));
    }
    void AddUtf8(std::string_view text) { values_[count_++] = text; }
    void AddNull() { ++count_; }

    std::span<const std::optional<std::string_view>> All() const { return {values_.data(), count_}; }

  private:
    static constexpr std::size_t kMostColumns = 6 + 2 * IndexRow::kSlots;

    std::array<std::optional<std::string_view>, kMostColumns> values_;
    std::size_t count_ = 0;
    std::forward_list<std::string> converted_;
};

// The text of a record's box: name, identity, key and area between rules of underscores.
std::string RecordInformation(const RecordRow& record) {
    const std::string rule = std::string(kLineBreak) + std::string(32, '_') + std::string(kLineBreak);
    std::string text(Trim(record.name));
    text += rule;
    text += Trim(record.tableId);
    for (const auto part : {record.lengthKind, record.length, record.modeWord})
        text += " | " + std::string(Trim(part));
    text += rule;
    text += std::string(Trim(record.key)) + " | " + std::string(record.dn);
    text += rule;
    text += Trim(record.area);
    return text;
}

}  // namespace

Writer::Writer(Connection& connection, std::string_view schema)
    : connection_(connection),
      schema_(ToUtf8(Trim(schema))),
      parents_(connection, "Parents", {"schemaname", "Recordname"}),
      fields_(connection, "Record_layout",
              {"schemaname", "Recordname", "Fieldlevel", "fieldname", "fieldusage", "fieldpicture",
               "fieldstart", "fieldend"}),
      connections_(connection, "Connection_Details",
                   {"schemaname", "Recordname", "next_step", "connection", "set"}) {}

void Writer::AddSchema(std::string_view release, std::string_view version, std::string_view date) {
    RowValues row;
    row.AddUtf8(schema_);
    for (const auto text : {release, version, date}) row.Add(text);
    Inserter(connection_, "schema_details", {"schemaname", "schemarelease", "schemaversion", "schemadate"})
        .Add(row.All());
}

void Writer::AddParent(std::string_view record) {
    if (Trim(record).empty() || parentNames_.contains(NameKey(record))) return;
    parentNames_.insert(NameKey(Trim(record)));
    RowValues row;
    row.AddUtf8(schema_);
    row.Add(record);
    parents_.Add(row.All());
}

bool Writer::AddRecord(std::string_view record, std::string_view mode, std::string_view dn) {
    if (Trim(record).empty() || recordsByName_.contains(NameKey(record))) return false;
    recordsByName_.try_emplace(NameKey(Trim(record)), records_.size());
    RecordRow row;
    row.name = Trim(record);
    row.mode = mode;
    row.dn = dn;
    records_.push_back(std::move(row));
    return true;
}

RecordRow& Writer::RecordNamed(std::string_view name) {
    return records_[recordsByName_.at(NameKey(name))];
}

void Writer::AddField(std::string_view record, const Field& field) {
    RowValues row;
    row.AddUtf8(schema_);
    for (const auto text :
         {record, field.level, field.name, field.usage, field.picture, field.start, field.end})
        row.Add(text);
    fields_.Add(row.All());
    ++fieldCount_;
}

std::size_t Writer::AddConnection(std::string_view owner, std::string_view member, std::string_view set,
                                  std::string_view connection) {
    auto& sets = setsOfPair_[Key({owner, member})];
    const bool known = std::any_of(sets.begin(), sets.end(), [&](auto s) { return SameName(s, set); });
    if (!known) {
        sets.push_back(set);
        RowValues row;
        row.AddUtf8(schema_);
        for (const auto text : {owner, member, connection, set}) row.Add(text);
        connections_.Add(row.All());
    }
    return sets.size();
}

IndexRow& Writer::IndexOf(std::string_view index, std::string_view record) {
    const auto [entry, fresh] = indexesByKey_.try_emplace(Key({index, record}), indexes_.size());
    if (fresh) indexes_.emplace_back();
    IndexRow& row = indexes_[entry->second];
    row.index = index;
    row.record = record;
    return row;
}

void Writer::WriteRecord(Inserter& rows, const RecordRow& record) {
    const std::string information = record.completed ? RecordInformation(record) : std::string();
    RowValues row;
    row.AddUtf8(schema_);
    row.Add(record.name);
    row.Add(record.mode);
    row.Add("Record");
    row.AddUntrimmed(record.dn);
    if (record.completed) {
        for (const auto text :
             {record.area, record.tableId, record.key, std::string_view(), record.lengthKind, record.length,
              std::string_view(), std::string_view(information)}) {
            row.Add(text);
        }
    } else {
        for (int i = 0; i < 8; ++i) row.AddNull();
    }
    if (record.walked) {
        row.Add(record.nextStep);
        for (const auto index : record.indexes) row.Add(index);
    } else {
        for (int i = 0; i < 9; ++i) row.AddNull();
    }
    rows.Add(row.All());
}

void Writer::WriteIndex(Inserter& rows, const IndexRow& index) {
    RowValues row;
    row.AddUtf8(schema_);
    row.Add(index.index);
    row.Add(index.record);
    row.Add("");
    index.information ? row.AddUntrimmed(*index.information) : row.AddNull();
    std::array<const IndexRow::Key*, IndexRow::kSlots> slots{};
    for (const auto& key : index.keys) slots[key.slot - 1] = &key;
    for (const auto* key : slots) key != nullptr ? row.Add(key->name) : row.AddNull();
    for (const auto* key : slots) key != nullptr ? row.Add(key->order) : row.AddNull();
    row.Add(index.sortOption);
    rows.Add(row.All());
}

Counts Writer::CountRows() {
    const auto different = [&](const char* statement) {
        return static_cast<std::size_t>(connection_.Count(statement, {schema_}));
    };
    return {records_.size(), fieldCount_,
            different("Select count(distinct set) FROM Connection_Details where schemaname = ?"),
            different("Select count(distinct Recordname) FROM Index_Details where schemaname = ?")};
}

void Writer::Finish() {
    Inserter records(
        connection_, "Record_Details",
        {"schemaname", "Recordname", "Recmode", "recordtype", "dn",          "areaname",  "tableid", "reckey",
         "recdup",     "rectype",    "reclen",  "color",      "Information", "next_step", "Index1",  "Index2",
         "Index3",     "Index4",     "Index5",  "Index6",     "Index7",      "Index8"});
    for (const auto& record : records_) WriteRecord(records, record);

    Inserter indexes(
        connection_, "Index_Details",
        {"schemaname",  "Recordname",  "next_step",   "sortcalckey", "Information", "sortkey1",
         "sortkey2",    "sortkey3",    "sortkey4",    "sortkey5",    "sortkey6",    "sortkey7",
         "sortkey8",    "sortkey9",    "sortkey10",   "sortkey11",   "sortkey12",   "sortkey13",
         "sortkey14",   "sortkey15",   "sortkey16",   "sortorder1",  "sortorder2",  "sortorder3",
         "sortorder4",  "sortorder5",  "sortorder6",  "sortorder7",  "sortorder8",  "sortorder9",
         "sortorder10", "sortorder11", "sortorder12", "sortorder13", "sortorder14", "sortorder15",
         "sortorder16", "sortoption"});
    for (const auto& index : indexes_) WriteIndex(indexes, index);
}

}  // namespace norvelis::dictionary
