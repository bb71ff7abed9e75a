#include "drawing/automation/text_ranges.h"

#include <algorithm>
#include <map>

#include "drawing/model/defaults.h"

namespace norvelis::drawing {

namespace {

bool StartsCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
}

int Count(std::string_view text) {
    return static_cast<int>(std::count_if(text.begin(), text.end(), StartsCharacter));
}

/// Byte offset of the character at `position`; the text's size at its end.
std::size_t OffsetOf(std::string_view text, int position) {
    std::size_t at = 0;
    for (; at < text.size(); ++at) {
        if (StartsCharacter(text[at]) && position-- == 0) break;
    }
    return at;
}

TextRuns& OwnText(Shape& shape) {
    if (!shape.text) shape.text = TextOf(shape);
    return *shape.text;
}

/// Index of the run that starts at `position`, made by a cut where needed; the number of runs at the end.
std::size_t CutAt(TextRuns& runs, int position) {
    for (std::size_t i = 0; i < runs.size(); ++i) {
        if (position <= 0) return i;
        const int length = Count(runs[i].text);
        if (position < length) {
            TextRun rest = runs[i];
            const std::size_t offset = OffsetOf(runs[i].text, position);
            rest.text.erase(0, offset);
            runs[i].text.erase(offset);
            runs.insert(runs.begin() + static_cast<std::ptrdiff_t>(i) + 1, std::move(rest));
            return i + 1;
        }
        position -= length;
    }
    return runs.size();
}

void JoinAlikes(TextRuns& runs) {
    TextRuns joined;
    for (auto& run : runs) {
        if (run.text.empty()) continue;
        if (!joined.empty() && joined.back().SameFormat(run)) {
            joined.back().text += run.text;
        } else {
            joined.push_back(std::move(run));
        }
    }
    runs = std::move(joined);
}

bool SameCells(const CellList& a, const CellList& b) {
    if (a.size() != b.size()) return false;
    return std::all_of(a.begin(), a.end(), [&b](const Cell& cell) {
        const Cell* other = b.Find(cell.name);
        return other && other->value == cell.value && other->isText == cell.isText &&
               other->text == cell.text;
    });
}

/// The rows of one section that a text's runs go by.
class FormatRows {
  public:
    FormatRows(Shape& shape, Name section)
        : shape_(shape),
          section_(section),
          member_(section == Name::Character ? &TextRun::character : &TextRun::paragraph) {
        // Rows that the text brought from its master become the shape's own, for they are counted again.
        for (const auto& run : TextOf(shape)) {
            const RowKey key = RowKey::Number(run.*member_);
            const Section* own = shape.Find(section);
            if (run.*member_ > 0 && !(own && own->Find(key))) {
                CellList cells = InForce(run.*member_);
                shape.At(section).At(key).cells = std::move(cells);
            }
        }
    }

    /// Number of a row that is as `row` but for the cell.
    int With(int row, Name cell, double value, Name unit) {
        CellList cells = InForce(row);
        Cell& changed = cells.At(cell);
        changed.SetNumber(value);
        changed.unit = unit;
        Section& section = shape_.At(section_);
        if (!section.Find(RowKey::Number(0))) {
            Row base;
            base.key = RowKey::Number(0);
            section.rows.insert(section.rows.begin(), std::move(base));
        }
        for (const auto& known : section.rows) {
            if (known.key != RowKey::Number(0) && SameCells(known.cells, cells)) return known.key.Index();
        }
        const int added = section.NextIndex(1);
        section.At(RowKey::Number(added)).cells = std::move(cells);
        return added;
    }

    /// Drops rows without text and counts the others on from 1, in the order in which the text uses them.
    void Tidy() {
        Section& section = shape_.At(section_);
        std::vector<Row> kept;
        if (Row* base = section.Find(RowKey::Number(0))) kept.push_back(std::move(*base));
        std::map<int, int> renumbered{{0, 0}};
        for (auto& run : *shape_.text) {
            const auto [known, isNew] = renumbered.try_emplace(run.*member_, static_cast<int>(kept.size()));
            if (isNew) {
                if (Row* used = section.Find(RowKey::Number(run.*member_))) {
                    kept.push_back(std::move(*used));
                    kept.back().key = RowKey::Number(known->second);
                } else {
                    known->second = 0;
                }
            }
            run.*member_ = known->second;
        }
        section.rows = std::move(kept);
    }

    int TextRun::*Member() const { return member_; }

  private:
    CellList InForce(int row) const {
        const Section all = SectionOf(shape_, section_);
        const Row* found = all.Find(RowKey::Number(row));
        CellList cells = found ? found->cells : CellList();
        for (auto& cell : cells) {
            cell.formula.clear();
            cell.inherited = cell.stale = false;
        }
        if (section_ == Name::Character) Complete(row, cells);
        return cells;
    }

    /// Readers take a format that a row leaves out from the row in front of it.
    void Complete(int row, CellList& cells) const {
        for (const Name name : {Name::Font, Name::Color, Name::Style, Name::Size}) {
            if (cells.Find(name)) continue;
            const CellRef ref(Name::Character, 0, RowKey::Number(row), name);
            const Cell* inForce = Find(shape_, ref);
            cells.Set(name, inForce ? inForce->value : DefaultNumber(name));
            if (inForce && inForce->isText) cells.SetText(name, inForce->text);
        }
    }

    Shape& shape_;
    Name section_;
    int TextRun::*member_;
};

}  // namespace

int TextLength(const Shape& shape) {
    int length = 0;
    for (const auto& run : TextOf(shape)) length += Count(run.text);
    return length;
}

std::string TextInRange(const Shape& shape, int begin, int end) {
    const std::string text = PlainText(TextOf(shape));
    const std::size_t from = OffsetOf(text, std::max(begin, 0));
    const std::size_t to = std::max(from, OffsetOf(text, std::max(end, 0)));
    return text.substr(from, to - from);
}

void ReplaceText(Shape& shape, int begin, int end, std::string_view text) {
    TextRuns& runs = OwnText(shape);
    const std::size_t first = CutAt(runs, begin), last = std::max(first, CutAt(runs, end));
    TextRun run;
    if (first < last) {
        run = runs[first];
    } else if (first > 0) {
        run = runs[first - 1];
    } else if (!runs.empty()) {
        run = runs.front();
    }
    run.text = text;
    run.field = -1;
    const auto at = [&runs](std::size_t index) { return runs.begin() + static_cast<std::ptrdiff_t>(index); };
    runs.erase(at(first), at(last));
    runs.insert(at(first), std::move(run));
    JoinAlikes(runs);
}

void FormatText(Shape& shape, int begin, int end, Name section, Name cell, double value, Name unit) {
    if (begin >= end) return;
    TextRuns& runs = OwnText(shape);
    FormatRows rows(shape, section);
    const std::size_t first = CutAt(runs, begin), last = CutAt(runs, end);
    if (first >= last) return;
    for (std::size_t i = first; i < last; ++i) {
        int& row = runs[i].*rows.Member();
        row = rows.With(row, cell, value, unit);
    }
    JoinAlikes(runs);
    rows.Tidy();
}

}  // namespace norvelis::drawing
