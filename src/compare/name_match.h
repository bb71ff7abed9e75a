#pragma once

#include <string>
#include <vector>

#include "compare/pairing.h"

namespace norvelis::compare {

/// A set or an index for the search of its counterpart. The texts of a former one have the present names of
/// what they name.
struct Named {
    std::string name;
    std::string ends;     ///< The records that it joins, as a key.
    std::string content;  ///< All else of it.
};

/// Those of one name are one. Of the others, two are one under a new name when they join the same records and
/// are the same in all else, or nearly of one name; the likest first.
Pairing MatchNamed(const std::vector<Named>& former, const std::vector<Named>& present);

}  // namespace norvelis::compare
