#pragma once

#include <optional>

class QPrinter;

namespace norvelis::drawing {
struct Document;
}

namespace norvelis::desktop {

/// Prints all pages of a drawing, or one counted from 1. On paper each page is turned and scaled to its
/// sheet; a PDF file has pages of the drawing's own size. False when the printer refuses; RuntimeFailure when
/// the file can not be written.
bool PrintPages(const drawing::Document& document, std::optional<int> page, QPrinter& printer);

}  // namespace norvelis::desktop
