#pragma once

#include <string>
#include <utility>
#include <vector>

#include "drawing/model/names.h"

namespace norvelis::drawing {

/// A cell's own formula and value. Values are in internal units: inches, radians, plain numbers; colours are
/// a palette index, or a text "#RRGGBB".
struct Cell {
    Name name = Name::None;
    Name unit = Name::None;  ///< As a file states it; it does not change what `value` means.
    bool inherited = false;  ///< The formula is the master's; the value is this shape's own.
    bool isText = false;     ///< The value is `text`.
    bool stale = false;      ///< The value waits for its formula to be evaluated.
    double value = 0;
    std::string text;
    std::string formula;  ///< Without "=" in front; empty when there is none.

    void SetNumber(double number) {
        value = number;
        isText = false;
        text.clear();
    }
    void SetText(std::string newText) {
        text = std::move(newText);
        isText = true;
        value = 0;
    }
};

/// The cells of a shape, a row or a section, in order of their first mention.
class CellList {
  public:
    const Cell* Find(Name name) const {
        for (const auto& cell : cells_) {
            if (cell.name == name) return &cell;
        }
        return nullptr;
    }
    Cell* Find(Name name) { return const_cast<Cell*>(std::as_const(*this).Find(name)); }
    /// The cell of this name, added when it is not there.
    Cell& At(Name name) {
        Cell* cell = Find(name);
        return cell ? *cell : Append(name);
    }
    /// For a name that is known not to be there.
    Cell& Append(Name name) {
        cells_.push_back({});
        cells_.back().name = name;
        return cells_.back();
    }
    void Remove(Name name) {
        std::erase_if(cells_, [name](const Cell& cell) { return cell.name == name; });
    }
    /// Value and formula become the list's own.
    CellList& Set(Name name, double number, std::string formula = {}) {
        Own(name, std::move(formula)).SetNumber(number);
        return *this;
    }
    CellList& SetText(Name name, std::string text, std::string formula = {}) {
        Own(name, std::move(formula)).SetText(std::move(text));
        return *this;
    }
    std::size_t size() const { return cells_.size(); }
    bool empty() const { return cells_.empty(); }
    auto begin() const { return cells_.begin(); }
    auto end() const { return cells_.end(); }
    auto begin() { return cells_.begin(); }
    auto end() { return cells_.end(); }

  private:
    Cell& Own(Name name, std::string formula) {
        Cell& cell = At(name);
        cell.formula = std::move(formula);
        cell.inherited = cell.stale = false;
        return cell;
    }

    std::vector<Cell> cells_;
};

/// Which row of a section: by number, or by name in the sections whose rows have names.
struct RowKey {
    std::uint16_t bits = 0;

    static RowKey Number(int index) { return {static_cast<std::uint16_t>(index & 0x7FFF)}; }
    static RowKey Named(Name name) {
        return {static_cast<std::uint16_t>(0x8000 | static_cast<unsigned>(name))};
    }
    bool IsNamed() const { return (bits & 0x8000) != 0; }
    int Index() const { return bits & 0x7FFF; }
    drawing::Name RowName() const { return static_cast<drawing::Name>(bits & 0x7FFF); }
    auto operator<=>(const RowKey&) const = default;
};

struct Row {
    RowKey key;
    Name type = Name::None;  ///< Of a geometry row: MoveTo, LineTo ...
    bool deleted = false;    ///< The master's row of this key does not count.
    CellList cells;
};

/// A section of rows. There may be several of Geometry, each with its `index`; other sections have index 0.
struct Section {
    Name name = Name::None;
    int index = 0;
    bool deleted = false;
    CellList cells;  ///< Of the section itself, such as NoFill.
    std::vector<Row> rows;

    const Row* Find(RowKey key) const {
        // Most sections have their rows in order without gaps; long ones are outlines, asked for row by row.
        const auto guess = rows.empty() || key.IsNamed() ? 0 : key.Index() - rows.front().key.Index();
        if (guess > 0 && static_cast<std::size_t>(guess) < rows.size() &&
            rows[static_cast<std::size_t>(guess)].key == key)
            return &rows[static_cast<std::size_t>(guess)];
        for (const auto& row : rows) {
            if (row.key == key) return &row;
        }
        return nullptr;
    }
    Row* Find(RowKey key) { return const_cast<Row*>(std::as_const(*this).Find(key)); }
    Row& At(RowKey key) {
        if (Row* row = Find(key)) return *row;
        rows.push_back({});
        rows.back().key = key;
        return rows.back();
    }
    /// Number of the row that a further one gets: one above the highest.
    int NextIndex(int first) const {
        int next = first;
        for (const auto& row : rows) {
            if (!row.key.IsNamed() && row.key.Index() >= next) next = row.key.Index() + 1;
        }
        return next;
    }
};

/// Where in a shape a cell is. Section None: a cell of the shape itself; row kSectionCell: of the section
/// itself.
struct CellRef {
    static constexpr RowKey kSectionCell{0x7FFF};

    Name section = Name::None;
    std::uint16_t index = 0;
    RowKey row;
    Name cell = Name::None;

    CellRef() = default;
    CellRef(Name name) : cell(name) {}  // NOLINT(google-explicit-constructor): PinX is a place.
    CellRef(Name inSection, int sectionIndex, RowKey inRow, Name name)
        : section(inSection), index(static_cast<std::uint16_t>(sectionIndex)), row(inRow), cell(name) {}
    auto operator<=>(const CellRef&) const = default;
};

inline constexpr double kFarthest = 1e6;  ///< Inches; no place or size on a page is beyond.

/// A cell that holds a place or a size.
bool IsCoordinate(const CellRef& ref);

}  // namespace norvelis::drawing
