#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "compare/links.h"
#include "compare/pairing.h"
#include "compare/values.h"
#include "dictionary/schema_contents.h"

namespace norvelis::compare {

/// Which part of a former schema is which part of the present one, and what has a new name. Both schemas must
/// outlive it.
class SchemaMatch {
  public:
    SchemaMatch(const dictionary::SchemaContents& former, const dictionary::SchemaContents& present);

    struct Parts {
        const dictionary::SchemaContents& schema;
        std::vector<SetOfRecords> sets;
        std::vector<Index> indexes;
        std::vector<Area> areas;
    };
    const Parts former, present;

    const Pairing& Records() const { return records_; }
    /// The fields of a former record that has stayed and has not quite the same fields.
    const Pairing& Fields(std::size_t formerRecord) const { return fields_[formerRecord]; }
    const Pairing& Sets() const { return sets_; }
    const Pairing& Indexes() const { return indexes_; }
    const Pairing& Areas() const { return areas_; }

    const Renames& RecordNames() const { return recordNames_; }
    /// Of a former record, by its former name; the names without the record's number as well, for the order
    /// of a set may be given by these.
    const Renames& FieldNames(std::string_view formerRecord) const;
    const Renames& SetNames() const { return setNames_; }
    const Renames& AreaNames() const { return areaNames_; }

  private:
    Pairing MatchSets() const;
    Pairing MatchIndexes() const;
    Pairing MatchAreas() const;
    void NameFields(std::size_t formerRecord, const dictionary::RecordContents& present);

    Pairing records_;
    std::vector<Pairing> fields_;
    std::unordered_map<std::string, Renames> fieldNames_;
    Renames recordNames_;
    Pairing sets_;
    Renames setNames_;
    Pairing indexes_, areas_;
    Renames areaNames_;
};

}  // namespace norvelis::compare
