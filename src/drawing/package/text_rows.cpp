#include "drawing/package/text_rows.h"

#include <algorithm>

namespace norvelis::drawing {

namespace {

struct RunSection {
    Name section;
    int TextRun::*row;
};
constexpr RunSection kRunSections[] = {{Name::Character, &TextRun::character},
                                       {Name::Paragraph, &TextRun::paragraph}};

/// The row with all that it inherits: under another number it inherits something else.
CellList Complete(const Shape& shape, Name section, int row) {
    const Section inForce = SectionOf(shape, section);
    const Row* found = inForce.Find(RowKey::Number(row));
    CellList cells = found ? found->cells : CellList();
    for (auto& cell : cells) {
        if (!cell.inherited) continue;
        cell.inherited = false;
        cell.formula.clear();
    }
    return cells;
}

void Renumber(const Shape& shape, const RunSection& kind, Section& section, TextRuns& runs) {
    const Section own = section;
    section.rows.clear();
    int filed = -1, previous = -1;
    for (auto& run : runs) {
        const int row = run.*kind.row;
        if (row != previous || filed < 0) {
            Row& added = section.At(RowKey::Number(++filed));
            const Row* same = filed == row ? own.Find(RowKey::Number(row)) : nullptr;
            added.cells = same ? same->cells : Complete(shape, kind.section, row);
            previous = row;
        }
        run.*kind.row = filed;
    }
    const Row* base = own.Find(RowKey::Number(0));
    const bool baseIsFirst = TextOf(shape).empty() || TextOf(shape).front().*kind.row == 0;
    if (base && filed < 0) section.rows.push_back(*base);
    if (base && filed >= 0 && !baseIsFirst) section.At(RowKey::Number(filed + 1)).cells = base->cells;
}

/// Whether the runs use all rows but the last, one after the other.
bool LeavesLastRow(const TextRuns& runs, int TextRun::*row, int rows) {
    int next = 0;
    for (const auto& run : runs) {
        if (run.*row == next) {
            ++next;
        } else if (run.*row != next - 1) {
            return false;
        }
    }
    return next == rows - 1;
}

}  // namespace

FiledText ToFile(const Shape& shape) {
    FiledText filed{*shape.text, shape.sections};
    std::erase_if(filed.runs, [](const TextRun& run) { return run.text.empty() && run.field < 0; });
    for (const auto& kind : kRunSections) {
        const auto section = std::find_if(filed.sections.begin(), filed.sections.end(),
                                          [&](const Section& each) { return each.name == kind.section; });
        if (section != filed.sections.end() && !section->deleted) Renumber(shape, kind, *section, filed.runs);
    }
    return filed;
}

void FromFile(Shape& shape) {
    for (const auto& kind : kRunSections) {
        Section* section = shape.Find(kind.section);
        const int rows = section ? static_cast<int>(section->rows.size()) : 0;
        if (rows < 2 || !shape.text || !LeavesLastRow(*shape.text, kind.row, rows)) continue;
        std::rotate(section->rows.begin(), section->rows.end() - 1, section->rows.end());
        int number = 0;
        for (auto& row : section->rows) row.key = RowKey::Number(number++);
        for (auto& run : *shape.text) ++(run.*kind.row);
    }
}

}  // namespace norvelis::drawing
