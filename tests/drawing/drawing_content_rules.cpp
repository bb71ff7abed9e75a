#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <functional>
#include <optional>
#include <set>

#include "drawing/model/defaults.h"
#include "drawing/opened_package.h"

namespace norvelis::drawing {

namespace {

using pugi::xml_node;

class DrawingChecker {
  public:
    explicit DrawingChecker(OpenedPackage& package) : package_(package) {}

    void Run() {
        CheckDocument();
        CheckMasters();
        CheckPages();
    }

  private:
    /// Shapes of a page or master by ID, at any depth.
    struct Canvas {
        std::string part;
        std::map<int, xml_node> shapes;
        std::map<int, xml_node> groups;  ///< The shape around another.
        std::set<int> layers;
    };

    void CheckDocument() {
        document_ = package_.Target("", "document");
        const auto root = package_.trees[document_].document_element();
        const char* order[] = {"DocumentSettings", "Colors",        "FaceNames",
                               "StyleSheets",      "DocumentSheet", "HeaderFooter"};
        auto next = std::begin(order);
        for (const auto& node : root.children()) {
            const auto found = std::find(next, std::end(order), std::string_view(node.name()));
            if (found == std::end(order))
                package_.Fault("{} is in the wrong place", node.name());
            else
                next = found + 1;
        }
        std::set<int> colors;
        for (const auto& node : root.child("Colors").children()) {
            const int index = node.attribute("IX").as_int();
            if (index < 24 || !colors.insert(index).second) package_.Fault("a colour entry {}", index);
            if (AttributeOf(node, "RGB").size() != 7)
                package_.Fault("the colour {}", AttributeOf(node, "RGB"));
        }
        for (const auto& node : root.child("StyleSheets").children("StyleSheet")) {
            if (!styles_.insert(node.attribute("ID").as_int(-1)).second)
                package_.Fault("two styles {}", node.attribute("ID").as_int());
        }
        for (const auto& node : root.child("StyleSheets").children("StyleSheet"))
            CheckSheet(document_, node, nullptr);
        CheckStandardStyles(root.child("StyleSheets"));
        CheckSheet(document_, root.child("DocumentSheet"), nullptr);
        for (const char* style : {"DefaultTextStyle", "DefaultLineStyle", "DefaultFillStyle"}) {
            if (!styles_.contains(root.child("DocumentSettings").attribute(style).as_int(-1)))
                package_.Fault("{} is not there", style);
        }
    }

    void CheckStandardStyles(const xml_node& styles) {
        const char* names[] = {"No Style", "Text Only", "None", "Normal"};
        for (int id = 0; id < 4; ++id) {
            const auto style = styles.find_child_by_attribute("ID", std::to_string(id).c_str());
            if (AttributeOf(style, "NameU") != names[id])
                package_.Fault("the style {} is no {}", id, names[id]);
        }
        const auto all = styles.find_child_by_attribute("ID", "0");
        const auto hold = [this](const xml_node& node, std::span<const CellDefault> cells) {
            for (const auto& each : cells) {
                if (!node.find_child_by_attribute("Cell", "N", std::string(each.cell).c_str()))
                    package_.Fault("No Style does not state {}", each.cell);
            }
        };
        hold(all, SheetDefaults());
        hold(all.find_child_by_attribute("Section", "N", "Character").child("Row"), CharacterDefaults());
        hold(all.find_child_by_attribute("Section", "N", "Paragraph").child("Row"), ParagraphDefaults());
    }

    /// Cells, sections and styles of anything; `canvas` null outside of pages and masters.
    void CheckSheet(const std::string& where, const xml_node& node, const Canvas* canvas) {
        for (const char* style : {"LineStyle", "FillStyle", "TextStyle"}) {
            const auto attribute = node.attribute(style);
            if (attribute && !styles_.contains(attribute.as_int(-1)))
                package_.Fault("{}: {} {} is not there", where, style, attribute.value());
        }
        CheckCells(where, node, canvas);
        std::set<std::pair<std::string, std::string>> sections;
        for (const auto& section : node.children("Section")) {
            const std::string name = AttributeOf(section, "N");
            if (!sections.emplace(name, AttributeOf(section, "IX")).second)
                package_.Fault("{}: two sections {}", where, name);
            CheckCells(where, section, canvas);
            std::set<std::string> rows;
            for (const auto& row : section.children("Row")) {
                const std::string key = row.attribute("N") ? AttributeOf(row, "N") : AttributeOf(row, "IX");
                if (key.empty() || !rows.insert(key).second)
                    package_.Fault("{}: row {} of {}", where, key, name);
                CheckCells(where, row, canvas);
                if (name == "Geometry" && !row.attribute("Del") && !row.attribute("T"))
                    package_.Fault("{}: a geometry row {} without a type", where, key);
            }
        }
    }

