#pragma once

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "dictionary/schema_contents.h"

// What leads where in a schema: the anchors of records, sets and indexes, and who uses what. Made once for a
// page. A name that is no record of the schema has no anchor.
namespace norvelis::publish {

/// A set with all its rows, which are one for each member.
struct SetPart {
    std::string anchor;
    std::vector<const dictionary::SetContents*> rows;  ///< At least one; they share name and owner.
};

/// What a field is there for besides its value.
struct FieldUse {
    std::string words;   ///< "CALC key", "ascending key of"
    std::string anchor;  ///< Of the index or set; empty for none.
    std::string name;    ///< Of the same.
};

class CrossReference {
  public:
    /// The schema must outlive it.
    explicit CrossReference(const dictionary::SchemaContents& schema);
    CrossReference(const CrossReference&) = delete;
    CrossReference& operator=(const CrossReference&) = delete;

    /// By name. A record that is there twice has two parts, and its name leads to the first.
    const std::vector<const dictionary::RecordContents*>& Records() const { return records_; }
    std::string AnchorOfRecord(std::string_view name) const;  ///< Empty for none.
    std::string AnchorOfRecord(const dictionary::RecordContents& record) const;
    std::string AnchorOfSet(std::string_view name) const;
    std::string AnchorOfIndex(std::string_view name) const;

    const std::vector<SetPart>& Sets() const { return sets_; }  ///< In the order of the report.
    std::vector<const SetPart*> OwnedBy(std::string_view record) const;
    std::vector<const dictionary::SetContents*> MembershipsOf(std::string_view record) const;
    std::vector<const dictionary::IndexContents*> IndexesOf(std::string_view record) const;

    std::vector<FieldUse> UsesOf(const dictionary::RecordContents& record, std::string_view field) const;

    /// Areas by name, each with its records by name.
    const std::map<std::string, std::vector<const dictionary::RecordContents*>>& Areas() const {
        return areas_;
    }
    /// Names of fields that several records have, each with these by name. FILLER is no name.
    const std::map<std::string, std::vector<const dictionary::RecordContents*>>& SharedFields() const {
        return sharedFields_;
    }

  private:
    void IndexRecords();
    void IndexSets();
    void IndexFields();

    const dictionary::SchemaContents& schema_;
    std::vector<const dictionary::RecordContents*> records_;
    std::unordered_map<const dictionary::RecordContents*, std::string> anchors_;
    std::unordered_map<std::string, const dictionary::RecordContents*> byName_;
    std::vector<SetPart> sets_;
    std::unordered_map<std::string, std::vector<std::size_t>> owned_;
    std::unordered_map<std::string, std::vector<const dictionary::SetContents*>> memberships_;
    std::unordered_map<std::string, std::vector<const dictionary::IndexContents*>> indexes_;
    std::unordered_map<std::string, std::size_t> setNames_, indexNames_;
    std::map<std::string, std::vector<const dictionary::RecordContents*>> areas_, sharedFields_;
};

/// Membership and order of a set's row, "MA ASC SORT-KEY DN"; pointers before it, "NPO".
std::string_view OrderOf(const dictionary::SetContents& set);
std::string_view PointersOf(const dictionary::SetContents& set);

}  // namespace norvelis::publish
