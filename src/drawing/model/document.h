#pragma once

#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "drawing/model/shape.h"

// A drawing as Visio packages hold it. Plain data: changing a cell here recalculates nothing (drawing/formula
// does that). Pointers between parts stay good while the document lives; a document is not copied.
namespace norvelis::drawing {

struct Color {
    std::uint8_t red = 0, green = 0, blue = 0;
    bool operator==(const Color&) const = default;
};

/// One end of a connector and what it is glued to.
struct Connect {
    int fromSheet = 0;
    std::string fromCell;  ///< "BeginX" or "EndX".
    int fromPart = 0;      ///< 9 begin, 12 end.
    int toSheet = 0;
    std::string toCell;
    int toPart = 0;  ///< 3: the whole shape.
    bool operator==(const Connect&) const = default;
};

/// What pages and masters share: a sheet of their own and shapes.
struct Canvas {
    int id = 0;
    std::string name, nameU;
    Shape sheet;                                 ///< PageSheet: size, scale, layout row, layers.
    std::vector<std::unique_ptr<Shape>> shapes;  ///< Back first.
    std::vector<Connect> connects;

    /// The shape of this ID at any depth; null when there is none.
    Shape* ById(int id) const;
    /// Adds a shape in front (to `group`, or to the canvas when null) under a new ID unless it has one.
    Shape& Add(std::unique_ptr<Shape> shape, Shape* group = nullptr);
    int NextId() const { return lastId_ + 1; }
    int ShapeCount() const { return static_cast<int>(byId_.size()); }

  private:
    std::unordered_map<int, Shape*> byId_;
    int lastId_ = 0;
};

struct Page : Canvas {
    bool background = false;
    int backPage = -1;      ///< ID of the background page shown behind; -1 none.
    double viewScale = -1;  ///< 0 or less: the whole page in the window.
    double viewCenterX = 0, viewCenterY = 0;
};

struct Master : Canvas {
    std::string prompt;
    std::string uniqueId, baseId;  ///< "{...}" or empty.
    bool hidden = false;
    bool matchByName = false;
};

enum class DocumentKind { Drawing, Stencil, Template };

struct HeaderFooter {
    std::string headerLeft, headerCenter, headerRight, footerLeft, footerCenter, footerRight;
    bool operator==(const HeaderFooter&) const = default;
};

struct Document {
    explicit Document(DocumentKind documentKind = DocumentKind::Drawing) : kind(documentKind) {}
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    DocumentKind kind;
    NamePool names;
    std::string title, creator;
    std::map<int, Color> colors;     ///< Palette entries from 24 on; those below are fixed.
    std::vector<std::string> fonts;  ///< A character row's Font is an index here.
    std::vector<std::unique_ptr<StyleSheet>> styles;
    Shape sheet;  ///< DocumentSheet.
    std::vector<std::unique_ptr<Master>> masters;
    std::vector<std::unique_ptr<Page>> pages;
    HeaderFooter headerFooter;
    bool leftPartsOut =
        false;  ///< The file it was read from holds more than it; saved over it, that is lost.

    Master* FindMaster(std::string_view name) const;  ///< Letter case does not count.
    StyleSheet* FindStyle(std::string_view name) const;
    StyleSheet* StyleById(int id) const;
    Page* PageById(int id) const;

    Page& AddPage(std::string name);
    Master& AddMaster(std::string name);
    /// Index of the font, which joins the list when it is new.
    int FontIndex(const std::string& name);
    /// "Times New Roman"; "Arial" when the index leads nowhere.
    const std::string& FontName(int index) const;
    /// A palette colour; black beyond its end.
    Color PaletteColor(int index) const;
};

/// The styles that every drawing brings: "No Style", "Text Only", "None", "Normal", "Connector". "No Style"
/// states each cell's default.
void AddStandardStyles(Document& document);

/// A new page's size until it fits its contents: US letter, lying. Inches.
inline constexpr double kLetterWidth = 11, kLetterHeight = 8.5;

/// A page sheet's size, scale and layout row, all at their defaults but the size.
void StatePage(const Document& document, Shape& sheet, double width, double height);

/// How the paper lies for a page of this size, as the cell PrintPageOrientation numbers it.
int PaperOrientation(double width, double height);

/// The colour in force of a colour cell: "#RRGGBB", or an index of the palette.
Color ColorOf(const Document& document, const Shape& shape, const CellRef& ref);
/// The same for the text of such a cell.
Color ColorOf(const Document& document, const Cell& cell);

/// Copies a master with its shapes into another document; names, fonts, colours and styles are brought along.
Master& CopyMaster(const Document& from, const Master& master, Document& to);

/// A new shape of the document's own master on the canvas: inherits everything, its pin at x, y, in front.
Shape& DropInstance(Canvas& canvas, Master& master, double x, double y);

/// The cell that a name such as "PinX", "Char.Size[2]", "Geometry1.X2", "Controls.TextPosition.Y" or
/// "Prop.Cost" means; letter case does not count. Its cell is Name::None when the name means nothing in this
/// document.
CellRef ParseCellName(const NamePool& names, std::string_view text);
/// The name under which formulas know a cell.
std::string CellName(const NamePool& names, const CellRef& ref);

}  // namespace norvelis::drawing
