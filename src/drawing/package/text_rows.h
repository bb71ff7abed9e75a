#pragma once

#include <vector>

#include "drawing/model/shape.h"

// How a text's formats are kept in files. Readers take the rows of the sections Character and Paragraph for
// the formats of the text's runs one after the other: row 0 is the first run's, and no row serves two runs.
// In the model row 0 is the shape's base format, which runs with formats of their own leave unused. So the
// rows are counted again when written, with an unused base format behind those of the runs, and back when
// read.
namespace norvelis::drawing {

/// A shape's own text and sections as a file holds them.
struct FiledText {
    TextRuns runs;
    std::vector<Section> sections;  ///< All of the shape's own.
};
FiledText ToFile(const Shape& shape);

/// The reverse, for a shape whose text and sections were just read.
void FromFile(Shape& shape);

}  // namespace norvelis::drawing
