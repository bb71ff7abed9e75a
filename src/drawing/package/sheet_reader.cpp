#include "drawing/package/sheet_reader.h"

#include <fmt/format.h>

#include <charconv>
#include <cmath>
#include <cstring>

#include "drawing/package/archive.h"
#include "drawing/package/limits.h"
#include "drawing/package/sheet_writer.h"
#include "drawing/package/text_rows.h"

namespace norvelis::drawing {

namespace {

/// The value of a cell that its theme decides; without a theme it is as if nobody stated it.
constexpr std::string_view kThemed = "Themed";

bool ParseNumber(std::string_view text, double& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && !text.empty() && std::isfinite(number);
}

bool Is(const pugi::xml_node& node, const char* name) {
    return std::strcmp(node.name(), name) == 0;
}

}  // namespace

int SheetReader::FontNamed(std::string_view name) {
    const auto [found, isNew] = fonts_.try_emplace(std::string(name), 0);
    if (isNew) found->second = document_.FontIndex(found->first);
    if (document_.fonts.size() > limits::kFonts) Refuse("more fonts than any drawing has");
    return found->second;
}

void SheetReader::Cells(const pugi::xml_node& element, CellList& cells, Name section) {
    const bool isNew = cells.empty();
    ++list_;
    for (const auto& node : element.children("Cell")) {
        const Name name = document_.names.Intern(node.attribute("N").value());
        const std::string_view value = node.attribute("V").value(), formula = node.attribute("F").value();
        if (name == Name::None || value == kThemed) continue;
        // Whether a cell is there already is known without looking through what may be many.
        auto& seen = seenIn_[static_cast<std::size_t>(name)];
        Cell& cell = isNew && seen != list_ ? cells.Append(name) : cells.At(name);
        seen = list_;
        if (cells.size() > limits::kCellsOfARow) Refuse("a shape or row has more cells than there are");
        cell.unit = document_.names.Intern(node.attribute("U").value());
        double number = 0;
        if (section == Name::Character && name == Name::Font && !ParseNumber(value, number)) {
            cell.SetNumber(FontNamed(value));
        } else if (!HoldsText(section, name) && cell.unit != Name::STR && ParseNumber(value, number)) {
            cell.SetNumber(number);
        } else {
            cell.SetText(std::string(value));
        }
        if (IsCoordinate(CellRef(section, 0, {}, name)) && std::fabs(cell.value) > kFarthest) {
            Refuse(fmt::format("the cell {} lies beyond every page", node.attribute("N").value()));
        }
        cell.inherited = formula == "Inh";
        cell.formula = cell.inherited ? std::string_view() : formula;
    }
}

void SheetReader::ReadSection(const pugi::xml_node& element, Sheet& sheet) {
    const Name name = document_.names.Intern(element.attribute("N").value());
    if (name == Name::None) return;
    const int index = name == Name::Geometry ? element.attribute("IX").as_int() : 0;
    if (index < 0 || index > limits::kRowNumber) Refuse("a section number is out of range");
    Section& section = sheet.At(name, index);
    if (sheet.sections.size() > limits::kSections) Refuse("a shape has more sections than any drawing's");
    // Row numbers are looked up here and not in the section, which may be long.
    std::unordered_map<unsigned, std::size_t> known;
    for (std::size_t i = 0; i < section.rows.size(); ++i) known.emplace(section.rows[i].key.bits, i);
    section.deleted = element.attribute("Del").as_bool();
    Cells(element, section.cells, name);
    int next = 0;
    for (const auto& node : element.children("Row")) {
        const auto number = node.attribute("IX");
        const int row = number ? number.as_int() : next;
        if (row < 0 || row > limits::kRowNumber) Refuse("a row number is out of range");
        const Name rowName = document_.names.Intern(node.attribute("N").value());
        const RowKey key = rowName != Name::None ? RowKey::Named(rowName) : RowKey::Number(row);
        const auto [found, isNew] = known.emplace(key.bits, section.rows.size());
        if (isNew) section.rows.emplace_back().key = key;
        Row& read = section.rows[found->second];
        read.type = document_.names.Intern(node.attribute("T").value());
        read.deleted = node.attribute("Del").as_bool();
        Cells(node, read.cells, name);
        next = row + 1;
    }
}

void SheetReader::SheetContent(const pugi::xml_node& element, Sheet& sheet) {
    Cells(element, sheet.cells, Name::None);
    for (const auto& node : element.children("Section")) ReadSection(node, sheet);
}

void SheetReader::Styles(const pugi::xml_node& element, Sheet& sheet) {
    const auto style = [&](const char* name) -> const StyleSheet* {
        const auto attribute = element.attribute(name);
        return attribute ? document_.StyleById(attribute.as_int(-1)) : nullptr;
    };
    sheet.lineStyle = style("LineStyle");
    sheet.fillStyle = style("FillStyle");
    sheet.textStyle = style("TextStyle");
}

TextRuns SheetReader::ReadText(const pugi::xml_node& element) const {
    TextRuns runs;
    TextRun format;
    std::size_t bytes = 0;
    const auto add = [&runs, &format, &bytes](std::string_view text) {
        if (text.empty()) return;
        if (runs.empty() || !runs.back().SameFormat(format) || format.field >= 0) {
            runs.push_back(format);
            runs.back().text.clear();
        }
        runs.back().text += text;
        bytes += text.size();
        if (bytes > limits::kTextBytes) Refuse("a shape holds more text than any drawing's");
    };
    for (const auto& node : element.children()) {
        const int row = node.attribute("IX").as_int();
        if (node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata) {
            add(node.value());
        } else if (Is(node, "cp")) {
            format.character = row;
        } else if (Is(node, "pp")) {
            format.paragraph = row;
        } else if (Is(node, "tp")) {
            format.tabs = row;
        } else if (Is(node, "fld")) {
            format.field = row;
            add(node.text().get());
            format.field = -1;
        }
    }
    if (!runs.empty() && runs.back().text.ends_with('\n')) {  // The file's own end of text.
        runs.back().text.pop_back();
        if (runs.back().text.empty() && runs.size() > 1) runs.pop_back();
    }
    return runs;
}

std::unique_ptr<Shape> SheetReader::ReadShape(const pugi::xml_node& element, Canvas& canvas,
                                              const FindPicture& findPicture, int depth) {
    if (++shapes_ > limits::kShapes) Refuse("more shapes than any drawing has");
    if (depth > limits::kGroupDepth) Refuse("groups are nested beyond every measure");
    auto shape = std::make_unique<Shape>();
    shape->id = element.attribute("ID").as_int();
    if (shape->id <= 0) Refuse("a shape has no ID");
    shape->nameU = element.attribute("NameU").value();
    shape->name = element.attribute("Name").value();
    const std::string_view type = element.attribute("Type").value();
    shape->kind = type == "Group"     ? ShapeKind::Group
                  : type == "Foreign" ? ShapeKind::Foreign
                  : type == "Guide"   ? ShapeKind::Guide
                                      : ShapeKind::Shape;
    Styles(element, *shape);
    SheetContent(element, *shape);
    if (const auto text = element.child("Text")) {
        shape->text = ReadText(text);
        FromFile(*shape);
    }
    if (const auto data = element.child("ForeignData"); data && findPicture) {
        shape->picture = findPicture(data.child("Rel").attribute("r:id").value());
        if (shape->picture) {
            shape->picture->type = data.attribute("ForeignType").value();
            shape->picture->compression = data.attribute("CompressionType").value();
        }
    }
    const auto master = element.attribute("Master"), masterShape = element.attribute("MasterShape");
    if (master || masterShape) {
        ties_.push_back(
            {shape.get(), &canvas, master ? master.as_int() : 0, masterShape ? masterShape.as_int() : 0});
    }
    for (const auto& inner : element.child("Shapes").children("Shape")) {
        if (inner.attribute("Del").as_bool()) continue;
        shape->shapes.push_back(ReadShape(inner, canvas, findPicture, depth + 1));
    }
    return shape;
}

void SheetReader::Shapes(const pugi::xml_node& parent, Canvas& canvas, const FindPicture& findPicture) {
    for (const auto& node : parent.child("Shapes").children("Shape")) {
        if (node.attribute("Del").as_bool()) continue;
        const int before = canvas.ShapeCount(), read = shapes_;
        canvas.Add(ReadShape(node, canvas, findPicture, 0));
        if (canvas.ShapeCount() - before != shapes_ - read) Refuse("two shapes have the same ID");
    }
    for (const auto& node : parent.child("Connects").children("Connect")) {
        Connect& connect = canvas.connects.emplace_back();
        connect.fromSheet = node.attribute("FromSheet").as_int();
        connect.fromCell = node.attribute("FromCell").value();
        connect.fromPart = node.attribute("FromPart").as_int();
        connect.toSheet = node.attribute("ToSheet").as_int();
        connect.toCell = node.attribute("ToCell").value();
        connect.toPart = node.attribute("ToPart").as_int();
    }
}

void SheetReader::TieToMasters() {
    std::unordered_map<int, Master*> masters;
    for (const auto& master : document_.masters) masters.emplace(master->id, master.get());
    for (const auto& tie : ties_) {
        if (tie.master == 0) continue;
        const auto found = masters.find(tie.master);
        if (found == masters.end()) Refuse(fmt::format("the master {} is missing", tie.master));
        tie.shape->master = found->second;
        if (!found->second->shapes.empty()) tie.shape->base = found->second->shapes.front().get();
    }
    for (const auto& tie : ties_) {
        if (tie.masterShape == 0) continue;
        const Master* master = MasterOf(*tie.shape);
        if (master && tie.canvas != master) tie.shape->base = master->ById(tie.masterShape);
    }
    RefuseCycles();
}

void SheetReader::RefuseCycles() const {
    // A base is always inside a master, so following bases from the tied shapes meets every cycle there can
    // be; what was followed before is known by its depth.
    std::unordered_map<const Shape*, int> depths;
    for (const auto& tie : ties_) {
        std::vector<const Shape*> path;
        const Shape* at = tie.shape;
        for (; at && !depths.contains(at); at = at->base) {
            path.push_back(at);
            if (path.size() > limits::kMasterDepth) Refuse("a master is made of itself");
        }
        int depth = at ? depths.at(at) : 0;
        for (; !path.empty(); path.pop_back()) depths.emplace(path.back(), ++depth);
        if (depth > limits::kMasterDepth) Refuse("masters are made of masters beyond every measure");
    }
}

}  // namespace norvelis::drawing
