#pragma once

#include "compare/edition.h"
#include "diagram/difference_marks.h"
#include "dictionary/schema_contents.h"

namespace norvelis::commands {

/// What a drawing of differences shows: the present schema with what was removed put back, and the marks.
struct MarkedSchema {
    dictionary::SchemaContents contents;
    DifferenceMarks marks;
};

MarkedSchema MarkSchema(const compare::ComparedEditions& editions);

}  // namespace norvelis::commands
