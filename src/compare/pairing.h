#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/name_key.h"

namespace norvelis::compare {

/// Which of the former things is which of the present ones, by their places in the two lists.
class Pairing {
  public:
    Pairing(std::size_t former, std::size_t present) : presentOf_(former), formerOf_(present) {}

    /// Both must be single.
    void Join(std::size_t former, std::size_t present) {
        presentOf_[former] = present;
        formerOf_[present] = former;
    }
    std::size_t Formers() const { return presentOf_.size(); }
    std::size_t Presents() const { return formerOf_.size(); }
    std::optional<std::size_t> PresentOf(std::size_t former) const { return presentOf_[former]; }
    std::optional<std::size_t> FormerOf(std::size_t present) const { return formerOf_[present]; }
    bool BothSingle(std::size_t former, std::size_t present) const {
        return !presentOf_[former] && !formerOf_[present];
    }

  private:
    std::vector<std::optional<std::size_t>> presentOf_, formerOf_;
};

/// Joins the things of one name, several of one name in their order. Nothing may be joined yet.
template <class Things>
void JoinEqualNames(const Things& former, const Things& present, Pairing& pairs) {
    std::unordered_map<std::string, std::vector<std::size_t>> byName;  // Of each the last first.
    for (std::size_t p = present.size(); p-- > 0;) byName[NameKey(present[p].name)].push_back(p);
    for (std::size_t f = 0; f < former.size(); ++f) {
        const auto named = byName.find(NameKey(former[f].name));
        if (named == byName.end() || named->second.empty()) continue;
        pairs.Join(f, named->second.back());
        named->second.pop_back();
    }
}

}  // namespace norvelis::compare
