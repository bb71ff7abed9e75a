#pragma once

#include <string>
#include <vector>

#include "dictionary/schema_contents.h"

// Records of the dictionary as COBOL copybooks: level 01 with the record's name, below it the fields with
// level numbers, pictures, usages and OCCURS as the report has them. Equal contents give equal text.
namespace norvelis::copybook {

struct Copybook {
    std::string record;  ///< As in the dictionary.
    std::string name;    ///< In COBOL; no two of a schema are equal.
    std::string text;    ///< UTF-8, lines of at most 72 columns that end with LF.

    std::string FileName() const { return name + ".cpy"; }
};

/// One for each record of the schema, in the order of the report.
std::vector<Copybook> CopybooksOf(const dictionary::SchemaContents& schema);

}  // namespace norvelis::copybook
