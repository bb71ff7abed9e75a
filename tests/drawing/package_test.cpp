#include "drawing/package/package.h"

#include <gtest/gtest.h>

#include "small_drawing.h"

namespace norvelis::drawing {
namespace {

TEST(Package, RoundTrip) {
    Document document;
    AddStandardStyles(document);
    Master& master = AddBoxMaster(document, "Process");
    Page& page = document.AddPage("Page-1");
    page.sheet.cells.Set(Name::PageWidth, 8.5).Set(Name::PageHeight, 11);
    page.sheet.At(Name::Layer).At(RowKey::Number(0)).cells.SetText(Name::Name, "1").Set(Name::Lock, 1);
    Shape& shape = DropInstance(page, master, 3, 4);
    shape.text = TextRuns{{"EMPLOYEE", 0, 0, 0, -1}, {"\r\n415 | F & <é>", 1, 0, 0, -1}};
    shape.At(Name::Character)
        .At(RowKey::Number(0))
        .cells.Set(Name::Font, document.FontIndex("Times New Roman"));
    shape.At(Name::Character)
        .At(RowKey::Number(1))
        .cells.Set(Name::Font, document.FontIndex("Courier New"))
        .Set(Name::Color, 4);
    shape.cells.SetText(Name::Comment, "12", "\"12\"");
    const std::string first = WritePackage(document);
    const auto read = ReadPackage(first);
    EXPECT_EQ(WritePackage(*read), first);
    EXPECT_EQ(PlainText(TextOf(*read->pages[0]->shapes[0])), "EMPLOYEE\n415 | F & <é>");
}

}  // namespace
}  // namespace norvelis::drawing
