#include "drawing/model/names.h"

#include "base/text.h"

namespace norvelis::drawing {

NamePool::NamePool() {
    texts_.emplace_back();
#define NORVELIS_DRAWING_TEXT(name) Intern(#name);
    NORVELIS_DRAWING_NAMES(NORVELIS_DRAWING_TEXT)
#undef NORVELIS_DRAWING_TEXT
}

Name NamePool::Find(std::string_view text) const {
    const auto found = byLowerCase_.find(LowerCase(text));
    return found == byLowerCase_.end() ? Name::None : found->second;
}

Name NamePool::Intern(std::string_view text) {
    if (text.empty()) return Name::None;
    std::string spelling(text);
    if (const auto known = bySpelling_.find(spelling); known != bySpelling_.end()) return known->second;
    if (texts_.size() >= kMost) return Name::None;
    const auto name = static_cast<Name>(texts_.size());
    texts_.push_back(spelling);
    byLowerCase_.emplace(LowerCase(text), name);
    bySpelling_.emplace(std::move(spelling), name);
    return name;
}

}  // namespace norvelis::drawing
