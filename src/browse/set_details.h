#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "store/connection.h"

// What a person reads about one set, as rows of item and value.
namespace norvelis {

/// A member's options as the report has them ("MA ASC MAKER-NAME DL"), in words. What is no known option goes
/// along with the order as it is.
struct MemberOptions {
    std::string membership;         ///< "mandatory automatic"; empty when it is not said.
    std::string order;              ///< "sorted", "next" ...
    std::vector<std::string> keys;  ///< "MAKER-NAME ascending".
    std::string duplicates;         ///< "not allowed", "first", "last", "in any order"; empty: not said.
};
MemberOptions ReadMemberOptions(std::string_view text);

struct SetDetails {
    std::vector<std::array<std::string, 2>> items;
    std::string missing;  ///< In place of items: why there are none.
};

/// The set between two records, of this schema when it is in that one, else of the first that has it. Nothing
/// here fails: a store that refuses is a reason too.
SetDetails DescribeSet(Connection& store, std::string_view schema, std::string_view set,
                       std::string_view owner, std::string_view member);

}  // namespace norvelis
