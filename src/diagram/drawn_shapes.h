#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>

#include "base/text.h"

namespace norvelis {

/// What is already on the drawing: the names of its records and the texts of its notes, which share one
/// list, so that a note that only repeats a record's name is not drawn. Without a bound: a drawing of ten
/// thousand records has each of them once.
class DrawnShapes {
  public:
    bool Contains(std::string_view text) const { return texts_.contains(std::string(Trim(text))); }
    void Add(std::string_view text) { texts_.emplace(Trim(text)); }
    std::size_t Count() const { return texts_.size(); }

  private:
    std::unordered_set<std::string> texts_;
};

/// The shape of each record by its name, letter case ignored. The first shape of a name stays.
class ShapeIds {
  public:
    void Add(std::string_view name, int id) { ids_.try_emplace(UpperCase(name), id); }
    std::optional<int> Find(std::string_view name) const {
        const auto entry = ids_.find(UpperCase(name));
        if (entry == ids_.end()) return std::nullopt;
        return entry->second;
    }

  private:
    std::map<std::string, int> ids_;
};

/// A line by its shape: the set that it shows, and the records that it joins.
struct DrawnLine {
    int shape;
    std::string set, owner, member;
};

}  // namespace norvelis
