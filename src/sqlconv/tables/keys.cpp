#include <algorithm>
#include <utility>

#include "base/name_key.h"
#include "base/text.h"
#include "sqlconv/tables/build.h"

namespace norvelis::tables {

namespace {

KeyColumns ColumnsOfItem(const RecordPlan& plan, std::size_t place) {
    KeyColumns found;
    for (std::size_t i = place; i < plan.items[place].end; ++i) {
        const Item& item = plan.items[i];
        if (item.repeats) return {{}, item.name + " occurs several times"};
        if (item.state == Item::State::LeftOut || item.state == Item::State::Unmapped)
            return {{}, item.name + " is no column"};
        if (item.state == Item::State::Filler)
            return {{}, "a part of " + plan.items[place].name + " has no name"};
        if (i == place && item.state == Item::State::Overlaps) return {{}, item.name + ": " + item.why};
        for (const Column& column : plan.table.columns) {
            if (column.item == i) found.columns.push_back(column.name);
        }
    }
    if (found.columns.empty()) found.why = plan.items[place].name + " is no column";
    return found;
}

/// The columns of the one item that is meant.
template <typename IsMeant>
KeyColumns ColumnsOfOne(const RecordPlan& plan, std::string_view name, const IsMeant& isMeant,
                        const char* relation) {
    std::size_t meant = plan.items.size();
    for (std::size_t i = 0; i < plan.items.size(); ++i) {
        if (!isMeant(plan.items[i])) continue;
        if (meant < plan.items.size())
            return {{}, "more than one field of the record " + (relation + (" " + std::string(name)))};
        meant = i;
    }
    if (meant < plan.items.size()) return ColumnsOfItem(plan, meant);
    return {{}, "no field of the record " + (relation + (" " + std::string(name)))};
}

}  // namespace

std::vector<std::string> KeyWords(const dictionary::RecordContents& record) {
    std::vector<std::string> words;
    std::string word;
    for (const char c : record.key + ' ') {
        if (c != ' ' && c != ',') {
            word += c;
        } else if (!word.empty()) {
            words.push_back(std::exchange(word, {}));
        }
    }
    return words;
}

KeyColumns ColumnsOfKey(const RecordPlan& plan, std::string_view name) {
    return ColumnsOfOne(
        plan, name, [name](const Item& item) { return SameName(item.name, name); }, "is called");
}

KeyColumns ColumnsOfCutKey(const RecordPlan& plan, std::string_view beginning) {
    const std::string key = NameKey(beginning);
    return ColumnsOfOne(
        plan, beginning, [&key](const Item& item) { return NameKey(item.name).starts_with(key); },
        "begins with");
}

std::string PrimaryKeyName(Build& build, const std::string& table) {
    return build.objects.Take(build.names, {"pk_" + table});
}

double KeyBytes(const ColumnType& type, const Limits& limits) {
    constexpr double kNumber = 8;
    const auto length = static_cast<double>(type.length);
    switch (type.kind) {
        case ColumnType::Kind::Text:
        case ColumnType::Kind::FixedText:
            return length * (type.wide ? limits.bytesPerWideCharacter : limits.bytesPerCharacter);
        case ColumnType::Kind::Decimal:
            return length / 2 + kNumber;
        default:
            return kNumber;
    }
}

double KeyBytes(const Table& table, const std::vector<std::string>& columns, const Limits& limits) {
    double bytes = 0;
    for (const auto& name : columns) {
        if (const Column* column = table.Find(name)) bytes += KeyBytes(column->type, limits);
    }
    return bytes;
}

std::string AddIndex(Build& build, Table& table, Index index) {
    std::vector<std::string> columns;
    std::vector<Index::Key> once;
    for (auto& key : index.keys) {
        if (std::ranges::find(columns, key.column) != columns.end()) continue;
        columns.push_back(key.column);
        once.push_back(std::move(key));
    }
    index.keys = std::move(once);
    std::string refusal;
    if (columns.size() > build.limits.keyColumns) refusal = "it has more columns than an index of the server";
    if (KeyBytes(table, columns, build.limits) > build.limits.index)
        refusal = "its keys are longer than an index of the server takes";
    if (!refusal.empty()) {
        table.notes.push_back("no index " + index.name + ": " + refusal);
        return refusal;
    }
    index.name = build.objects.Take(build.names, {index.name});
    table.indexes.push_back(std::move(index));
    return {};
}

}  // namespace norvelis::tables
