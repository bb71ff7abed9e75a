#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "base/name_key.h"
#include "dictionary/schema_contents.h"

// Texts of the dictionary as they are compared and shown.
namespace norvelis::compare {

/// The text in one line: runs of blanks and line breaks are one blank.
std::string Plain(std::string_view text);

/// Equal by the rule of names, blanks as above.
bool SameText(std::string_view a, std::string_view b);

/// The picture without the start position that overlapping columns of a report leave behind it.
std::string Picture(const dictionary::FieldContents& field);

/// "5-34", "5" for one byte, empty when the report has no positions.
std::string Position(const dictionary::FieldContents& field);

/// Level, usage and picture, as a key: what a field is, whatever its name and place.
std::string DefinitionKey(const dictionary::FieldContents& field);

/// A place in the record that has no name.
bool IsFiller(const dictionary::FieldContents& field);

/// The name without the suffix by which fields carry the number of their record ("SHOP-NAME-0101" in record
/// 0101); empty when it has none.
std::string_view Stem(std::string_view field, std::string_view recordId);

/// From 0, nothing in common, to 1, the same: the share of the names that their beginnings and ends agree in.
double Likeness(std::string_view a, std::string_view b);

/// The present names of what has been renamed.
class Renames {
  public:
    void Add(std::string_view former, std::string_view present) {
        names_.try_emplace(NameKey(former), present);
    }
    bool Empty() const { return names_.empty(); }
    /// The name itself when it has stayed.
    std::string_view Present(std::string_view former) const {
        const auto name = names_.find(NameKey(former));
        return name == names_.end() ? former : std::string_view(name->second);
    }
    /// A text of words apart by blanks, each of which may be a name.
    std::string PresentWords(std::string_view text) const;

  private:
    std::unordered_map<std::string, std::string> names_;
};

}  // namespace norvelis::compare
