#include "diagram/difference_marks.h"

#include "base/name_key.h"
#include "diagram/drawing_state.h"

namespace norvelis {

namespace {

/// Blue, orange and yellow stay apart for the color-blind; patterns are numbered as drawings number them.
struct Style {
    const char *line, *weight, *pattern, *fill;
};
constexpr Style kPlain{"RGB(110,110,110)", "0.5 pt", "1", "RGB(255,255,255)"};

const Style& StyleOf(const Marking* marking) {
    static constexpr Style kAdded{"RGB(0,90,160)", "2.5 pt", "1", "RGB(222,235,247)"};
    static constexpr Style kRemoved{"RGB(166,60,0)", "1.5 pt", "2", "RGB(253,231,214)"};
    static constexpr Style kChanged{"RGB(105,80,0)", "1.5 pt", "4", "RGB(255,246,204)"};
    if (marking == nullptr) return kPlain;
    return marking->mark == Mark::Added ? kAdded : marking->mark == Mark::Removed ? kRemoved : kChanged;
}

std::string SetKey(std::string_view set, std::string_view owner, std::string_view member) {
    return NameKey(set) + '\t' + NameKey(owner) + '\t' + NameKey(member);
}

const Marking* Find(const std::unordered_map<std::string, Marking>& markings, const std::string& key) {
    const auto marking = markings.find(key);
    return marking == markings.end() ? nullptr : &marking->second;
}

}  // namespace

void DifferenceMarks::AddRecord(std::string_view name, const Marking& marking) {
    records_.try_emplace(NameKey(name), marking);
}

const Marking* DifferenceMarks::OfRecord(std::string_view name) const {
    return Find(records_, NameKey(name));
}

void DifferenceMarks::AddSet(std::string_view set, std::string_view owner, std::string_view member,
                             const Marking& marking) {
    sets_.try_emplace(SetKey(set, owner, member), marking);
}

const Marking* DifferenceMarks::OfSet(std::string_view set, std::string_view owner,
                                      std::string_view member) const {
    return Find(sets_, SetKey(set, owner, member));
}

void StyleBox(engine::Shape& box, const Marking* marking) {
    StyleLine(box, marking);
    SetFormulaU(box.CellsSRC(engine::kFillForegnd), StyleOf(marking).fill);
}

void StyleLine(engine::Shape& line, const Marking* marking) {
    const Style& style = StyleOf(marking);
    SetFormulaU(line.CellsU("LineColor"), style.line);
    SetFormulaU(line.CellsU("LineWeight"), style.weight);
    SetFormulaU(line.CellsU("LinePattern"), style.pattern);
}

}  // namespace norvelis
