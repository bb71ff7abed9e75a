#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "engine/drawing_engine.h"

// What a drawing of the differences between two editions of a schema says of its boxes and lines. Marks are
// told apart by words and by the pattern of their lines: colors are a help, and are gone in gray print.
namespace norvelis {

enum class Mark { Added, Removed, Changed };

struct Marking {
    Mark mark;
    std::string words;  ///< "ADDED", "RENAMED, WAS WORKSHOP".
};

/// The markings by name; letter case and trailing blanks do not count. Null where there is none.
class DifferenceMarks {
  public:
    void AddRecord(std::string_view name, const Marking& marking);
    const Marking* OfRecord(std::string_view name) const;

    /// A line: one set with one of its members.
    void AddSet(std::string_view set, std::string_view owner, std::string_view member,
                const Marking& marking);
    const Marking* OfSet(std::string_view set, std::string_view owner, std::string_view member) const;

  private:
    std::unordered_map<std::string, Marking> records_, sets_;
};

/// Outline and fill of a box, by its marking; plain without one.
void StyleBox(engine::Shape& box, const Marking* marking);
/// Color, weight and pattern of a line.
void StyleLine(engine::Shape& line, const Marking* marking);

}  // namespace norvelis
