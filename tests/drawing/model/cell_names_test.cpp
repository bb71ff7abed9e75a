#include <gtest/gtest.h>

#include "drawing/model/document.h"

namespace norvelis::drawing {
namespace {

TEST(CellNames, MeanTheCellsOfTheFormat) {
    const NamePool names;
    const auto row = [](int number) { return RowKey::Number(number); };
    const std::pair<const char*, CellRef> cases[] = {
        {"PinX", Name::PinX},
        {"width", Name::Width},
        {" LineColor ", Name::LineColor},
        {"Char.Size", {Name::Character, 0, row(0), Name::Size}},
        {"CHAR.SIZE[1]", {Name::Character, 0, row(0), Name::Size}},
        {"Char.Size[3]", {Name::Character, 0, row(2), Name::Size}},
        {"Para.HorzAlign", {Name::Paragraph, 0, row(0), Name::HorzAlign}},
        {"Geometry1.X3", {Name::Geometry, 0, row(3), Name::X}},
        {"geometry12.noline", {Name::Geometry, 11, CellRef::kSectionCell, Name::NoLine}},
        {"Prop.Value", {Name::Property, 0, RowKey::Named(Name::Value), Name::Value}},
        {"Prop.Value.Label", {Name::Property, 0, RowKey::Named(Name::Value), Name::Label}},
        {"Controls.TextPosition", {Name::Control, 0, RowKey::Named(Name::TextPosition), Name::X}},
        {"Controls.TextPosition.Y", {Name::Control, 0, RowKey::Named(Name::TextPosition), Name::Y}},
    };
    for (const auto& [text, ref] : cases) {
        EXPECT_EQ(ParseCellName(names, text), ref) << text;
        EXPECT_EQ(ParseCellName(names, CellName(names, ref)), ref) << CellName(names, ref);
    }
    for (const char* text : {"", "Nothing", "Char", "Char.", "Char.Size[0]", "Char.Size[", "Char.Size]",
                             "Prop.", "Prop.Unheard", "Geometry.X1", "Geometry0.X1", "Geometry1.X",
                             "Geometry1.X0", "Char.Size[99999]", "Geometry99999.X1", "Odd.PinX", "."})
        EXPECT_EQ(ParseCellName(names, text).cell, Name::None) << text;
}

TEST(CellNames, NamesOfFilesJoinThePool) {
    NamePool names;
    EXPECT_EQ(ParseCellName(names, "Prop.Duration").cell, Name::None);
    const Name duration = names.Intern("Duration");
    EXPECT_EQ(ParseCellName(names, "prop.DURATION"),
              CellRef(Name::Property, 0, RowKey::Named(duration), Name::Value));
    // A spelling of its own is written as it came, and found as the first.
    const Name odd = names.Intern("DURATION");
    EXPECT_NE(odd, duration);
    EXPECT_EQ(names.Text(odd), "DURATION");
    EXPECT_EQ(names.Find("duration"), duration);
    EXPECT_EQ(names.Intern(""), Name::None);
    for (int i = 0; i < 40000; ++i) names.Intern("name" + std::to_string(i));
    EXPECT_EQ(names.Intern("one too many"), Name::None);
    EXPECT_EQ(names.Intern("Duration"), duration);
}

}  // namespace
}  // namespace norvelis::drawing
