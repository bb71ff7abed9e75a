#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "drawing/package/package.h"
#include "drawing/package/rich_drawing.h"
#include "drawing/package_rules.h"

namespace norvelis::drawing {
namespace {

TEST(RoundTrip, SavedAndReadAndSavedIsTheSameFile) {
    for (const auto kind : {DocumentKind::Drawing, DocumentKind::Stencil, DocumentKind::Template}) {
        auto document = RichDrawing();
        document->kind = kind;
        const std::string first = WritePackage(*document);
        const auto read = ReadPackage(first);
        EXPECT_EQ(read->kind, kind);
        EXPECT_EQ(WritePackage(*read), first);
    }
    EXPECT_EQ(WritePackage(*ReadPackage(WritePackage(Document()))), WritePackage(Document()));
}

TEST(RoundTrip, EqualDrawingsGiveEqualBytes) {
    EXPECT_EQ(WritePackage(*RichDrawing()), WritePackage(*RichDrawing()));
    auto other = RichDrawing();
    other->pages[0]->shapes[0]->cells.At(Name::PinX).value += 1e-12;
    EXPECT_NE(WritePackage(*other), WritePackage(*RichDrawing()));
}

TEST(RoundTrip, TheFileKeepsEveryRuleOfPackages) {
    EXPECT_THAT(PackageFaults(WritePackage(*RichDrawing())), testing::IsEmpty());
}

TEST(RoundTrip, NothingIsLost) {
    const auto document = ReadPackage(WritePackage(*RichDrawing()));
    EXPECT_EQ(document->title, "Rich & \"strange\" <drawing>");
    EXPECT_EQ(document->creator, "J\xC3\xBCrgen");
    EXPECT_EQ(document->PaletteColor(30), (Color{200, 100, 50}));
    EXPECT_EQ(document->headerFooter.footerLeft, "&d &t");
    ASSERT_EQ(document->pages.size(), 2u);
    EXPECT_EQ(document->pages[0]->backPage, document->pages[1]->id);
    EXPECT_TRUE(document->pages[1]->background);
    ASSERT_EQ(document->masters.size(), 2u);

    const auto& shapes = document->pages[0]->shapes;
    ASSERT_EQ(shapes.size(), 5u);
    const Shape& record = *shapes[0];
    EXPECT_EQ(record.name, "EMPLOYEE");
    EXPECT_EQ(record.master, document->masters[0].get());
    EXPECT_EQ(Number(record, Name::Width), 2.1);
    EXPECT_EQ(Number(record, Name::Height), 1.0 / 3);
    EXPECT_EQ(FormulaOf(record, Name::Width), "GUARD(TEXTWIDTH(TheText))");
    EXPECT_EQ(FormulaOf(record, Name::LocPinX), "Width*0.5");  // The master's.
    EXPECT_EQ(TextValue(record, Name::Comment), "first\nsecond\t\"quoted\" & <odd>   \xEF\xBF\xBD end");
    EXPECT_EQ(PlainText(TextOf(record)), "EMPLOYEE\n415 | F  last  \xE2\x82\xAC line 7 pages");
    EXPECT_EQ(TextValue(record, ParseCellName(document->names, "Prop.Duration")), "12");
    EXPECT_EQ(Number(record, ParseCellName(document->names, "User.Odd")), -1.5e-7);
    EXPECT_EQ(TextValue(record, ParseCellName(document->names, "Hyperlink.Row_1")),
              "https://example.org/?a=1&b=\"2\"");
    EXPECT_EQ(SectionOf(record, Name::Geometry).rows.size(), 4u);
    EXPECT_EQ(SectionOf(record, Name::Geometry, 1).rows[0].cells.Find(Name::Y)->value, 1e-12);

    // The runs of the text have their formats, and the base format is where an engine looks for it.
    const TextRuns& runs = TextOf(record);
    const auto format = [&record](int row, Name cell) {
        return Number(record, {Name::Character, 0, RowKey::Number(row), cell});
    };
    ASSERT_GE(runs.size(), 2u);
    EXPECT_EQ(document->FontName(static_cast<int>(format(runs[0].character, Name::Font))), "Times New Roman");
    EXPECT_EQ(format(runs[1].character, Name::Color), 4);
    EXPECT_DOUBLE_EQ(format(0, Name::Size), 6.0 / 72);
    EXPECT_EQ(Number(record, {Name::Paragraph, 0, RowKey::Number(runs[0].paragraph), Name::HorzAlign}), 0);
    EXPECT_EQ(Number(record, {Name::Paragraph, 0, RowKey::Number(runs[1].paragraph), Name::HorzAlign}), 2);

    const Shape& pair = *shapes[1];
    ASSERT_EQ(pair.shapes.size(), 2u);
    EXPECT_TRUE(pair.cells.Find(Name::Width)->inherited);
    EXPECT_EQ(pair.shapes[1]->base, document->masters[1]->shapes[0]->shapes[1].get());
    EXPECT_EQ(PlainText(TextOf(*pair.shapes[0])), "part");
    ASSERT_TRUE(shapes[2]->picture);
    EXPECT_EQ(shapes[2]->picture->bytes, kRedPoint);
    EXPECT_EQ(shapes[3]->kind, ShapeKind::Guide);
    EXPECT_EQ(PlainText(TextOf(*shapes[4])), "\n\n");
}

TEST(RoundTrip, FormatsOfRunsStayWithTheirRuns) {
    // Rows of the model in the order in which the runs use them.
    const std::vector<std::vector<int>> orders = {{0},    {1},       {0, 1},    {1, 0},       {1, 2},
                                                  {2, 1}, {0, 1, 0}, {1, 2, 1}, {3, 0, 3, 1}, {2, 2, 1}};
    for (const auto& order : orders) {
        Document document;
        AddStandardStyles(document);
        auto shape = std::make_unique<Shape>();
        shape->textStyle = document.FindStyle("Normal");
        for (int row = 0; row < 4; ++row)
            shape->LocalAt({Name::Character, 0, RowKey::Number(row), Name::Size}).SetNumber(row + 1);
        shape->text = TextRuns();
        std::string expected;
        for (const int row : order) {
            shape->text->push_back({std::string(1, static_cast<char>('a' + row)), row});
            expected += std::string(1, static_cast<char>('a' + row)) + std::to_string(row + 1) + ' ';
        }
        document.AddPage("Page-1").Add(std::move(shape));
        const std::string bytes = WritePackage(document);
        const auto read = ReadPackage(bytes);
        const Shape& back = *read->pages[0]->shapes[0];
        std::string found;
        for (const auto& run : TextOf(back)) {
            const double size = Number(back, {Name::Character, 0, RowKey::Number(run.character), Name::Size});
            for (const char letter : run.text)
                found += std::string(1, letter) + std::to_string(static_cast<int>(size)) + ' ';
        }
        EXPECT_EQ(found, expected);
        EXPECT_EQ(WritePackage(*read), bytes) << expected;
    }
}

TEST(RoundTrip, EveryNumberComesBackAsItWas) {
    for (const double number :
         {0.0, 1.0, -1.0, 0.1, 1.0 / 3, 1e-9, 1e-12, 123456.789, -2.5e-300, 5e-324, 1e300}) {
        Document document;
        document.AddPage("Page-1").sheet.At(Name::User).At(RowKey::Number(0)).cells.Set(Name::Value, number);
        const auto read = ReadPackage(WritePackage(document));
        EXPECT_EQ(Number(read->pages[0]->sheet, {Name::User, 0, RowKey::Number(0), Name::Value}), number);
    }
}

}  // namespace
}  // namespace norvelis::drawing
