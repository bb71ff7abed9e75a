#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "drawing/model/document.h"

namespace norvelis::drawing {
namespace {

using testing::ElementsAre;
using testing::Pair;

const CellRef kSize(Name::Character, 0, RowKey::Number(0), Name::Size);

class InheritanceTest : public testing::Test {
  protected:
    InheritanceTest() {
        AddStandardStyles(document_);
        page_ = &document_.AddPage("Page-1");
        master_ = &document_.AddMaster("Box");
        auto shape = std::make_unique<Shape>();
        shape->lineStyle = shape->fillStyle = shape->textStyle = document_.FindStyle("Normal");
        shape->cells.Set(Name::PinX, 1)
            .Set(Name::PinY, 2)
            .Set(Name::Width, 4, "Height*2")
            .Set(Name::Height, 2);
        Section& outline = shape->At(Name::Geometry);
        outline.cells.Set(Name::NoFill, 1);
        for (int row = 1; row <= 3; ++row) {
            outline.At(RowKey::Number(row)).type = row == 1 ? Name::MoveTo : Name::LineTo;
            outline.At(RowKey::Number(row)).cells.Set(Name::X, row).Set(Name::Y, 10 * row);
        }
        shape->text = TextRuns{{"of the master"}};
        base_ = &master_->Add(std::move(shape));
    }

