#include <fmt/format.h>

#include <array>
#include <charconv>

#include "base/text.h"
#include "drawing/model/document.h"

namespace norvelis::drawing {

namespace {

// How formulas call the sections whose rows have numbers or names, and which cell a bare row name means.
struct SectionWord {
    std::string_view word;
    Name section;
    bool named;        // "Prop.Cost.Value" against "Char.Size[2]".
    Name defaultCell;  // Of a named row without a cell.
};
constexpr std::array<SectionWord, 10> kSections = {{
    {"Char", Name::Character, false, Name::None},
    {"Para", Name::Paragraph, false, Name::None},
    {"Tabs", Name::Tabs, false, Name::None},
    {"Layers", Name::Layer, false, Name::None},
    {"Prop", Name::Property, true, Name::Value},
    {"User", Name::User, true, Name::Value},
    {"Controls", Name::Control, true, Name::X},
    {"Connections", Name::Connection, true, Name::X},
    {"Hyperlink", Name::Hyperlink, true, Name::Address},
    {"Actions", Name::Actions, true, Name::None},
}};

/// Digits at the end of `text`, cut off; -1 when there are none.
int CutNumber(std::string_view& text) {
    std::size_t start = text.size();
    while (start > 0 && text[start - 1] >= '0' && text[start - 1] <= '9') --start;
    int number = -1;
    const auto digits = text.substr(start);
    if (std::from_chars(digits.data(), digits.data() + digits.size(), number).ec != std::errc()) return -1;
    text = text.substr(0, start);
    return number <= 0x7000 ? number : -1;
}

CellRef NumberedCell(const NamePool& names, const SectionWord& section, std::string_view cell) {
    int row = 0;
    if (cell.ends_with(']')) {  // Rows count from 1 in formulas and from 0 in files.
        cell.remove_suffix(1);
        row = CutNumber(cell) - 1;
        if (row < 0 || !cell.ends_with('[')) return {};
        cell.remove_suffix(1);
    }
    const Name name = names.Find(cell);
    return name == Name::None ? CellRef() : CellRef(section.section, 0, RowKey::Number(row), name);
}

CellRef NamedCell(const NamePool& names, const SectionWord& section, std::string_view rest) {
    const auto dot = rest.find('.');
    const Name row = names.Find(rest.substr(0, dot));
    const Name cell = dot == std::string_view::npos ? section.defaultCell : names.Find(rest.substr(dot + 1));
    if (row == Name::None || cell == Name::None) return {};
    return {section.section, 0, RowKey::Named(row), cell};
}

CellRef GeometryCell(const NamePool& names, std::string_view section, std::string_view cell) {
    const int index = CutNumber(section);
    if (index < 1) return {};
    const Name whole = names.Find(cell);
    for (const Name own : {Name::NoFill, Name::NoLine, Name::NoShow, Name::NoSnap, Name::NoQuickDrag}) {
        if (whole == own) return {Name::Geometry, index - 1, CellRef::kSectionCell, whole};
    }
    const int row = CutNumber(cell);
    const Name name = names.Find(cell);
    if (row < 1 || name == Name::None) return {};
    return {Name::Geometry, index - 1, RowKey::Number(row), name};
}

}  // namespace

CellRef ParseCellName(const NamePool& names, std::string_view text) {
    text = Trim(text);
    const auto dot = text.find('.');
    if (dot == std::string_view::npos) return names.Find(text);
    const auto word = text.substr(0, dot), rest = text.substr(dot + 1);
    for (const auto& section : kSections) {
        if (!EqualIgnoringCase(section.word, word)) continue;
        return section.named ? NamedCell(names, section, rest) : NumberedCell(names, section, rest);
    }
    if (word.size() > 8 && EqualIgnoringCase(word.substr(0, 8), "Geometry"))
        return GeometryCell(names, word, rest);
    return {};
}

std::string CellName(const NamePool& names, const CellRef& ref) {
    const auto cell = names.Text(ref.cell);
    if (ref.section == Name::None) return std::string(cell);
    if (ref.section == Name::Geometry) {
        if (ref.row == CellRef::kSectionCell) return fmt::format("Geometry{}.{}", ref.index + 1, cell);
        return fmt::format("Geometry{}.{}{}", ref.index + 1, cell, ref.row.Index());
    }
    for (const auto& section : kSections) {
        if (section.section != ref.section) continue;
        if (section.named && ref.row.IsNamed()) {
            return fmt::format("{}.{}.{}", section.word, names.Text(ref.row.RowName()), cell);
        }
        return fmt::format("{}.{}[{}]", section.word, cell, ref.row.Index() + 1);
    }
    return fmt::format("{}.{}.{}", names.Text(ref.section), ref.row.Index(), cell);
}

}  // namespace norvelis::drawing
