#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

// The drawing engine as the diagram logic sees it: the objects and operations of the Visio object model that
// drawing needs, and nothing of what is behind them.
//
// Failure. Every call may fail and none throws: an operation answers false, a reference is null, a read gives
// nothing (or an empty text). The caller skips the failed step and goes on. Units. Inches from the page's
// lower left corner; point sizes are whole points. Texts are UTF-8. Positions in texts count characters (code
// points), from 0. A line break that was written as a carriage return and a line feed counts two. Collections
// count from 1. Handles share ownership. One kept beyond Application::Quit stays valid memory, and every call
// on it fails.
namespace norvelis::engine {

template <class T>
using Ref = std::shared_ptr<T>;

class Application;
class Documents;
class Document;
class Pages;
class Page;
class Masters;
class Master;
class Shapes;
class Shape;
class Cell;
class Characters;
class Hyperlink;
class Fonts;
class Font;
class Layers;
class Layer;

/// A cell by its published section, row and cell numbers.
struct CellAddress {
    int section, row, cell;
    bool operator==(const CellAddress&) const = default;
};

inline constexpr CellAddress kPinX{1, 1, 0};
inline constexpr CellAddress kPinY{1, 1, 1};
inline constexpr CellAddress kWidth{1, 1, 2};
inline constexpr CellAddress kHeight{1, 1, 3};
inline constexpr CellAddress kFillForegnd{1, 3, 0};
inline constexpr CellAddress kBeginX{1, 4, 0};
inline constexpr CellAddress kEndX{1, 4, 2};
inline constexpr CellAddress kEventDrop{1, 5, 4};
inline constexpr CellAddress kComment{1, 17, 16};
inline constexpr CellAddress kIsTextEditTarget{1, 22, 4};  ///< Of a group: 0 gives text to its last member.
inline constexpr CellAddress kTabStopCount{5, 0, 0};
inline constexpr CellAddress kTabStopPosition{5, 0, 1};  ///< Of the first stop.

/// The page layout row of a page sheet; its cells are addressed as {kPageLayoutSection, kPageLayoutRow,
/// cell}.
inline constexpr int kPageLayoutSection = 1;
inline constexpr int kPageLayoutRow = 24;
inline constexpr int kPlaceStyleCell = 8;
inline constexpr int kRouteStyleCell = 9;
inline constexpr int kPlaceDepthCell = 10;
inline constexpr int kLineRouteExtCell = 29;

inline constexpr int kTabSection = 5;
inline constexpr int kTabRowOfTwoStops = 150;  ///< Row tag for Shape::AddRow.
inline constexpr int kLayerLockCell = 7;       ///< For Layer::CellsC.
inline constexpr int kOpenReadOnlyDocked = 6;  ///< For Documents::OpenEx.

/// Units of Cell::Result.
enum class Unit { Number = 32, NoCast = 63 };

/// Indexes of Characters::CharProps.
enum class CharProperty { Font = 0, Color = 1, Style = 2, Size = 7 };
/// Indexes of Characters::ParaProps.
enum class ParaProperty { HorzAlign = 6 };

inline constexpr int kStyleBold = 1;
inline constexpr int kAlignLeft = 0;

/// Colour indexes of a document's palette that drawing uses.
inline constexpr int kBlack = 0;
inline constexpr int kRed = 2;
inline constexpr int kBlue = 4;
inline constexpr int kTeal = 13;

/// Characters of a text, in the count of Characters::Begin and End.
inline int CharacterCount(std::string_view utf8) {
    int count = 0;
    for (const char c : utf8) count += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    return count;
}

/// Where engines come from. No result: creating failed (there is no engine to start). A null reference: it
/// was created and gave nothing to work with.
class DrawingEngine {
  public:
    virtual ~DrawingEngine() = default;
    virtual std::optional<Ref<Application>> CreateVisible() = 0;
    virtual std::optional<Ref<Application>> CreateHidden() = 0;
};

/// A running engine; one for each draw.
class Application {
  public:
    virtual ~Application() = default;
    /// 1: from now on every alert is answered with OK and waits for nobody.
    virtual bool SetAlertResponse(int response) = 0;
    virtual Ref<engine::Documents> Documents() = 0;
    /// Ends the engine; unsaved work is dropped without a question.
    virtual bool Quit() = 0;
};

/// The open documents, stencils included, in order of opening.
class Documents {
  public:
    virtual ~Documents() = default;
    /// A new drawing with at least one page, from a template's bare file name.
    virtual Ref<Document> Add(const std::string& templateName) = 0;
    virtual Ref<Document> Item(int index) = 0;
    /// An open document by the file name that it was opened or saved under; null when none is.
    virtual Ref<Document> Item(const std::string& fileName) = 0;
    /// Opens a stencil by its bare file name; `flags` is kOpenReadOnlyDocked.
    virtual Ref<Document> OpenEx(const std::string& fileName, int flags) = 0;
    /// Opens a drawing by its full path, to be changed and saved again. One that holds what saving would lose
    /// can be read and printed; every change of it fails.
    virtual Ref<Document> Open(const std::string& path) = 0;
};

/// What came of saving a drawing, which goes to disk twice: under its name and as a .vsdx copy.
struct SaveResult {
    bool saved = false;   ///< The drawing is on disk under its name.
    std::string failure;  ///< Which file was not written, and why; empty when both were.
    explicit operator bool() const { return saved; }
};

/// A drawing or a stencil.
class Document {
  public:
    virtual ~Document() = default;
    virtual Ref<engine::Application> Application() = 0;
    virtual Ref<engine::Pages> Pages() = 0;
    virtual Ref<engine::Masters> Masters() = 0;
    virtual Ref<engine::Fonts> Fonts() = 0;
    /// Copies a stencil's master into this document's own; the copy. x and y are 0.
    virtual Ref<Master> Drop(const Ref<Master>& master, double x, double y) = 0;
    /// Writes the drawing; the document takes the path as its name. A drawing that is not saved leaves a file
    /// that was there untouched.
    virtual SaveResult SaveAs(const std::string& path) = 0;
    /// The printed footer's left field; "&d &t" is the date and time of printing.
    virtual bool SetFooterLeft(const std::string& text) = 0;
    /// Sends the document to the printer.
    virtual bool Print() = 0;
    /// Sends one page, counted from 1; false beyond the last.
    virtual bool PrintPage(int page) = 0;
};

class Pages {
  public:
    virtual ~Pages() = default;
    virtual int Count() = 0;
    virtual Ref<Page> Item(int index) = 0;
    /// A new empty page behind all others.
    virtual Ref<Page> Add() = 0;
};

class Page {
  public:
    virtual ~Page() = default;
    virtual Ref<engine::Application> Application() = 0;
    virtual Ref<engine::Document> Document() = 0;
    virtual std::string Name() = 0;
    virtual bool SetName(const std::string& name) = 0;
    /// In z-order, back first.
    virtual Ref<engine::Shapes> Shapes() = 0;
    virtual Ref<engine::Layers> Layers() = 0;
    /// The shape that holds the page's own cells.
    virtual Ref<Shape> PageSheet() = 0;
    /// A new shape of the master, in front of all others, its pin at x, y. A master of another document is
    /// copied into this page's document first.
    virtual Ref<Shape> Drop(const Ref<Master>& master, double x, double y) = 0;
    /// From the next Layout on there is room beside the shape for a note (a shape of the annotation master)
    /// with this text in six points, no wider than `mostWidth` inches.
    virtual bool ReserveNote(const Ref<Shape>& shape, const std::string& text, double mostWidth) = 0;
    /// Places all boxes and routes all connectors by the page layout row.
    virtual bool Layout() = 0;
    /// The same, but boxes keep, as far as can be, the order and neighbourhood of the shapes of their names
    /// on `former`, a page of an open drawing, when its layout row is the same: a drawing that was made
    /// before.
    virtual bool LayoutLike(const Ref<Page>& former) = 0;
    /// The page takes the size of its contents and a margin.
    virtual bool ResizeToFitContents() = 0;
    /// Moves the contents to the page's middle.
    virtual bool CenterDrawing() = 0;
    /// Moves each note into the room beside its box, or where there is none to the nearest place where it
    /// covers nothing, enlarging the page where needed. Called when all texts and labels have their final
    /// form.
    virtual bool PlaceNotes() = 0;
};

class Masters {
  public:
    virtual ~Masters() = default;
    /// Letter case does not count; null for an unknown name.
    virtual Ref<Master> Item(const std::string& name) = 0;
};

/// A reusable shape of a stencil or a drawing.
class Master {
  public:
    virtual ~Master() = default;
    virtual std::string Name() = 0;
    virtual Ref<engine::Shapes> Shapes() = 0;
    /// An editable copy; Close on the copy gives the changes back to the master.
    virtual Ref<Master> Open() = 0;
    virtual bool Close() = 0;
};

/// Shapes of a page, a group or a master.
class Shapes {
  public:
    virtual ~Shapes() = default;
    virtual int Count() = 0;
    virtual Ref<Shape> Item(int index) = 0;
    /// The shape of this ID; null when there is none.
    virtual Ref<Shape> ItemFromID(int id) = 0;
};

class Shape {
  public:
    virtual ~Shape() = default;
    /// Unique on the page and stable for the shape's life; from 1. 0 when the shape is gone.
    virtual int ID() = 0;
    virtual std::string Name() = 0;
    virtual bool SetName(const std::string& name) = 0;
    /// Replaces the shape's text; the formats of the first character stay.
    virtual bool SetText(const std::string& text) = 0;
    /// Null for a shape without master.
    virtual Ref<engine::Master> Master() = 0;
    virtual Ref<Page> ContainingPage() = 0;
    /// Sub-shapes of a group; an empty collection otherwise.
    virtual Ref<engine::Shapes> Shapes() = 0;
    /// A range over the whole text.
    virtual Ref<engine::Characters> Characters() = 0;
    /// A cell by its name, in any letter case: "Char.Size", "Char.Size[1]", "Width", "Prop.Duration".
    virtual Ref<Cell> Cells(const std::string& name) = 0;
    /// The same by its universal name.
    virtual Ref<Cell> CellsU(const std::string& name) = 0;
    virtual Ref<Cell> CellsSRC(const CellAddress& address) = 0;
    /// True when the shape has the cell; with localOnly 0 an inherited one counts.
    virtual bool CellExistsU(const std::string& name, int localOnly) = 0;
    /// Adds a row to a section; the number of the new row.
    virtual std::optional<int> AddRow(int section, int row, int tag) = 0;
    virtual Ref<Hyperlink> AddHyperlink() = 0;
    /// Behind all other shapes of its page.
    virtual bool SendToBack() = 0;
};

/// A formula and its value.
class Cell {
  public:
    virtual ~Cell() = default;
    /// A formula in local syntax, with or without "=" in front. A refused formula leaves the cell as it was.
    virtual bool SetFormula(const std::string& formula) = 0;
    /// The same in universal syntax.
    virtual bool SetFormulaU(const std::string& formula) = 0;
    /// The value in internal units: inches, radians, plain numbers.
    virtual std::optional<double> ResultIU() = 0;
    virtual bool SetResultIU(double value) = 0;
    virtual bool SetResult(Unit unit, double value) = 0;
    /// Glues this end of a connector to a cell of another shape; to its PinX is to the whole shape. The
    /// connector then follows the shape.
    virtual bool GlueTo(const Ref<Cell>& cell) = 0;
};

/// A range of a shape's text. Begin stays at or before End: moving one beyond the other moves both.
class Characters {
  public:
    virtual ~Characters() = default;
    virtual std::optional<int> Begin() = 0;
    virtual std::optional<int> End() = 0;
    virtual bool SetBegin(int position) = 0;
    virtual bool SetEnd(int position) = 0;
    virtual std::optional<std::string> Text() = 0;
    /// Replaces the range, or inserts when it is empty; the range then covers the new text.
    virtual bool SetText(const std::string& text) = 0;
    virtual std::optional<int> CharCount() = 0;
    virtual bool SetCharProps(CharProperty property, int value) = 0;
    virtual bool SetParaProps(ParaProperty property, int value) = 0;
    virtual Ref<engine::Document> Document() = 0;
};

class Hyperlink {
  public:
    virtual ~Hyperlink() = default;
    virtual bool SetAddress(const std::string& address) = 0;
    /// A place in the document that the address names, or in the drawing itself when it names none: "page" or
    /// "page/shape".
    virtual bool SetSubAddress(const std::string& place) = 0;
    virtual bool SetDescription(const std::string& description) = 0;
};

class Fonts {
  public:
    virtual ~Fonts() = default;
    /// By name; the font joins the document's list when it is not there yet.
    virtual Ref<Font> Item(const std::string& name) = 0;
};

class Font {
  public:
    virtual ~Font() = default;
    virtual std::optional<int> ID() = 0;
};

class Layers {
  public:
    virtual ~Layers() = default;
    /// A new layer, or the one that has this name already.
    virtual Ref<Layer> Add(const std::string& name) = 0;
};

class Layer {
  public:
    virtual ~Layer() = default;
    /// Puts a shape on the layer; preserveMembers 0 is the only value used.
    virtual bool Add(const Ref<Shape>& shape, int preserveMembers) = 0;
    /// A cell of the layer's row by its number, such as kLayerLockCell.
    virtual Ref<Cell> CellsC(int cell) = 0;
};

}  // namespace norvelis::engine
