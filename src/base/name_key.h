#pragma once

#include <string>
#include <string_view>

#include "base/text.h"

namespace norvelis {

/// The same text for all names that SameName takes for one: what tables of names are looked up by.
inline std::string NameKey(std::string_view name) {
    return UpperCase(TrimEnd(name));
}

}  // namespace norvelis