    void CheckCells(const std::string& where, const xml_node& node, const Canvas* canvas) {
        std::set<std::string> names;
        for (const auto& cell : node.children("Cell")) {
            const std::string name = AttributeOf(cell, "N"), formula = AttributeOf(cell, "F");
            if (name.empty() || !names.insert(name).second)
                package_.Fault("{}: the cell {} is there twice", where, name);
            if (!cell.attribute("V")) package_.Fault("{}: the cell {} has no value", where, name);
            if (formula.starts_with('=') || (cell.attribute("F") && formula.empty()))
                package_.Fault("{}: the formula {} of {}", where, formula, name);
            if (canvas) CheckReferences(where, formula, *canvas);
            if (name == "LayerMember" && canvas) CheckLayers(where, AttributeOf(cell, "V"), *canvas);
        }
    }

    void CheckReferences(const std::string& where, const std::string& formula, const Canvas& canvas) {
        for (auto at = formula.find("Sheet."); at != std::string::npos; at = formula.find("Sheet.", at + 1)) {
            int id = 0;
            std::from_chars(formula.data() + at + 6, formula.data() + formula.size(), id);
            if (!canvas.shapes.contains(id))
                package_.Fault("{}: {} names a shape that is not there", where, formula);
        }
    }

    void CheckLayers(const std::string& where, std::string layers, const Canvas& canvas) {
        while (!layers.empty()) {
            int layer = -1;
            std::from_chars(layers.data(), layers.data() + layers.size(), layer);
            if (!canvas.layers.contains(layer)) package_.Fault("{}: there is no layer {}", where, layers);
            const auto more = layers.find(';');
            layers = more == std::string::npos ? "" : layers.substr(more + 1);
        }
    }

    void CheckMasters() {
        const std::string list = package_.Target(document_, "masters");
        if (list.empty()) return;
        std::set<std::string> names;
        for (const auto& node : package_.trees[list].document_element().children("Master")) {
            const int id = node.attribute("ID").as_int(-1);
            const std::string part = PartOf(list, node);
            if (!masters_.emplace(id, Load(part, node)).second) package_.Fault("two masters {}", id);
            if (!names.insert(AttributeOf(node, "NameU")).second)
                package_.Fault("two masters {}", AttributeOf(node, "NameU"));
        }
        for (const auto& node : package_.trees[list].document_element().children("Master"))
            CheckCanvas(masters_[node.attribute("ID").as_int(-1)], node);
    }

    void CheckPages() {
        const std::string list = package_.Target(document_, "pages");
        if (list.empty()) return;
        std::set<int> ids;
        for (const auto& node : package_.trees[list].document_element().children("Page")) {
            if (!ids.insert(node.attribute("ID").as_int(-1)).second)
                package_.Fault("two pages {}", node.attribute("ID").as_int());
            for (const char* cell :
                 {"PageWidth", "PageHeight", "PageScale", "DrawingScale", "PlaceStyle", "RouteStyle",
                  "PlaceDepth", "LineRouteExt", "LineToNodeX", "AvenueSizeX"}) {
                if (!node.child("PageSheet").find_child_by_attribute("Cell", "N", cell))
                    package_.Fault("the page {} does not state {}", AttributeOf(node, "NameU"), cell);
            }
            const Canvas canvas = Load(PartOf(list, node), node);
            CheckCanvas(canvas, node);
            CheckConnects(canvas);
        }
        const auto windows = package_.trees[package_.Target(document_, "windows")].document_element();
        for (const auto& window : windows.children("Window")) {
            if (window.attribute("Page") && !ids.contains(window.attribute("Page").as_int(-1)))
                package_.Fault("a window shows no page");
        }
    }

    std::string PartOf(const std::string& list, const xml_node& node) {
        const std::string id = AttributeOf(node.child("Rel"), "r:id");
        if (!package_.relations[list].contains(id)) package_.Fault("{}: {} is no relationship", list, id);
        return package_.relations[list][id].target;
    }

