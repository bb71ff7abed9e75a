#include "dictionary/dumped_schema.h"

#include <nlohmann/json.hpp>
#include <stdexcept>
#include <unordered_map>

#include "base/name_key.h"
#include "base/text.h"

namespace norvelis::dictionary {

namespace {

using Json = nlohmann::json;

/// A row of a dictionary table.
class Row {
  public:
    explicit Row(const Json& row) : row_(row) {}
    /// Null and a column that is not there are empty.
    std::string operator[](const std::string& column) const {
        const auto value = row_.find(column);
        return value == row_.end() || value->is_null() ? std::string() : value->get<std::string>();
    }

  private:
    const Json& row_;
};

class Dump {
  public:
    Dump(const std::string& text, std::string_view schema) : tables_(Parse(text)), schema_(schema) {}

    SchemaContents Read() {
        ReadHeader();
        ReadRecords();
        ReadFields();
        ReadRelations();
        if (!found_) throw std::runtime_error("the dump holds no schema " + schema_);
        return std::move(contents_);
    }

  private:
    static Json Parse(const std::string& text) {
        Json dump = Json::parse(text, nullptr, false);
        if (!dump.is_object() || !dump.contains("tables") || !dump["tables"].is_object())
            throw std::runtime_error("the file is not what the command dump prints");
        return std::move(dump["tables"]);
    }

    template <typename Take>
    void EachRow(const char* table, const Take& take) {
        const auto rows = tables_.find(table);
        if (rows == tables_.end() || !rows->is_array())
            throw std::runtime_error(std::string("the dump has no table ") + table);
        for (const Json& json : *rows) {
            if (!json.is_object()) throw std::runtime_error(std::string("the dump has odd rows in ") + table);
            const Row row(json);
            if (!SameName(row["schemaname"], schema_)) continue;
            found_ = true;
            take(row);
        }
    }

    void ReadHeader() {
        contents_.name = schema_;
        EachRow("schema_details", [this](const Row& row) {
            contents_.name = row["schemaname"];
            contents_.release = row["schemarelease"];
            contents_.version = row["schemaversion"];
            contents_.date = row["schemadate"];
        });
        EachRow("Parents", [this](const Row& row) { contents_.entryRecords.push_back(row["Recordname"]); });
    }

    void ReadRecords() {
        EachRow("Record_Details", [this](const Row& row) {
            if (row["recordtype"] != "Record") return;
            RecordContents record;
            record.name = row["Recordname"];
            record.mode = row["Recmode"];
            record.dn = row["dn"];
            record.area = row["areaname"];
            record.id = row["tableid"];
            record.key = row["reckey"];
            record.lengthKind = row["rectype"];
            record.length = row["reclen"];
            record.information = row["Information"];
            for (std::size_t i = 0; i < record.indexes.size(); ++i)
                record.indexes[i] = row["Index" + std::to_string(i + 1)];
            contents_.records.push_back(std::move(record));
        });
    }

    void ReadFields() {
        std::unordered_map<std::string, RecordContents*> byName;
        for (auto& record : contents_.records) byName.try_emplace(NameKey(record.name), &record);
        EachRow("Record_layout", [&byName](const Row& row) {
            const auto record = byName.find(NameKey(row["Recordname"]));
            if (record == byName.end()) return;
            record->second->fields.push_back({row["Fieldlevel"], row["fieldname"], row["fieldusage"],
                                              row["fieldpicture"], row["fieldstart"], row["fieldend"]});
        });
    }

    void ReadRelations() {
        EachRow("Connection_Details", [this](const Row& row) {
            contents_.sets.push_back({row["set"], row["Recordname"], row["next_step"], row["connection"]});
        });
        EachRow("Index_Details", [this](const Row& row) {
            IndexContents index{
                row["Recordname"], row["next_step"], row["Information"], row["sortoption"], {}};
            for (int slot = 1; slot <= 16; ++slot) {
                const std::string number = std::to_string(slot);
                if (const auto key = row["sortkey" + number]; !key.empty())
                    index.keys.emplace_back(key, row["sortorder" + number]);
            }
            contents_.indexes.push_back(std::move(index));
        });
    }

    Json tables_;
    std::string schema_;
    SchemaContents contents_;
    bool found_ = false;
};

}  // namespace

SchemaContents ReadDumpedSchema(const std::string& dump, std::string_view schema) {
    try {
        return Dump(dump, schema).Read();
    } catch (const Json::exception& failure) {
        throw std::runtime_error(std::string("the dump cannot be read: ") + failure.what());
    }
}

}  // namespace norvelis::dictionary
