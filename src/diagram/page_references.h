#pragma once

#include <string_view>

#include "diagram/drawing_state.h"
#include "diagram/record_choice.h"

// Where a set leads from one page of a drawing to another: a small shape in place of the record that is
// there.
namespace norvelis {

/// The name of the record and of its page, which a link in the shape leads to. Lines are drawn to it as to a
/// box, and its fill means the same; notes are not.
void CreatePageReference(DrawingState& drawing, const PageRef& page, const PageReference& reference);

/// Whether the record is on another page and here only referred to.
bool IsOnAnotherPage(const DrawingState& drawing, std::string_view recordName);

}  // namespace norvelis
