#include "drawing/model/document.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "base/text.h"
#include "drawing/model/defaults.h"

namespace norvelis::drawing {

namespace {

// The palette's fixed beginning, as the file format publishes it.
constexpr std::array<Color, 24> kFixedColors = {{
    {0, 0, 0},       {255, 255, 255}, {255, 0, 0},     {0, 255, 0},     {0, 0, 255},     {255, 255, 0},
    {255, 0, 255},   {0, 255, 255},   {128, 0, 0},     {0, 128, 0},     {0, 0, 128},     {128, 128, 0},
    {128, 0, 128},   {0, 128, 128},   {192, 192, 192}, {230, 230, 230}, {205, 205, 205}, {179, 179, 179},
    {154, 154, 154}, {128, 128, 128}, {102, 102, 102}, {77, 77, 77},    {51, 51, 51},    {26, 26, 26},
}};

template <class List>
auto ById(const List& list, int id) -> decltype(list.front().get()) {
    for (const auto& item : list) {
        if (item->id == id) return item.get();
    }
    return nullptr;
}

}  // namespace

Shape* Canvas::ById(int id) const {
    const auto found = byId_.find(id);
    return found == byId_.end() ? nullptr : found->second;
}

Shape& Canvas::Add(std::unique_ptr<Shape> shape, Shape* group) {
    Shape& added = *shape;
    added.parent = group;
    const auto enlist = [this](auto& self, Shape& each) -> void {
        if (each.id == 0) each.id = NextId();
        byId_.emplace(each.id, &each);
        lastId_ = std::max(lastId_, each.id);
        for (const auto& inner : each.shapes) {
            inner->parent = &each;
            self(self, *inner);
        }
    };
    enlist(enlist, added);
    (group ? group->shapes : shapes).push_back(std::move(shape));
    return added;
}

Master* Document::FindMaster(std::string_view name) const {
    for (const auto& master : masters) {
        if (EqualIgnoringCase(master->nameU, name) || EqualIgnoringCase(master->name, name))
            return master.get();
    }
    return nullptr;
}

StyleSheet* Document::StyleById(int id) const {
    return drawing::ById(styles, id);
}
Page* Document::PageById(int id) const {
    return drawing::ById(pages, id);
}

StyleSheet* Document::FindStyle(std::string_view name) const {
    for (const auto& style : styles) {
        if (EqualIgnoringCase(style->name, name)) return style.get();
    }
    return nullptr;
}

Page& Document::AddPage(std::string name) {
    auto page = std::make_unique<Page>();
    for (const auto& other : pages) page->id = std::max(page->id, other->id + 1);
    page->name = page->nameU = std::move(name);
    return *pages.emplace_back(std::move(page));
}

Master& Document::AddMaster(std::string name) {
    auto master = std::make_unique<Master>();
    master->id = 1;
    for (const auto& other : masters) master->id = std::max(master->id, other->id + 1);
    master->name = master->nameU = std::move(name);
    return *masters.emplace_back(std::move(master));
}

int Document::FontIndex(const std::string& name) {
    const auto found = std::find_if(fonts.begin(), fonts.end(), [&name](const std::string& font) {
        return EqualIgnoringCase(font, name);
    });
    if (found != fonts.end()) return static_cast<int>(found - fonts.begin());
    fonts.push_back(name);
    return static_cast<int>(fonts.size()) - 1;
}

const std::string& Document::FontName(int index) const {
    static const std::string standard = "Arial";
    return index >= 0 && index < static_cast<int>(fonts.size()) ? fonts[static_cast<std::size_t>(index)]
                                                                : standard;
}

Color Document::PaletteColor(int index) const {
    if (index >= 0 && index < static_cast<int>(kFixedColors.size())) {
        return kFixedColors[static_cast<std::size_t>(index)];
    }
    const auto found = colors.find(index);
    return found == colors.end() ? Color{} : found->second;
}

Color ColorOf(const Document& document, const Cell& cell) {
    if (!cell.isText)
        return document.PaletteColor(cell.value >= 0 && cell.value < 1e6 ? static_cast<int>(cell.value) : 0);
    unsigned rgb = 0;
    if (cell.text.size() == 7 && cell.text[0] == '#') {
        std::from_chars(cell.text.data() + 1, cell.text.data() + 7, rgb, 16);
    }
    return {static_cast<std::uint8_t>(rgb >> 16), static_cast<std::uint8_t>(rgb >> 8),
            static_cast<std::uint8_t>(rgb)};
}

Color ColorOf(const Document& document, const Shape& shape, const CellRef& ref) {
    if (const Cell* cell = Find(shape, ref)) return ColorOf(document, *cell);
    return document.PaletteColor(static_cast<int>(DefaultNumber(ref.cell)));
}

namespace {

/// Carries cells, sections and shapes from one document's names, fonts, palette and styles to another's.
class Copier {
  public:
    Copier(const Document& from, Document& to) : from_(from), to_(to) {}

