#include <algorithm>
#include <charconv>
#include <cmath>
#include <set>
#include <sstream>
#include <utility>

#include "drawing/opened_package.h"

// The published schema of Visio's XML as far as drawings use it: which elements and attributes there are, in
// which order, which sections and rows, what a value may be.
namespace norvelis::drawing {

namespace {

using pugi::xml_node;
using Words = std::vector<std::string>;

Words Split(const std::string& text) {
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

struct Element {
    const char* name;
    /// Each as "Name:type", with "!" in front where it is required; u whole, d number, b yes or no, s text.
    const char* attributes;
    /// In this order.
    const char* children;
};

constexpr Element kElements[] = {
    {"VisioDocument", "!xmlns:s xmlns:r:s xml:space:s",
     "DocumentSettings Colors FaceNames StyleSheets DocumentSheet EventList HeaderFooter"},
    {"DocumentSettings",
     "TopPage:u DefaultTextStyle:u DefaultLineStyle:u DefaultFillStyle:u DefaultGuideStyle:u",
     "GlueSettings SnapSettings SnapExtensions SnapAngles DynamicGridEnabled ProtectStyles ProtectShapes"},
    {"Colors", "", "ColorEntry"},
    {"ColorEntry", "!IX:u !RGB:s", ""},
    {"FaceNames", "", "FaceName"},
    {"FaceName", "!NameU:s UnicodeRanges:s CharSets:s Panos:s Flags:u", ""},
    {"StyleSheets", "", "StyleSheet"},
    {"StyleSheet", "!ID:u NameU:s IsCustomNameU:b Name:s IsCustomName:b LineStyle:u FillStyle:u TextStyle:u",
     "Cell Section"},
    {"DocumentSheet", "NameU:s IsCustomNameU:b Name:s IsCustomName:b LineStyle:u FillStyle:u TextStyle:u",
     "Cell Section"},
    {"HeaderFooter", "HeaderFooterColor:s",
     "HeaderMargin FooterMargin HeaderLeft HeaderCenter HeaderRight FooterLeft FooterCenter FooterRight"},
    {"Masters", "!xmlns:s xmlns:r:s xml:space:s", "Master"},
    {"Master",
     "!ID:u NameU:s IsCustomNameU:b Name:s IsCustomName:b Prompt:s IconSize:u AlignName:u MatchByName:b "
     "IconUpdate:b UniqueID:s BaseID:s PatternFlags:u Hidden:b MasterType:u",
     "PageSheet Rel Icon"},
    {"PageSheet", "LineStyle:u FillStyle:u TextStyle:u UniqueID:s", "Cell Section"},
    {"Rel", "!r:id:s", ""},
    {"Pages", "!xmlns:s xmlns:r:s xml:space:s", "Page"},
    {"Page",
     "!ID:u NameU:s IsCustomNameU:b Name:s IsCustomName:b Background:b BackPage:u ViewScale:d ViewCenterX:d "
     "ViewCenterY:d ReviewerID:u AssociatedPage:u",
     "PageSheet Rel"},
    {"PageContents", "!xmlns:s xmlns:r:s xml:space:s", "Shapes Connects"},
    {"MasterContents", "!xmlns:s xmlns:r:s xml:space:s", "Shapes Connects"},
    {"Shapes", "", "Shape"},
    {"Shape",
     "!ID:u NameU:s IsCustomNameU:b Name:s IsCustomName:b Type:s Master:u MasterShape:u UniqueID:s "
     "LineStyle:u "
     "FillStyle:u TextStyle:u Del:b",
     "Cell Section Text Data1 Data2 Data3 ForeignData Shapes"},
    {"Cell", "!N:s !V:s U:s E:s F:s", ""},
    {"Section", "!N:s IX:u Del:b", "Cell Row"},
    {"Row", "N:s LocalName:s T:s IX:u Del:b", "Cell"},
    {"ForeignData", "!ForeignType:s ObjectType:u CompressionType:s CompressionLevel:d", "Rel"},
    {"Text", "", "cp pp tp fld"},
    {"cp", "!IX:u", ""},
    {"pp", "!IX:u", ""},
    {"tp", "!IX:u", ""},
    {"fld", "!IX:u", ""},
    {"Connects", "", "Connect"},
    {"Connect", "!FromSheet:u FromCell:s FromPart:u !ToSheet:u ToCell:s ToPart:u", ""},
    {"Windows", "!xmlns:s xmlns:r:s xml:space:s ClientWidth:u ClientHeight:u", "Window"},
    {"Window",
     "!ID:u !WindowType:s WindowState:u WindowLeft:d WindowTop:d WindowWidth:u WindowHeight:u "
     "ContainerType:s "
     "Container:u Sheet:u Page:u ViewScale:d ViewCenterX:d ViewCenterY:d",
     "ShowRulers ShowGrid ShowPageBreaks ShowGuides ShowConnectionPoints GlueSettings SnapSettings "
     "SnapExtensions SnapAngles DynamicGridEnabled TabSplitterPos"},
};

struct SectionKind {
    const char* name;
    bool named;         ///< Its rows have names; otherwise numbers.
    const char* texts;  ///< Cells of its rows that hold texts.
};
constexpr SectionKind kSections[] = {
    {"Geometry", false, ""},
    {"Character", false, "Font LangID"},
    {"Paragraph", false, "BulletStr"},
    {"Tabs", false, ""},
    {"Layer", false, "Name NameUniv"},
    {"Property", true, "Label Prompt Format SortKey LangID"},
    {"User", true, "Prompt"},
    {"Hyperlink", true, "Description Address SubAddress ExtraInfo Frame SortKey"},
    {"Control", true, "Prompt"},
    {"Field", false, "Format"},
};
constexpr const char* kTextsOfSheets =
    "Comment LayerMember ShapeKeywords HelpTopic Copyright LangID DocLangID";
constexpr const char* kGeometryRows =
    "MoveTo LineTo ArcTo EllipticalArcTo Ellipse InfiniteLine SplineStart SplineKnot PolylineTo NURBSTo "
    "RelMoveTo RelLineTo RelCubBezTo RelQuadBezTo RelEllipticalArcTo";
constexpr const char* kFunctions =
    "ABS AND GUARD IF MAX MIN NOT OR PAGECOUNT RGB SETATREF TEXTHEIGHT TEXTWIDTH _WALKGLUE _XFTRIGGER";

bool Has(const std::string& words, const std::string& word) {
    const Words all = Split(words);
    return std::find(all.begin(), all.end(), word) != all.end();
}

bool IsNumber(const std::string& text) {
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && std::isfinite(number);
}

bool Fits(const std::string& value, char type) {
    switch (type) {
        case 'u':
            return !value.empty() && value.size() < 11 &&
                   value.find_first_not_of("0123456789") == std::string::npos;
        case 'd':
            return IsNumber(value);
        case 'b':
            return value == "0" || value == "1";
        default:
            return true;
    }
}

class SchemaChecker {
  public:
    explicit SchemaChecker(OpenedPackage& package) : package_(package) {}

    void Run() {
        const std::string document = package_.Target("", "document");
        for (const auto& node :
             package_.trees[document].document_element().child("FaceNames").children("FaceName"))
            fonts_.insert(AttributeOf(node, "NameU"));
        for (const auto& [part, type] : package_.types) {
            if (!type.starts_with("application/vnd.ms-visio.")) continue;
            part_ = part;
            Check(package_.trees[part].document_element());
        }
    }

  private:
    void Check(const xml_node& node) {
        const auto kind = std::find_if(std::begin(kElements), std::end(kElements), [&](const Element& each) {
            return std::string_view(each.name) == node.name();
        });
        if (kind == std::end(kElements)) return CheckNumber(node);
        CheckAttributes(node, kind->attributes);
        CheckChildren(node, kind->children);
        if (std::string_view(kind->name) == "Section") CheckSection(node);
        if (std::string_view(kind->name) == "Text") CheckRuns(node);
        if (std::string_view(kind->name) == "Cell") CheckCell(node);
        for (const auto& child : node.children()) {
            if (child.type() == pugi::node_element) Check(child);
        }
    }

    /// Settings are elements that hold a number or a text and nothing else.
    void CheckNumber(const xml_node& node) {
        if (node.first_attribute()) package_.Fault("{}: {} has attributes", part_, node.name());
        const std::string name = node.name();
        const bool isText = name.starts_with("Header") || name.starts_with("Footer");
        if (!isText && !IsNumber(node.text().get()))
            package_.Fault("{}: {} is {}", part_, name, node.text().get());
    }

    void CheckAttributes(const xml_node& node, const char* attributes) {
        std::set<std::string> allowed;
        for (std::string word : Split(attributes)) {
            const bool required = word.starts_with('!');
            if (required) word.erase(0, 1);
            const char type = word.back();
            const std::string name = word.substr(0, word.size() - 2);
            allowed.insert(name);
            const auto attribute = node.attribute(name.c_str());
            if (required && !attribute) package_.Fault("{}: {} without {}", part_, node.name(), name);
            if (attribute && !Fits(attribute.value(), type))
                package_.Fault("{}: {} {} is {}", part_, node.name(), name, attribute.value());
        }
        for (const auto& attribute : node.attributes()) {
            if (!allowed.contains(attribute.name()) && !std::string_view(attribute.name()).starts_with("xml"))
                package_.Fault("{}: {} has the unknown attribute {}", part_, node.name(), attribute.name());
        }
    }

    void CheckChildren(const xml_node& node, const char* children) {
        const Words order = Split(children);
        const bool inOrder = std::string_view(node.name()) != "Text";
        auto at = order.begin();
        for (const auto& child : node.children()) {
            if (child.type() != pugi::node_element) continue;
            const auto found = std::find(inOrder ? at : order.begin(), order.end(), child.name());
            if (found == order.end())
                package_.Fault("{}: {} is in the wrong place in {}", part_, child.name(), node.name());
            else
                at = found;
        }
    }

    void CheckSection(const xml_node& section) {
        const std::string name = AttributeOf(section, "N");
        const auto kind = std::find_if(std::begin(kSections), std::end(kSections),
                                       [&](const SectionKind& each) { return name == each.name; });
        if (kind == std::end(kSections)) return package_.Fault("{}: the unknown section {}", part_, name);
        if ((name == "Geometry") == section.attribute("IX").empty())
            package_.Fault("{}: the number of a section {}", part_, name);
        const auto before = section.previous_sibling("Section");
        if (name == AttributeOf(before, "N") &&
            section.attribute("IX").as_int() <= before.attribute("IX").as_int())
            package_.Fault("{}: two sections {} that do not ascend", part_, name);
        int last = -1;
        for (const auto& row : section.children("Row")) {
            if (!kind->named &&
                row.attribute("IX").as_int() <= std::exchange(last, row.attribute("IX").as_int()))
                package_.Fault("{}: the rows of a section {} do not ascend", part_, name);
            if (row.attribute(kind->named ? "N" : "IX").empty())
                package_.Fault("{}: a row of {} without name or number", part_, name);
            const std::string type = AttributeOf(row, "T");
            if (!type.empty() && (name != "Geometry" || !Has(kGeometryRows, type)))
                package_.Fault("{}: a row {} in {}", part_, type, name);
        }
    }

    /// Every run of a text has the row behind that of the run in front.
    void CheckRuns(const xml_node& text) {
        int next = 0;
        for (const auto& mark : text.children("cp")) {
            if (mark.attribute("IX").as_int(-1) != next++)
                package_.Fault("{}: the runs of a text skip to cp {}", part_, AttributeOf(mark, "IX"));
        }
    }

    void CheckCell(const xml_node& cell) {
        const auto row = cell.parent();
        const bool inRow = std::string_view(row.name()) == "Row";
        const std::string section = inRow ? AttributeOf(row.parent(), "N") : std::string();
        const std::string name = AttributeOf(cell, "N"), value = AttributeOf(cell, "V");
        const auto kind = std::find_if(std::begin(kSections), std::end(kSections),
                                       [&](const SectionKind& each) { return section == each.name; });
        const bool holdsText = Has(inRow && kind != std::end(kSections) ? kind->texts : kTextsOfSheets, name);
        const bool isColor = value.size() == 7 && value[0] == '#';
        if (!holdsText && AttributeOf(cell, "U") != "STR" && !isColor && !IsNumber(value))
            package_.Fault("{}: the text \"{}\" in {}", part_, value, name);
        if (section == "Character" && name == "Font" && !fonts_.contains(value))
            package_.Fault("{}: the font {} is not listed", part_, value);
        CheckFormula(AttributeOf(cell, "F"));
    }

    void CheckFormula(const std::string& formula) {
        int depth = 0;
        bool inText = false;
        std::string word;
        for (const char c : formula) {
            if (c == '"') inText = !inText;
            if (inText) continue;
            if (std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '.') {
                word += c;
                continue;
            }
            if (c == '(' && !word.empty() && !Has(kFunctions, word))
                package_.Fault("{}: the unknown function {} in {}", part_, word, formula);
            word.clear();
            depth += c == '(' ? 1 : c == ')' ? -1 : 0;
            if (depth < 0) break;
        }
        if (depth != 0 || inText) package_.Fault("{}: the formula {} does not close", part_, formula);
    }

    OpenedPackage& package_;
    std::string part_;
    std::set<std::string> fonts_;
};

}  // namespace

void CheckSchema(OpenedPackage& package) {
    SchemaChecker(package).Run();
}

}  // namespace norvelis::drawing
