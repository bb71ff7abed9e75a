#pragma once

#include <string>
#include <vector>

#include "compare/comparison.h"
#include "dictionary/findings.h"
#include "dictionary/schema_contents.h"

namespace norvelis::compare {

/// One side of a comparison: a schema with what reading its report lost.
struct Edition {
    std::string source;     ///< The path of a report, or the name of a schema in the dictionary.
    bool isReport = false;  ///< Otherwise it is a schema of the dictionary.
    dictionary::SchemaContents contents;
    std::vector<dictionary::FindingRow> findings;
};

struct ComparedEditions {
    Edition former, present;
    Comparison differences;
};

}  // namespace norvelis::compare