    Canvas Load(const std::string& part, const xml_node& node) {
        Canvas canvas;
        canvas.part = part;
        for (const auto& row :
             node.child("PageSheet").find_child_by_attribute("Section", "N", "Layer").children())
            canvas.layers.insert(row.attribute("IX").as_int(-1));
        const std::function<void(const xml_node&, const xml_node&)> add = [&](const xml_node& parent,
                                                                              const xml_node& group) {
            for (const auto& shape : parent.child("Shapes").children("Shape")) {
                const int id = shape.attribute("ID").as_int();
                if (id < 1 || !canvas.shapes.emplace(id, shape).second)
                    package_.Fault("{}: two shapes {}", part, id);
                canvas.groups[id] = group;
                add(shape, shape);
            }
        };
        add(package_.trees[part].document_element(), {});
        return canvas;
    }

    /// The master that a shape or the group around it is an instance of; 0 when there is none.
    static int MasterOf(const Canvas& canvas, xml_node shape) {
        for (; shape; shape = canvas.groups.at(shape.attribute("ID").as_int())) {
            if (shape.attribute("Master")) return shape.attribute("Master").as_int();
        }
        return 0;
    }

    void CheckCanvas(const Canvas& canvas, const xml_node& node) {
        CheckSheet(canvas.part, node.child("PageSheet"), &canvas);
        for (const auto& [id, shape] : canvas.shapes) {
            const std::string where = fmt::format("{} shape {}", canvas.part, id);
            CheckSheet(where, shape, &canvas);
            const xml_node base = BaseOf(where, canvas, shape);
            CheckText(where, shape, base);
            if (AttributeOf(shape, "Type") == "Foreign") {
                const std::string rel = AttributeOf(shape.child("ForeignData").child("Rel"), "r:id");
                if (!package_.relations[canvas.part].contains(rel))
                    package_.Fault("{}: its picture is not there", where);
            }
            if (shape.child("Shapes") && AttributeOf(shape, "Type") != "Group")
                package_.Fault("{} holds shapes", where);
        }
    }

    xml_node BaseOf(const std::string& where, const Canvas& canvas, const xml_node& shape) {
        const int master = MasterOf(canvas, shape);
        if (master == 0) return {};
        const auto found = masters_.find(master);
        if (found == masters_.end()) {
            package_.Fault("{}: there is no master {}", where, master);
            return {};
        }
        const auto& relations = package_.relations[canvas.part];
        if (std::none_of(relations.begin(), relations.end(),
                         [&](const auto& each) { return each.second.target == found->second.part; }))
            package_.Fault("{}: no relationship to its master", where);
        if (shape.attribute("Master"))
            return package_.trees[found->second.part].document_element().child("Shapes").child("Shape");
        const int part = shape.attribute("MasterShape").as_int();
        const auto inner = found->second.shapes.find(part);
        if (part != 0 && inner == found->second.shapes.end())
            package_.Fault("{}: its master has no shape {}", where, part);
        return part != 0 && inner != found->second.shapes.end() ? inner->second : xml_node();
    }

    void CheckText(const std::string& where, const xml_node& shape, const xml_node& base) {
        const auto text = shape.child("Text");
        std::string whole;
        const std::pair<const char*, const char*> marks[] = {
            {"cp", "Character"}, {"pp", "Paragraph"}, {"tp", "Tabs"}};
        std::set<std::string> seen;
        for (const auto& node : text.children()) {
            if (node.type() == pugi::node_pcdata) {
                for (const auto& [mark, section] : marks) {
                    if (whole.empty() && !seen.contains(mark) && Rows(shape, section) > 0)
                        package_.Fault("{}: text in front of its first {}", where, mark);
                }
                whole += node.value();
                continue;
            }
            for (const auto& [mark, section] : marks) {
                if (std::string_view(node.name()) != mark) continue;
                seen.insert(mark);
                if (!HasRow(shape, section, AttributeOf(node, "IX")) &&
                    !HasRow(base, section, AttributeOf(node, "IX")))
                    package_.Fault("{}: {} {} has no row", where, mark, AttributeOf(node, "IX"));
            }
        }
        if (!whole.empty() && !whole.ends_with('\n')) package_.Fault("{}: its text has no end", where);
    }

    static xml_node Section(const xml_node& shape, const char* name) {
        return shape.find_child_by_attribute("Section", "N", name);
    }
    static std::ptrdiff_t Rows(const xml_node& shape, const char* section) {
        const auto rows = Section(shape, section).children("Row");
        return std::distance(rows.begin(), rows.end());
    }
    static bool HasRow(const xml_node& shape, const char* section, const std::string& index) {
        return !Section(shape, section).find_child_by_attribute("Row", "IX", index.c_str()).empty();
    }

