#include "sqlconv/tables/record_items.h"

#include <algorithm>

#include "base/name_key.h"
#include "base/text.h"
#include "base/whole_number.h"

namespace norvelis::tables {

using cobol::Picture;
using cobol::Usage;

namespace {

/// 0 for what is no number, such as the blanks on groups.
long NumberIn(std::string_view text) {
    return std::max(WholeNumber<long>(Trim(text)).value_or(0), 0L);
}

void SetPlaces(std::vector<Item>& items) {
    std::vector<std::size_t> open;
    const auto level = [&items](std::size_t i) { return NumberIn(items[i].field->level); };
    for (std::size_t i = 0; i < items.size(); ++i) {
        items[i].end = i + 1;
        while (!open.empty() && level(open.back()) >= level(i)) open.pop_back();
        if (!open.empty()) items[i].group = open.back();
        for (const std::size_t holder : open) items[holder].end = i + 1;
        items[i].repeats = items[i].usage.occurs || (!open.empty() && items[open.back()].repeats);
        open.push_back(i);
    }
}

void ReadPositions(Item& item) {
    item.start = NumberIn(item.field->start);
    item.last = NumberIn(item.field->end);
    const bool written = !Trim(item.field->start).empty() && !Trim(item.field->end).empty();
    if (!written || (item.start > 0 && item.last >= item.start)) return;
    item.why = "its positions " + std::string(Trim(item.field->start)) + " to " +
               std::string(Trim(item.field->end)) + " contradict each other";
    item.start = item.last = 0;
}

/// Compares the positions with the bytes that picture and usage ask for. A sign of its own takes one more.
void CheckBytes(Item& item) {
    const long bytes = StoredBytes(item.picture, item.usage), times = item.usage.most;
    if (bytes == 0 || times == 0 || item.start == 0) return;
    if (item.last == 0) item.last = item.start + bytes * times - 1;
    const long taken = item.last - item.start + 1;
    const bool signedText = IsSignedDisplay(item.picture, item.usage);
    if (taken == bytes * times || (signedText && taken == (bytes + 1) * times)) return;
    item.why = "it takes " + std::to_string(taken) + " bytes where its picture asks for " +
               std::to_string(bytes * times);
}

/// A group's picture is the start position that runs into its column.
bool IsGroup(const Item& item) {
    if (item.usage.form != Usage::Form::Display) return item.usage.form == Usage::Form::Group;
    const std::string_view stored = Trim(item.field->picture);
    return !stored.empty() && stored == Trim(item.field->start);
}

/// Without a picture.
bool HoldsNoValue(const Usage& usage) {
    return usage.form == Usage::Form::Other || usage.form == Usage::Form::Pointer;
}

void SetState(Item& item, bool holdsItems, const TypeRules& rules) {
    using enum Item::State;
    item.isValue = !holdsItems && !item.IsFiller();
    if (item.options != nullptr && item.options->leaveOut) {
        item.state = LeftOut;
        item.why = "the options leave it out";
    } else if (holdsItems) {
        item.state = Group;
    } else if (item.IsFiller()) {
        item.state = Filler;
        item.why = "a filler has no name";
    } else if (item.options != nullptr && !item.options->type.empty()) {
        item.state = Column;
        item.type = {ColumnType::Kind::Given, 0, 0, item.options->type};
    } else if (IsGroup(item)) {
        item.why = "the dictionary has no items of this group";
    } else if (item.type = TypeFor(item.picture, item.usage, rules);
               item.type.kind != ColumnType::Kind::None) {
        item.state = Column;
    } else if (HoldsNoValue(item.usage) && item.picture.kind == Picture::Kind::Invalid) {
        item.why = "its usage " + item.usage.word + " holds no value of its own";
    } else if (const auto word = cobol::PictureWord(item.field->picture); word.empty()) {
        item.why = "it has neither picture nor items in the dictionary";
    } else {
        item.why = "\"" + std::string(word) + "\" is no picture";
    }
    if (item.state == Column) {
        ReadPositions(item);
        CheckBytes(item);
    }
}

/// Bytes of a record that are a column, or a table of repetitions, already.
struct Taken {
    long start, last;
    const Item* by;
};

/// All occurrences of a group: its items have the positions of the first.
Taken OccurrencesOf(const std::vector<Item>& items, std::size_t group) {
    Taken all{0, 0, &items[group]};
    for (std::size_t i = group + 1; i < items[group].end; ++i) {
        Taken held{NumberIn(items[i].field->start), NumberIn(items[i].field->end), nullptr};
        if (items[i].state == Item::State::Group && items[i].usage.occurs) {
            held = OccurrencesOf(items, i);
            i = items[i].end - 1;
        }
        if (held.start == 0 || held.last < held.start) continue;
        all.start = all.start == 0 ? held.start : std::min(all.start, held.start);
        all.last = std::max(all.last, held.last);
    }
    if (all.start > 0) all.last = all.start + (all.last - all.start + 1) * items[group].usage.most - 1;
    return all;
}

bool HoldsColumn(const std::vector<Item>& items, std::size_t group) {
    return std::any_of(items.begin() + static_cast<std::ptrdiff_t>(group),
                       items.begin() + static_cast<std::ptrdiff_t>(items[group].end),
                       [](const Item& item) { return item.state == Item::State::Column; });
}

/// The dictionary does not say REDEFINES: it shows where an item lies on bytes of an earlier one.
void MarkOverlaps(std::vector<Item>& items) {
    std::vector<Taken> taken;
    for (std::size_t i = 0; i < items.size(); ++i) {
        Item& item = items[i];
        if (item.state == Item::State::Column && item.start > 0) {
            const auto under = std::ranges::find_if(taken, [&item](const Taken& bytes) {
                return item.start <= bytes.last && item.last >= bytes.start;
            });
            if (under == taken.end()) {
                taken.push_back({item.start, item.last, &item});
            } else {
                item.state = Item::State::Overlaps;
                item.why = "it lies over " + under->by->name + ", as another description of the same bytes";
            }
        }
        for (std::size_t group = item.group; group != Item::kNone && items[group].end == i + 1;
             group = items[group].group) {
            if (items[group].usage.occurs && HoldsColumn(items, group))
                taken.push_back(OccurrencesOf(items, group));
        }
    }
}

}  // namespace

bool Item::IsFiller() const {
    return name.empty() || EqualIgnoringCase(name, "FILLER");
}

std::vector<Item> ReadItems(const dictionary::RecordContents& record, const RecordOptions* wishes,
                            const TypeRules& rules) {
    std::vector<Item> items;
    for (const auto& field : record.fields) {
        Item item;
        item.field = &field;
        item.name = Trim(field.name);
        item.usage = cobol::ReadUsage(field.usage);
        item.picture = cobol::ReadPicture(cobol::PictureWord(field.picture));
        if (wishes != nullptr) {
            const auto own = wishes->fields.find(NameKey(item.name));
            if (own != wishes->fields.end()) item.options = &own->second;
        }
        items.push_back(std::move(item));
    }
    SetPlaces(items);
    for (std::size_t i = 0; i < items.size(); ++i) {
        Item& item = items[i];
        SetState(item, item.end > i + 1, rules);
        if (item.group != Item::kNone && items[item.group].state == Item::State::LeftOut) {
            item.state = Item::State::LeftOut;
            item.why = items[item.group].why;
        }
    }
    MarkOverlaps(items);
    return items;
}

}  // namespace norvelis::tables
