#pragma once

#include <functional>
#include <string_view>

#include "drawing/model/document.h"
#include "drawing/package/xml_writer.h"

// The XML of what sheets, shapes and texts hold, the same in pages, masters and styles.
namespace norvelis::drawing {

class SheetWriter {
  public:
    /// `addPicture` puts a picture into the package and answers the relationship ID it has from the part
    /// being written.
    using AddPicture = std::function<std::string(const ForeignPicture&)>;
    SheetWriter(const Document& document, XmlWriter& xml, AddPicture addPicture = {})
        : document_(document), xml_(xml), addPicture_(std::move(addPicture)) {}

    /// NameU and Name of the element just opened, and whether a person gave them.
    void NameAttributes(std::string_view nameU, std::string_view name, bool given);
    /// LineStyle, FillStyle and TextStyle of the element just opened.
    void StyleAttributes(const Sheet& sheet);
    /// Cells and sections.
    void SheetContent(const Sheet& sheet);
    void ShapeElement(const Shape& shape);

  private:
    void Cells(const CellList& cells, Name section);
    void SectionElement(const Section& section);
    void Content(const CellList& cells, const std::vector<Section>& sections);
    void TextElement(const Shape& shape, const TextRuns& runs);
    void Picture(const ForeignPicture& picture);

    const Document& document_;
    XmlWriter& xml_;
    AddPicture addPicture_;
};

/// Cells whose value is a text even when it looks like a number.
bool HoldsText(Name section, Name cell);

}  // namespace norvelis::drawing
