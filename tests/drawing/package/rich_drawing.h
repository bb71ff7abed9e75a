#pragma once

#include "drawing/model/document.h"
#include "testing/small_drawing.h"

namespace norvelis::drawing {

/// A picture of one red point.
inline const std::string kRedPoint = std::string(
    "\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\1\0\0\0\1\x08\2\0\0\0\x90wS\xde\0\0\0\x0cIDATx\x9c"
    "c\xf8\xcf\xc0\0\0\3\1\1\0\xc9\xfe\x92\xef\0\0\0\0IEND\xae"
    "B`\x82",
    69);

/// Something of everything that a package can hold: two pages of which one lies behind the other, masters,
/// groups in groups, texts in many formats, layers, links, tab stops, custom properties, fields, a picture,
/// texts and numbers at the edge of what files can say.
inline std::unique_ptr<Document> RichDrawing() {
    auto made = std::make_unique<Document>();
    Document& document = *made;
    AddStandardStyles(document);
    document.title = "Rich & \"strange\" <drawing>";
    document.creator = "J\xC3\xBCrgen";
    document.colors = {{24, {1, 2, 3}}, {30, {200, 100, 50}}};
    document.headerFooter.footerLeft = "&d &t";
    document.headerFooter.headerRight = "page &p";

    Page& page = document.AddPage("First page");
    StatePage(document, page.sheet, 11, 8.5);
    Page& back = document.AddPage("Behind");
    StatePage(document, back.sheet, 11, 8.5);
    back.background = true;
    page.backPage = back.id;
    const std::string layers[] = {"Connector", "1", "Background Design"};
    for (int number = 0; number < 3; ++number) {
        page.sheet.At(Name::Layer)
            .At(RowKey::Number(number))
            .cells.SetText(Name::Name, layers[number])
            .Set(Name::Visible, 1)
            .Set(Name::Lock, number == 2 ? 1 : 0);
    }

    Master& box = AddBoxMaster(document, "Process");
    Master& group = document.AddMaster("Group of two");
    StatePage(document, group.sheet, 2, 2);
    auto top = std::make_unique<Shape>();
    top->kind = ShapeKind::Group;
    top->cells.Set(Name::PinX, 1).Set(Name::PinY, 1).Set(Name::Width, 2).Set(Name::Height, 2);
    Shape& outer = group.Add(std::move(top));
    for (const double place : {0.5, 1.5}) {
        auto part = std::make_unique<Shape>();
        part->kind = place > 1 ? ShapeKind::Group : ShapeKind::Shape;
        part->cells.Set(Name::PinX, place, "Sheet." + std::to_string(outer.id) + "!Width*0.25");
        part->text = TextRuns{{"part"}};
        Shape& added = group.Add(std::move(part), &outer);
        if (place > 1) group.Add(std::make_unique<Shape>(), &added);
    }

    Shape& record = DropInstance(page, box, 3, 4);
    record.name = record.nameU = "EMPLOYEE";
    record.cells.Set(Name::Width, 2.1000000000000001, "GUARD(TEXTWIDTH(TheText))").Set(Name::Height, 1.0 / 3);
    record.cells.SetText(Name::Comment, "first\nsecond\t\"quoted\" & <odd> \x01 \xFF end");
    record.cells.SetText(Name::LayerMember, "1");
    record.cells.SetText(Name::FillForegnd, "#CCFF99", "RGB(204,255,153)");
    record.cells.At(Name::PinY).unit = Name::IN;
    record.text = TextRuns{{"EMPLOYEE", 1, 0, 0}, {"\r\n415 | F", 2, 1, 0},
                           {"", 1, 0, 0},         {"  last  \xE2\x82\xAC line ", 1, 1, 1},
                           {"7", 1, 1, 1, 0},     {" pages", 1, 1, 1}};
    for (int row = 0; row < 3; ++row) {
        record.At(Name::Character)
            .At(RowKey::Number(row))
            .cells.Set(Name::Font, document.FontIndex(row == 1 ? "Times New Roman" : "Courier New"))
            .Set(Name::Color, row == 2 ? 4 : 2)
            .Set(Name::Style, row)
            .Set(Name::Size, (6 + row) / 72.0);
    }
    record.At(Name::Paragraph).At(RowKey::Number(0)).cells.Set(Name::HorzAlign, 0);
    record.At(Name::Paragraph).At(RowKey::Number(1)).cells.Set(Name::HorzAlign, 2).Set(Name::SpLine, -1.5);
    for (int row = 0; row < 2; ++row)
        record.At(Name::Tabs)
            .At(RowKey::Number(row))
            .cells.Set(Name::Position0, row + 0.8)
            .Set(Name::Alignment0, 0);
    record.At(Name::Field).At(RowKey::Number(0)).cells.SetText(Name::Value, "7", "PAGECOUNT()");
    record.At(Name::Hyperlink)
        .At(RowKey::Named(document.names.Intern("Row_1")))
        .cells.SetText(Name::Description, "more")
        .SetText(Name::Address, "https://example.org/?a=1&b=\"2\"");
    record.At(Name::Property)
        .At(RowKey::Named(document.names.Intern("Duration")))
        .cells.SetText(Name::Label, "12")
        .SetText(Name::Value, "12")
        .Set(Name::SortKey, 3);
    record.At(Name::User).At(RowKey::Named(document.names.Intern("Odd"))).cells.Set(Name::Value, -1.5e-7);
    record.At(Name::Geometry, 0).At(RowKey::Number(2)).deleted = true;
    record.At(Name::Geometry, 1).cells.Set(Name::NoLine, 1);
    record.At(Name::Geometry, 1).At(RowKey::Number(1)).type = Name::Ellipse;
    record.At(Name::Geometry, 1).At(RowKey::Number(1)).cells.Set(Name::X, 0.1).Set(Name::Y, 1e-12);

    Shape& pair = DropInstance(page, group, 7, 4);
    pair.cells.At(Name::Width).inherited = true;
    pair.cells.At(Name::Width).SetNumber(4);
    pair.cells.SetText(Name::LayerMember, "0;2");
    auto picture = std::make_unique<Shape>();
    picture->kind = ShapeKind::Foreign;
    picture->picture = std::make_unique<ForeignPicture>(ForeignPicture{"Bitmap", "PNG", "png", kRedPoint});
    picture->cells.Set(Name::PinX, 9).Set(Name::PinY, 7).Set(Name::Width, 1).Set(Name::Height, 1);
    picture->cells.Set(Name::ImgWidth, 1).Set(Name::ImgHeight, 1);
    page.Add(std::move(picture));
    auto guide = std::make_unique<Shape>();
    guide->kind = ShapeKind::Guide;
    page.Add(std::move(guide));
    auto text = std::make_unique<Shape>();
    text->text = TextRuns{{"\n\n"}};
    page.Add(std::move(text));
    auto empty = std::make_unique<Shape>();
    empty->text = TextRuns{};
    empty->At(Name::Character);  // A section without rows.
    back.Add(std::move(empty));
    return made;
}

}  // namespace norvelis::drawing
