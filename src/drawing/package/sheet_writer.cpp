#include "drawing/package/sheet_writer.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "drawing/package/text_rows.h"

namespace norvelis::drawing {

bool HoldsText(Name section, Name cell) {
    switch (section) {
        case Name::None:
            return cell == Name::Comment || cell == Name::LayerMember || cell == Name::ShapeKeywords ||
                   cell == Name::HelpTopic || cell == Name::Copyright || cell == Name::LangID ||
                   cell == Name::DocLangID;
        case Name::Hyperlink:
            return cell == Name::Description || cell == Name::Address || cell == Name::SubAddress ||
                   cell == Name::ExtraInfo || cell == Name::Frame || cell == Name::SortKey;
        case Name::Property:
            return cell == Name::Label || cell == Name::Prompt || cell == Name::Format ||
                   cell == Name::SortKey;
        case Name::Layer:
            return cell == Name::Name || cell == Name::NameUniv;
        case Name::Control:
        case Name::User:
            return cell == Name::Prompt;
        default:
            return cell == Name::BulletStr || cell == Name::LangID;
    }
}

namespace {

/// Files know one kind of line end. `afterReturn` goes from run to run: a format may change inside a line
/// end.
std::string WithLineFeeds(std::string_view text, bool& afterReturn) {
    std::string result;
    result.reserve(text.size());
    for (const char c : text) {
        if (c == '\r' || (c == '\n' && !afterReturn)) {
            result += '\n';
        } else if (c != '\n') {
            result += c;
        }
        afterReturn = c == '\r';
    }
    return result;
}

/// A colour as files hold it: not a text, although its value looks like one.
bool IsColor(Name section, const Cell& cell) {
    const bool mayBe = section == Name::None || section == Name::Character || section == Name::Layer;
    return mayBe && cell.text.size() == 7 && cell.text.starts_with('#');
}

/// The published number of a section, by which files order them; those that we only pass on come last.
int NumberOf(Name section) {
    switch (section) {
        case Name::Character:
            return 3;
        case Name::Paragraph:
            return 4;
        case Name::Tabs:
            return 5;
        case Name::Scratch:
            return 6;
        case Name::Connection:
            return 7;
        case Name::Field:
            return 8;
        case Name::Control:
            return 9;
        case Name::Geometry:
            return 10;
        case Name::Actions:
            return 240;
        case Name::Layer:
            return 241;
        case Name::User:
            return 242;
        case Name::Property:
            return 243;
        case Name::Hyperlink:
            return 244;
        default:
            return 255;
    }
}

/// The elements in ascending order of a key, equal ones as they are.
template <class Element, class Key>
std::vector<const Element*> Ascending(const std::vector<Element>& elements, Key key) {
    std::vector<const Element*> inOrder;
    inOrder.reserve(elements.size());
    for (const Element& element : elements) inOrder.push_back(&element);
    std::stable_sort(inOrder.begin(), inOrder.end(),
                     [&key](const Element* a, const Element* b) { return key(*a) < key(*b); });
    return inOrder;
}

/// Against one made of its master's name and its ID.
bool IsGivenName(const Shape& shape) {
    const std::string kind = shape.master ? shape.master->nameU : "Sheet";
    return shape.nameU != kind && shape.nameU != kind + "." + std::to_string(shape.id);
}

}  // namespace

void SheetWriter::NameAttributes(std::string_view nameU, std::string_view name, bool given) {
    const auto attribute = [&](const char* plain, const char* flag, std::string_view text) {
        if (text.empty()) return;
        xml_.Attribute(plain, text);
        if (given) xml_.Attribute(flag, 1);
    };
    attribute("NameU", "IsCustomNameU", nameU);
    attribute("Name", "IsCustomName", name);
}

void SheetWriter::StyleAttributes(const Sheet& sheet) {
    if (sheet.lineStyle) xml_.Attribute("LineStyle", sheet.lineStyle->id);
    if (sheet.fillStyle) xml_.Attribute("FillStyle", sheet.fillStyle->id);
    if (sheet.textStyle) xml_.Attribute("TextStyle", sheet.textStyle->id);
}

void SheetWriter::Cells(const CellList& cells, Name section) {
    for (const auto& cell : cells) {
        xml_.Open("Cell").Attribute("N", document_.names.Text(cell.name));
        if (section == Name::Character && cell.name == Name::Font && !cell.isText) {
            xml_.Attribute("V", document_.FontName(static_cast<int>(cell.value)));
        } else if (cell.isText) {
            xml_.Attribute("V", cell.text);
        } else {
            xml_.Attribute("V", cell.value);
        }
        if (cell.unit != Name::None) {
            xml_.Attribute("U", document_.names.Text(cell.unit));
        } else if (cell.isText && !HoldsText(section, cell.name) && !IsColor(section, cell)) {
            xml_.Attribute("U", "STR");
        }
        if (cell.inherited) {
            xml_.Attribute("F", "Inh");
        } else if (!cell.formula.empty()) {
            xml_.Attribute("F", cell.formula);
        }
        xml_.Close();
    }
}

void SheetWriter::SectionElement(const Section& section) {
    xml_.Open("Section").Attribute("N", document_.names.Text(section.name));
    if (section.name == Name::Geometry) xml_.Attribute("IX", section.index);
    if (section.deleted) xml_.Attribute("Del", 1);
    Cells(section.cells, section.name);
    // Named rows have no numbers and keep their order.
    const auto number = [](const Row& row) { return row.key.IsNamed() ? 0 : row.key.Index(); };
    for (const Row* row : Ascending(section.rows, number)) {
        xml_.Open("Row");
        if (row->key.IsNamed()) xml_.Attribute("N", document_.names.Text(row->key.RowName()));
        if (row->type != Name::None) xml_.Attribute("T", document_.names.Text(row->type));
        if (!row->key.IsNamed()) xml_.Attribute("IX", row->key.Index());
        if (row->deleted) xml_.Attribute("Del", 1);
        Cells(row->cells, section.name);
        xml_.Close();
    }
    xml_.Close();
}

void SheetWriter::SheetContent(const Sheet& sheet) {
    Content(sheet.cells, sheet.sections);
}

void SheetWriter::Content(const CellList& cells, const std::vector<Section>& sections) {
    xml_.Text("");
    Cells(cells, Name::None);
    const auto number = [](const Section& section) {
        return std::pair(NumberOf(section.name), section.index);
    };
    for (const Section* section : Ascending(sections, number)) {
        const bool empty = section->cells.empty() && section->rows.empty() && !section->deleted;
        if (!empty) SectionElement(*section);
    }
}

void SheetWriter::TextElement(const Shape& shape, const TextRuns& runs) {
    xml_.Open("Text").Text("");
    const auto first = [&shape](Name section) {
        const Section* own = shape.Find(section);
        return own && !own->rows.empty() ? -1 : 0;
    };
    int character = first(Name::Character), paragraph = first(Name::Paragraph), tabs = first(Name::Tabs);
    const auto mark = [this](const char* element, int& current, int row) {
        if (current == row) return;
        xml_.Open(element).Attribute("IX", row).Close();
        current = row;
    };
    bool afterReturn = false;
    for (const auto& run : runs) {
        mark("cp", character, run.character);
        mark("pp", paragraph, run.paragraph);
        mark("tp", tabs, run.tabs);
        if (run.field >= 0) xml_.Open("fld").Attribute("IX", run.field);
        xml_.Text(WithLineFeeds(run.text, afterReturn));
        if (run.field >= 0) xml_.Close();
    }
    if (!runs.empty()) xml_.Text("\n");
    xml_.Close();
}

void SheetWriter::Picture(const ForeignPicture& picture) {
    if (!addPicture_) return;
    xml_.Open("ForeignData").Attribute("ForeignType", picture.type);
    if (!picture.compression.empty()) xml_.Attribute("CompressionType", picture.compression);
    xml_.Open("Rel").Attribute("r:id", addPicture_(picture)).Close().Close();
}

void SheetWriter::ShapeElement(const Shape& shape) {
    xml_.Open("Shape").Attribute("ID", shape.id);
    NameAttributes(shape.nameU, shape.name, IsGivenName(shape));
    const char* kinds[] = {"Shape", "Group", "Foreign", "Guide"};
    xml_.Attribute("Type", kinds[static_cast<int>(shape.kind)]);
    if (shape.master) {
        xml_.Attribute("Master", shape.master->id);
    } else if (shape.base) {
        xml_.Attribute("MasterShape", shape.base->id);
    }
    StyleAttributes(shape);
    if (shape.text) {
        const FiledText filed = ToFile(shape);
        Content(shape.cells, filed.sections);
        TextElement(shape, filed.runs);
    } else {
        SheetContent(shape);
    }
    if (shape.picture) Picture(*shape.picture);
    if (!shape.shapes.empty()) {
        xml_.Open("Shapes");
        for (const auto& inner : shape.shapes) ShapeElement(*inner);
        xml_.Close();
    }
    xml_.Close();
}

}  // namespace norvelis::drawing