    void CopySheet(const Sheet& source, Sheet& target) {
        target.cells = Cells(source.cells, Name::None);
        for (const auto& section : source.sections) {
            Section& copy = target.sections.emplace_back();
            copy.name = Map(section.name);
            copy.index = section.index;
            copy.deleted = section.deleted;
            copy.cells = Cells(section.cells, section.name);
            for (const auto& row : section.rows) {
                Row& rowCopy = copy.rows.emplace_back();
                rowCopy.key = row.key.IsNamed() && row.key != CellRef::kSectionCell
                                  ? RowKey::Named(Map(row.key.RowName()))
                                  : row.key;
                rowCopy.type = Map(row.type);
                rowCopy.deleted = row.deleted;
                rowCopy.cells = Cells(row.cells, section.name);
            }
        }
        target.lineStyle = Style(source.lineStyle);
        target.fillStyle = Style(source.fillStyle);
        target.textStyle = Style(source.textStyle);
    }

    std::unique_ptr<Shape> CopyShape(const Shape& source) {
        auto copy = std::make_unique<Shape>();
        CopySheet(source, *copy);
        copy->id = source.id;
        copy->name = source.name;
        copy->nameU = source.nameU;
        copy->kind = source.kind;
        copy->text = source.text;
        if (source.picture) copy->picture = std::make_unique<ForeignPicture>(*source.picture);
        for (const auto& inner : source.shapes) copy->shapes.push_back(CopyShape(*inner));
        return copy;
    }

  private:
    Name Map(Name name) { return name < Name::KnownEnd ? name : to_.names.Intern(from_.names.Text(name)); }

    CellList Cells(const CellList& source, Name section) {
        CellList copies;
        for (const auto& cell : source) {
            Cell& copy = copies.At(Map(cell.name));
            const Name name = copy.name;
            copy = cell;
            copy.name = name;
            copy.unit = Map(cell.unit);
            if (section == Name::Character && cell.name == Name::Font && !cell.isText) {
                copy.value = to_.FontIndex(from_.FontName(static_cast<int>(cell.value)));
            }
        }
        return copies;
    }

    const StyleSheet* Style(const StyleSheet* source) {
        if (!source) return nullptr;
        if (const StyleSheet* own = to_.FindStyle(source->name)) return own;
        auto& copy = to_.styles.emplace_back(std::make_unique<StyleSheet>());
        for (const auto& other : to_.styles) copy->id = std::max(copy->id, other->id + 1);
        copy->name = source->name;
        StyleSheet* const result = copy.get();
        CopySheet(*source, *result);
        return result;
    }

    const Document& from_;
    Document& to_;
};

}  // namespace

Master& CopyMaster(const Document& from, const Master& master, Document& to) {
    Copier copier(from, to);
    const bool isSecond = std::any_of(to.masters.begin(), to.masters.end(), [&master](const auto& other) {
        return other->uniqueId == master.uniqueId;
    });
    Master& copy = to.AddMaster(master.name);
    copy.nameU = master.nameU;
    copy.prompt = master.prompt;
    if (!isSecond) copy.uniqueId = master.uniqueId;
    copy.baseId = master.baseId;
    copy.hidden = master.hidden;
    copy.matchByName = master.matchByName;
    copy.connects = master.connects;
    copier.CopySheet(master.sheet, copy.sheet);
    for (const auto& [index, color] : from.colors) to.colors.emplace(index, color);
    for (const auto& shape : master.shapes) copy.Add(copier.CopyShape(*shape));
    return copy;
}

namespace {

std::unique_ptr<Shape> InstanceOf(const Shape& base) {
    auto shape = std::make_unique<Shape>();
    shape->base = &base;
    shape->kind = base.kind;
    for (const auto& inner : base.shapes) shape->shapes.push_back(InstanceOf(*inner));
    return shape;
}

}  // namespace

Shape& DropInstance(Canvas& canvas, Master& master, double x, double y) {
    auto shape = master.shapes.empty() ? std::make_unique<Shape>() : InstanceOf(*master.shapes.front());
    shape->master = &master;
    const double dx = x - Number(*shape, Name::PinX), dy = y - Number(*shape, Name::PinY);
    // What the master computes stays its business; only an unguarded pin is given up.
    const auto put = [&shape](Name name, double value, bool keepsFormula) {
        shape->cells.Set(name, value);
        shape->cells.At(name).inherited = keepsFormula;
    };
    put(Name::PinX, x, FormulaOf(*shape, Name::PinX).starts_with("GUARD("));
    put(Name::PinY, y, FormulaOf(*shape, Name::PinY).starts_with("GUARD("));
    for (const auto& [name, distance] : {std::pair{Name::BeginX, dx}, std::pair{Name::BeginY, dy},
                                         std::pair{Name::EndX, dx}, std::pair{Name::EndY, dy}}) {
        if (Find(*shape, name)) put(name, Number(*shape, name) + distance, !FormulaOf(*shape, name).empty());
    }
    Shape& added = canvas.Add(std::move(shape));
    added.name = added.nameU = master.nameU + "." + std::to_string(added.id);
    return added;
}

}  // namespace norvelis::drawing
