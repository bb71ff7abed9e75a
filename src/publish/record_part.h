#pragma once

#include <string>

#include "dictionary/schema_contents.h"
#include "publish/cross_reference.h"
#include "publish/html.h"

namespace norvelis::publish {

/// What is shown of one record: details, sets, indexes, fields with their uses, copybook.
struct RecordPart {
    const dictionary::RecordContents& record;
    const std::string& copybook;
    bool hasBox;  ///< In the drawing.
};
void AddRecord(Html& html, const CrossReference& references, const RecordPart& part);

}  // namespace norvelis::publish
