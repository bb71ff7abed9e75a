#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "drawing/model/cell.h"

namespace norvelis::drawing {

struct Master;
struct StyleSheet;

/// A run of text with one format: the rows of the sections Character, Paragraph and Tabs that it goes by.
struct TextRun {
    std::string text;  ///< UTF-8; lines end with LF, or CR LF as they were written.
    int character = 0;
    int paragraph = 0;
    int tabs = 0;
    int field = -1;  ///< Row of the section Field when the text is a field's last value.
    bool SameFormat(const TextRun& other) const {
        return character == other.character && paragraph == other.paragraph && tabs == other.tabs &&
               field == other.field;
    }
};
using TextRuns = std::vector<TextRun>;

/// Cells in layers: what a shape, a page sheet or a style states itself, and whom it asks for the rest.
struct Sheet {
    CellList cells;
    std::vector<Section> sections;
    const StyleSheet* lineStyle = nullptr;  ///< Null: the base's.
    const StyleSheet* fillStyle = nullptr;
    const StyleSheet* textStyle = nullptr;

    const Section* Find(Name section, int index = 0) const {
        for (const auto& own : sections) {
            if (own.name == section && own.index == index) return &own;
        }
        return nullptr;
    }
    Section* Find(Name section, int index = 0) {
        return const_cast<Section*>(std::as_const(*this).Find(section, index));
    }
    Section& At(Name section, int index = 0) {
        if (Section* own = Find(section, index)) return *own;
        sections.push_back({});
        sections.back().name = section;
        sections.back().index = index;
        return sections.back();
    }
    /// The cell as stated here; null when this sheet leaves it to others.
    const Cell* FindLocal(const CellRef& ref) const;
    Cell* FindLocal(const CellRef& ref) { return const_cast<Cell*>(std::as_const(*this).FindLocal(ref)); }
    Cell& LocalAt(const CellRef& ref);
};

/// A named set of formats that shapes and other styles build on.
struct StyleSheet : Sheet {
    int id = 0;
    std::string name;
};

/// A guide is a line that helps a person drawing; it is never shown.
enum class ShapeKind { Shape, Group, Foreign, Guide };

/// A picture that came with a file.
struct ForeignPicture {
    std::string type;  ///< "Bitmap", "EnhMetaFile" ...
    std::string compression;
    std::string extension;  ///< Of the part's name: png, jpeg, emf ...
    std::string bytes;
};

/// A shape of a page or a master. Its coordinates are its parent's: the page's, or those inside the group.
struct Shape : Sheet {
    int id = 0;
    std::string name, nameU;
    ShapeKind kind = ShapeKind::Shape;
    Master* master = nullptr;  ///< The master that it is an instance of; null inside a group and without one.
    const Shape* base = nullptr;                 ///< The shape inside a master that it inherits from.
    Shape* parent = nullptr;                     ///< The group that holds it.
    std::optional<TextRuns> text;                ///< Nothing: the base's text.
    std::vector<std::unique_ptr<Shape>> shapes;  ///< Sub-shapes of a group, back first.
    std::unique_ptr<ForeignPicture> picture;
};

/// The master of a shape or of the group around it.
const Master* MasterOf(const Shape& shape);

/// The cell that is in force: the shape's own, its base's, or that of the style that its kind of cell comes
/// from. Null when nobody states it.
const Cell* Find(const Sheet& sheet, const CellRef& ref);
const Cell* Find(const Shape& shape, const CellRef& ref);

/// Values in force; when nobody states the cell, the default that the file format gives it.
double Number(const Shape& shape, const CellRef& ref);
std::string TextValue(const Shape& shape, const CellRef& ref);

/// The formula in force, empty when there is none.
std::string_view FormulaOf(const Shape& shape, const CellRef& ref);

/// The text in force, the shape's own or its base's.
const TextRuns& TextOf(const Shape& shape);
std::string PlainText(const TextRuns& runs);

/// A section in force: the base's rows overlaid by the shape's, rows in order of their number. Deleted rows
/// are left out. Empty when neither has the section.
Section SectionOf(const Shape& shape, Name section, int index = 0);
/// Whether rows of the shape's first geometry are its own and not its master's.
bool HasOwnGeometry(const Shape& shape);
/// Indexes of the geometry sections in force, in order.
std::vector<int> GeometryIndexes(const Shape& shape);

}  // namespace norvelis::drawing
