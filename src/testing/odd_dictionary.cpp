#include "testing/odd_dictionary.h"

#include <iterator>

#include "base/random.h"
#include "store/tables.h"
#include "store/transaction.h"

namespace norvelis {

namespace {

class OddDictionary {
  public:
    explicit OddDictionary(std::uint64_t seed)
        : random_(seed), names_(2 + Below(14)), schemas_(1 + Below(3)) {}

    literal::Dictionary Generate() {
        literal::Dictionary tables;
        for (std::size_t i = Below(20); i > 0; --i) AddRecord(tables.Record_Details.emplace_back());
        for (std::size_t i = Below(60); i > 0; --i) AddSet(tables.Connection_Details.emplace_back());
        for (std::size_t i = Below(6); i > 0; --i) AddIndex(tables.Index_Details.emplace_back());
        for (std::size_t i = Below(50); i > 0; --i) AddField(tables.Record_layout.emplace_back());
        return tables;
    }

  private:
    std::size_t Below(std::size_t end) { return random_.Bits() % end; }
    bool OneIn(std::size_t n) { return Below(n) == 0; }

    /// A name in one of its spellings.
    std::string Spelled(std::string name) {
        if (OneIn(6)) {
            for (char& c : name) {
                if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
            }
        }
        return name;
    }
    std::string Name() { return OneIn(40) ? "" : Spelled("REC-" + std::to_string(Below(names_))); }
    /// One name is taken more often, so that it has more neighbors than are remembered.
    std::string End() { return OneIn(3) ? Spelled("REC-0") : Name(); }
    std::string Schema() { return "SCHEMA" + std::to_string(Below(schemas_)); }

    void Put(literal::Row& row, const std::string& column, const std::string& text) {
        if (!OneIn(8)) row[column] = OneIn(8) ? "" : text;
    }

    void AddRecord(literal::Row& row) {
        row["schemaname"] = Schema();
        row["Recordname"] = Name();
        row["recordtype"] = OneIn(10) ? "index" : OneIn(4) ? "RECORD" : "Record";
        for (const char* column : {"Recmode", "dn", "areaname", "tableid", "reckey", "rectype", "reclen"})
            Put(row, column, column + std::to_string(Below(100)));
        for (int i = 1; i <= 8; ++i) {
            if (OneIn(2)) Put(row, "Index" + std::to_string(i), OneIn(5) ? " " : "IX-" + std::to_string(i));
        }
    }
    void AddSet(literal::Row& row) {
        row["schemaname"] = Schema();
        Put(row, "Recordname", End());
        Put(row, "next_step", End());
        Put(row, "set", "SET-" + std::to_string(Below(9)));
    }
    void AddIndex(literal::Row& row) {
        row["schemaname"] = Schema();
        row["Recordname"] = "IX-" + std::to_string(Below(9));
        row["next_step"] = Name();
        if (OneIn(3)) Put(row, "sortcalckey", "CALC");
        for (int i = 1; i <= 16; ++i) {
            if (!OneIn(3)) continue;
            Put(row, "sortkey" + std::to_string(i), "KEY-" + std::to_string(i));
            Put(row, "sortorder" + std::to_string(i), OneIn(2) ? "ASC" : "DSC");
        }
    }
    void AddField(literal::Row& row) {
        static constexpr const char* kUsages[] = {
            "DISPLAY", "DISPLAY OCCURS 12",         "COMP-3   OCCURS  3 TO 9", "OCCURS",
            "COMP",    "DISPLAYED AS IT IS OCCURS2"};
        row["schemaname"] = Schema();
        row["Recordname"] = Name();
        Put(row, "Fieldlevel", "0" + std::to_string(2 + Below(8)));
        Put(row, "fieldname", "FIELD-" + std::to_string(Below(50)));
        Put(row, "fieldpicture", "X(" + std::to_string(Below(99)) + ")");
        Put(row, "fieldusage", kUsages[Below(std::size(kUsages))]);
    }

    Random random_;
    std::size_t names_, schemas_;
};

}  // namespace

literal::Dictionary GenerateOddDictionary(std::uint64_t seed) {
    return OddDictionary(seed).Generate();
}

void WriteDictionary(Connection& store, const literal::Dictionary& tables) {
    Transaction transaction(store);
    for (const TableDefinition& table : DictionaryTables()) {
        store.Execute("Delete * FROM " + std::string(table.name));
        for (const literal::Row& row : tables.ByName(table.name)) {
            auto rows = store.Select("Select * FROM " + std::string(table.name) + " where 1 = 0");
            rows.AddNew();
            for (const ColumnDefinition& column : table.columns) {
                if (const auto value = row.Value(std::string(column.name))) rows.Set(column.name, *value);
            }
            rows.Update();
        }
    }
    transaction.Commit();
}

}  // namespace norvelis
