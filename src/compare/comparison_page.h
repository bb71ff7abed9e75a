#pragma once

#include <string>
#include <vector>

#include "compare/comparison_text.h"
#include "compare/edition.h"

namespace norvelis::compare {

/// The comparison as a page of HTML that needs no other file: the two editions, the difference in one line,
/// what reading their reports lost, the list. Equal comparisons give equal bytes. Texts of the schemas are
/// escaped.
std::string HtmlPage(const ComparedEditions& editions);

/// The warnings of both editions as rows of the list: the words are in the column of their edition.
std::vector<Row> WarningRows(const ComparedEditions& editions);

/// The words of a finding: "line 4711, CUSTOMER: the reason (the remedy)".
std::string WordsOf(const dictionary::FindingRow& finding);

}  // namespace norvelis::compare
