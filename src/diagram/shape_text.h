#pragma once

#include "diagram/drawing_state.h"

// Text in shapes, range by range. Each operation ends quietly at the first call that the engine refuses; the
// shape keeps what was written until then.
namespace norvelis {

/// The text of a record's box: name; id, type, length, mode; key and duplicates flag; area; with rules
/// between.
void FormatShapeText(const BoxFields& box, engine::Shape& shape);

/// The text of a reference to another page: the record's name, below it the page's.
void FormatReferenceText(const std::string& record, const std::string& page, engine::Shape& shape);

/// The label of a line: the set's name, up to the first line break, red and bold; the connection below it
/// blue.
void TextFieldAndFormattingDemo(engine::Shape& shape);

/// Six points for the first character row of every shape of the page, or of all pages of a drawing.
void FontChange(engine::Page& page);
void FontChange(engine::Document& drawing);
void fMakeChart(engine::Document& drawing);

/// The text's first line ends here: the position of its first line break counted from 1, 0 when it has none.
int LineBreakPosition(const std::string& text);

/// The font of all diagrams for the range.
bool SetDiagramFont(engine::Characters& characters);

}  // namespace norvelis
