#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "dictionary/findings.h"
#include "dictionary/schema_contents.h"

namespace norvelis::publish {

/// The drawing of a schema: SVG in which the box of a record has its BoxAnchor, and boxes and lines lead to
/// the anchors of records and sets.
struct Drawing {
    std::string svg;                          ///< Empty when there is no drawing.
    std::unordered_set<std::string> records;  ///< NameKeys of those that have a box.
};

/// What is published.
struct Edition {
    dictionary::SchemaContents schema;
    std::vector<dictionary::FindingRow> findings;  ///< Of this schema.
    Drawing drawing;
};

}  // namespace norvelis::publish