    Document document_;
    Page* page_;
    Master* master_;
    Shape* base_;
};

TEST_F(InheritanceTest, OwnCellsGoBeforeTheMastersAndThoseBeforeTheStyles) {
    Shape& shape = DropInstance(*page_, *master_, 5, 5);
    EXPECT_EQ(Number(shape, Name::Width), 4);
    EXPECT_EQ(FormulaOf(shape, Name::Width), "Height*2");
    EXPECT_DOUBLE_EQ(Number(shape, kSize), 8.0 / 72);  // Of the style "Normal".
    EXPECT_EQ(Number(shape, Name::FillForegnd), 1);    // Of "No Style", which "Normal" builds on.
    EXPECT_EQ(PlainText(TextOf(shape)), "of the master");
    shape.cells.Set(Name::Width, 9);
    base_->LocalAt(kSize).SetNumber(0.5);
    EXPECT_EQ(Number(shape, Name::Width), 9);
    EXPECT_EQ(FormulaOf(shape, Name::Width), "");
    EXPECT_EQ(Number(shape, kSize), 0.5);
    shape.text = TextRuns{};
    EXPECT_EQ(PlainText(TextOf(shape)), "");
    // What follows the master's formula has the master's formula and a value of its own.
    shape.cells.Set(Name::Width, 6);
    shape.cells.At(Name::Width).inherited = true;
    EXPECT_EQ(Number(shape, Name::Width), 6);
    EXPECT_EQ(FormulaOf(shape, Name::Width), "Height*2");
}

TEST_F(InheritanceTest, RowsOverlayTheMastersRows) {
    Shape& shape = DropInstance(*page_, *master_, 5, 5);
    Section& own = shape.At(Name::Geometry);
    own.At(RowKey::Number(2)).cells.Set(Name::Y, 77);
    own.At(RowKey::Number(3)).deleted = true;
    own.At(RowKey::Number(5)).type = Name::LineTo;
    own.At(RowKey::Number(4)).type = Name::ArcTo;
    const Section merged = SectionOf(shape, Name::Geometry);
    std::vector<std::pair<int, Name>> rows;
    for (const auto& row : merged.rows) rows.emplace_back(row.key.Index(), row.type);
    EXPECT_THAT(rows, ElementsAre(Pair(1, Name::MoveTo), Pair(2, Name::LineTo), Pair(4, Name::ArcTo),
                                  Pair(5, Name::LineTo)));
    EXPECT_EQ(merged.rows[1].cells.Find(Name::X)->value, 2);
    EXPECT_EQ(merged.rows[1].cells.Find(Name::Y)->value, 77);
    EXPECT_EQ(merged.cells.Find(Name::NoFill)->value, 1);
    shape.At(Name::Geometry, 3);
    EXPECT_THAT(GeometryIndexes(shape), ElementsAre(0, 3));
    shape.At(Name::Geometry).deleted = true;
    EXPECT_TRUE(SectionOf(shape, Name::Geometry).rows.empty());
}

TEST_F(InheritanceTest, RowsAreFoundWhateverTheirOrder) {
    Section section;
    for (const int number : {5, 1, 2, 9}) section.At(RowKey::Number(number)).type = Name::LineTo;
    section.At(RowKey::Named(Name::Value)).type = Name::MoveTo;
    for (const int number : {1, 2, 5, 9}) {
        ASSERT_NE(section.Find(RowKey::Number(number)), nullptr) << number;
        EXPECT_EQ(section.Find(RowKey::Number(number))->key.Index(), number);
    }
    EXPECT_EQ(section.Find(RowKey::Number(3)), nullptr);
    EXPECT_EQ(section.Find(RowKey::Named(Name::Value))->type, Name::MoveTo);
    EXPECT_EQ(section.NextIndex(1), 10);
}

TEST_F(InheritanceTest, ADroppedShapeIsAtItsPinUnderAnIdOfItsOwn) {
    Shape& one = DropInstance(*page_, *master_, 5, 6);
    Shape& two = DropInstance(*page_, *master_, 7, 8);
    EXPECT_EQ(Number(one, Name::PinX), 5);
    EXPECT_EQ(Number(two, Name::PinY), 8);
    EXPECT_NE(one.id, two.id);
    EXPECT_EQ(page_->ById(two.id), &two);
    EXPECT_EQ(MasterOf(one), master_);
    EXPECT_EQ(one.name, "Box." + std::to_string(one.id));
}

TEST_F(InheritanceTest, ADroppedLineKeepsItsLengthAndWhatItsMasterComputes) {
    base_->cells.Set(Name::BeginX, 0).Set(Name::BeginY, 1).Set(Name::EndX, 2, "PinX+1").Set(Name::EndY, 3);
    base_->cells.Set(Name::PinX, 1, "GUARD((BeginX+EndX)/2)");
    Shape& line = DropInstance(*page_, *master_, 10, 20);
    EXPECT_EQ(Number(line, Name::BeginX), 9);
    EXPECT_EQ(Number(line, Name::BeginY), 19);
    EXPECT_EQ(Number(line, Name::EndX), 11);
    EXPECT_EQ(Number(line, Name::EndY), 21);
    EXPECT_EQ(FormulaOf(line, Name::PinX), "GUARD((BeginX+EndX)/2)");
    EXPECT_EQ(FormulaOf(line, Name::EndX), "PinX+1");
    EXPECT_EQ(FormulaOf(line, Name::PinY), "");
}

TEST_F(InheritanceTest, PartsOfADroppedGroupInheritFromTheMastersParts) {
    base_->kind = ShapeKind::Group;
    auto part = std::make_unique<Shape>();
    part->cells.Set(Name::Width, 0.25);
    part->text = TextRuns{{"part"}};
    const Shape& partBase = master_->Add(std::move(part), base_);
    Shape& group = DropInstance(*page_, *master_, 5, 5);
    ASSERT_EQ(group.shapes.size(), 1u);
    const Shape& inner = *group.shapes[0];
    EXPECT_EQ(inner.base, &partBase);
    EXPECT_EQ(inner.parent, &group);
    EXPECT_EQ(inner.master, nullptr);
    EXPECT_EQ(MasterOf(inner), master_);
    EXPECT_EQ(Number(inner, Name::Width), 0.25);
    EXPECT_EQ(PlainText(TextOf(inner)), "part");
    EXPECT_EQ(page_->ById(inner.id), &inner);
}

TEST_F(InheritanceTest, ACopiedMasterBringsNamesFontsColoursAndStylesAlong) {
    StyleSheet& style = *document_.styles.emplace_back(std::make_unique<StyleSheet>());
    style.id = 40;
    style.name = "Warm";
    style.fillStyle = document_.FindStyle("Normal");
    style.cells.Set(Name::FillForegnd, 30);
    base_->fillStyle = &style;
    document_.FontIndex("Times New Roman");
    base_->LocalAt({Name::Character, 0, RowKey::Number(0), Name::Font})
        .SetNumber(document_.FontIndex("Courier New"));
    document_.colors[30] = {1, 2, 3};
    const Name cost = document_.names.Intern("Cost");
    base_->At(Name::Property).At(RowKey::Named(cost)).cells.SetText(Name::Label, "Cost");

    Document other;
    AddStandardStyles(other);
    other.names.Intern("Something");
    Master& copy = CopyMaster(document_, *master_, other);
    const Shape& shape = *copy.shapes.front();
    EXPECT_EQ(
        other.FontName(static_cast<int>(Number(shape, {Name::Character, 0, RowKey::Number(0), Name::Font}))),
        "Courier New");
    EXPECT_EQ(ColorOf(other, shape, Name::FillForegnd), (Color{1, 2, 3}));
    ASSERT_NE(other.FindStyle("warm"), nullptr);
    EXPECT_EQ(shape.fillStyle, other.FindStyle("warm"));
    EXPECT_EQ(shape.fillStyle->fillStyle, other.FindStyle("Normal"));
    const CellRef label = ParseCellName(other.names, "Prop.Cost.Label");
    EXPECT_EQ(TextValue(shape, label), "Cost");
    EXPECT_EQ(FormulaOf(shape, Name::Width), "Height*2");
    EXPECT_EQ(other.FindMaster("BOX"), &copy);
    EXPECT_EQ(other.styles.size(), 6u);
}

TEST(Palette, FixedColoursOwnColoursAndBeyond) {
    Document document;
    document.colors[24] = {10, 20, 30};
    EXPECT_EQ(document.PaletteColor(0), (Color{0, 0, 0}));
    EXPECT_EQ(document.PaletteColor(2), (Color{255, 0, 0}));
    EXPECT_EQ(document.PaletteColor(4), (Color{0, 0, 255}));
    EXPECT_EQ(document.PaletteColor(13), (Color{0, 128, 128}));
    EXPECT_EQ(document.PaletteColor(24), (Color{10, 20, 30}));
    EXPECT_EQ(document.PaletteColor(25), (Color{0, 0, 0}));
    Shape shape;
    shape.cells.SetText(Name::LineColor, "#0a141E").SetText(Name::FillForegnd, "red");
    EXPECT_EQ(ColorOf(document, shape, Name::LineColor), (Color{10, 20, 30}));
    EXPECT_EQ(ColorOf(document, shape, Name::FillForegnd), (Color{0, 0, 0}));
    shape.cells.Set(Name::LineColor, -1e300);
    EXPECT_EQ(ColorOf(document, shape, Name::LineColor), (Color{0, 0, 0}));
}

}  // namespace
}  // namespace norvelis::drawing
