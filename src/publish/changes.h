#pragma once

#include <array>
#include <string>
#include <vector>

namespace norvelis::publish {

/// What changed since another edition of the schema, as a page shows it.
struct Changes {
    std::string former;                            ///< The other edition in words: "version 100 of 03/14/24".
    std::string summary;                           ///< In one line.
    std::vector<std::array<std::string, 7>> rows;  ///< Kind, change, name, place, what, former, present.

    bool operator==(const Changes&) const = default;
};

}  // namespace norvelis::publish
