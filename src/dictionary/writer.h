#pragma once

#include <array>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "store/connection.h"
#include "store/inserter.h"

namespace norvelis::dictionary {

/// A row of Record_Details on its way. The texts point into the report and are untrimmed.
struct RecordRow {
    std::string_view name, mode, dn;  ///< The skeleton of the first pass; name trimmed.

    bool completed = false;  ///< The columns from here on are null until then.
    std::string_view area, tableId, key, lengthKind, length, modeWord;

    bool walked = false;  ///< Likewise.
    std::string nextStep;
    std::array<std::string_view, 8> indexes;
};

/// A row of Index_Details on its way.
struct IndexRow {
    static constexpr std::size_t kSlots = 16;
    struct Key {
        std::size_t slot;  ///< From 1.
        std::string_view name, order;
    };

    std::string_view index, record, sortOption;
    std::optional<std::string> information;
    std::vector<Key> keys;  ///< One for a slot at most; the others are null.
};

/// How much an extraction found: rows of records and fields, different sets and indexes.
struct Counts {
    std::size_t records = 0, fields = 0, sets = 0, indexes = 0;
};

/// Writes one schema's rows to the dictionary tables. Rows that later stages look up and change (records,
/// indexes) are held until Finish; the others go to the store at once. Lookups follow the store's rule of
/// names: case and trailing blanks do not count. Takes report bytes and stores UTF-8, trimmed. Views must
/// outlive the writer.
class Writer {
  public:
    Writer(Connection& connection, std::string_view schema);

    /// The row of schema_details.
    void AddSchema(std::string_view release, std::string_view version, std::string_view date);

    /// Each adds the row unless one of that (untrimmed) name is there; an empty name adds nothing. AddRecord
    /// is true when it added one.
    void AddParent(std::string_view record);
    bool AddRecord(std::string_view record, std::string_view mode, std::string_view dn);

    std::deque<RecordRow>& Records() { return records_; }
    /// The first row of that name, whatever its case.
    RecordRow& RecordNamed(std::string_view name);

    struct Field {
        std::string_view level, name, usage, picture, start, end;
    };
    void AddField(std::string_view record, const Field& field);

    /// Adds the row unless it is there, and gives how many sets join owner and member now.
    std::size_t AddConnection(std::string_view owner, std::string_view member, std::string_view set,
                              std::string_view connection);

    /// The row of index and record, added when missing. It takes the spelling of the last to ask.
    IndexRow& IndexOf(std::string_view index, std::string_view record);

    /// Writes what is held. To be called once, also after a failure of the report: what was gathered is kept.
    void Finish();
    Counts CountRows();  ///< After Finish.

  private:
    void WriteRecord(Inserter& rows, const RecordRow& record);
    void WriteIndex(Inserter& rows, const IndexRow& index);

    Connection& connection_;
    std::string schema_;
    Inserter parents_, fields_, connections_;
    std::unordered_set<std::string> parentNames_;
    std::size_t fieldCount_ = 0;
    std::deque<RecordRow> records_;
    std::unordered_map<std::string, std::size_t> recordsByName_, indexesByKey_;
    std::deque<IndexRow> indexes_;
    std::unordered_map<std::string, std::vector<std::string_view>> setsOfPair_;
};

}  // namespace norvelis::dictionary