    static std::optional<double> Value(const xml_node& shape, const char* cell) {
        const auto node = shape.find_child_by_attribute("Cell", "N", cell);
        return node ? std::optional(node.attribute("V").as_double()) : std::nullopt;
    }
    static std::string Formula(const xml_node& shape, const char* cell) {
        return AttributeOf(shape.find_child_by_attribute("Cell", "N", cell), "F");
    }

    void CheckConnects(const Canvas& canvas) {
        std::set<std::pair<int, std::string>> ends;
        for (const auto& node :
             package_.trees[canvas.part].document_element().child("Connects").children("Connect")) {
            const int from = node.attribute("FromSheet").as_int(), to = node.attribute("ToSheet").as_int();
            const std::string cell = AttributeOf(node, "FromCell"),
                              where = fmt::format("connect {} {}", from, cell);
            if (!canvas.shapes.contains(from) || !canvas.shapes.contains(to)) {
                package_.Fault("{}: a shape is not there", where);
                continue;
            }
            if (!ends.emplace(from, cell).second) package_.Fault("{} is there twice", where);
            const bool begin = cell == "BeginX";
            if (!begin && cell != "EndX") package_.Fault("{} is no end of a line", where);
            if (node.attribute("FromPart").as_int() != (begin ? 9 : 12))
                package_.Fault("{}: FromPart", where);
            if (AttributeOf(node, "ToCell") != "PinX" || node.attribute("ToPart").as_int() != 3)
                package_.Fault("{} is not to the whole shape", where);
            const xml_node line = canvas.shapes.at(from);
            const std::string walk = begin ? "_WALKGLUE(BegTrigger,EndTrigger,WalkPreference)"
                                           : "_WALKGLUE(EndTrigger,BegTrigger,WalkPreference)";
            for (const char* end : begin ? std::array{"BeginX", "BeginY"} : std::array{"EndX", "EndY"}) {
                if (Formula(line, end) != walk)
                    package_.Fault("{}: {} is {}", where, end, Formula(line, end));
            }
            const char* trigger = begin ? "BegTrigger" : "EndTrigger";
            if (Formula(line, trigger) != fmt::format("_XFTRIGGER(Sheet.{}!EventXFMod)", to))
                package_.Fault("{}: {} is {}", where, trigger, Formula(line, trigger));
        }
        for (const auto& [id, shape] : canvas.shapes) CheckRoute(canvas, id, shape);
    }

    /// A line's own outline runs from its begin to its end, and its block is where these say.
    void CheckRoute(const Canvas& canvas, int id, const xml_node& line) {
        const auto beginX = Value(line, "BeginX"), beginY = Value(line, "BeginY"), endX = Value(line, "EndX"),
                   endY = Value(line, "EndY"), pinX = Value(line, "PinX"), pinY = Value(line, "PinY");
        if (Formula(line, "BegTrigger").empty() || Formula(line, "EndTrigger").empty()) return;
        if (!beginX || !beginY || !endX || !endY || !pinX || !pinY)
            return package_.Fault("line {} does not state its ends", id);
        const auto near = [&](double a, double b, const char* what) {
            if (!(std::fabs(a - b) < 1e-6))
                package_.Fault("{} line {}: {} is {} and not {}", canvas.part, id, what, a, b);
        };
        near(*pinX, (*beginX + *endX) / 2, "PinX");
        near(*pinY, (*beginY + *endY) / 2, "PinY");
        const auto outline = Section(line, "Geometry");
        const auto first = outline.find_child_by_attribute("Row", "T", "MoveTo");
        xml_node last;
        for (const auto& row : outline.children("Row")) {
            if (!row.attribute("Del")) last = row;
        }
        if (!first || !last || AttributeOf(last, "T") != "LineTo") return;
        const double originX = *pinX - Value(line, "LocPinX").value_or(0),
                     originY = *pinY - Value(line, "LocPinY").value_or(0);
        near(originX + Value(first, "X").value_or(0), *beginX, "the route's first X");
        near(originY + Value(first, "Y").value_or(0), *beginY, "the route's first Y");
        near(originX + Value(last, "X").value_or(0), *endX, "the route's last X");
        near(originY + Value(last, "Y").value_or(0), *endY, "the route's last Y");
    }

    OpenedPackage& package_;
    std::string document_;
    std::set<int> styles_;
    std::map<int, Canvas> masters_;
};

}  // namespace

void CheckDrawing(OpenedPackage& package) {
    DrawingChecker(package).Run();
}

}  // namespace norvelis::drawing
