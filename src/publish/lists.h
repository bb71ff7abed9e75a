#pragma once

#include <vector>

#include "dictionary/findings.h"
#include "dictionary/schema_contents.h"
#include "publish/changes.h"
#include "publish/cross_reference.h"
#include "publish/html.h"

// The sections of a page that list what all records have, each with its heading. Who calls them knows that
// there is something to list.
namespace norvelis::publish {

void AddChanges(Html& html, const CrossReference& references, const Changes& changes);
void AddAreas(Html& html, const CrossReference& references);
void AddFindings(Html& html, const CrossReference& references,
                 const std::vector<dictionary::FindingRow>& findings);
void AddSets(Html& html, const CrossReference& references);
void AddIndexes(Html& html, const CrossReference& references,
                const std::vector<dictionary::IndexContents>& indexes);
void AddSharedFields(Html& html, const CrossReference& references);

}  // namespace norvelis::publish
