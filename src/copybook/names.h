#pragma once

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

// Names of the dictionary as words that a COBOL compiler takes.
namespace norvelis::copybook {

/// The words that COBOL keeps for itself, in any letter case.
bool IsReservedWord(std::string_view name);

/// Capital letters, digits and hyphens, 30 at most, at least one letter, no hyphen at an end. A reserved word
/// gets `ending` behind it.
std::string CobolName(std::string_view name, std::string_view ending);

/// The names of one copybook, or of one folder of them: what must be changed to be COBOL is changed so that
/// it is no other name.
class NameTable {
  public:
    explicit NameTable(std::string ending) : ending_(std::move(ending)) {}

    /// Names that are COBOL as they are keep their spelling, so they are to be known before others are asked.
    void Keep(std::string_view name);
    /// The same for the same name.
    std::string NameFor(std::string_view name);

  private:
    std::string ending_;
    std::unordered_set<std::string> used_;
    std::unordered_map<std::string, std::string> names_;
};

}  // namespace norvelis::copybook
