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
        if (i == place && item.state == Item::State::Overlaps) return {{}, item.name + ": " + item.why};
        for (const Column& column : plan.table.columns) {
            if (column.item == i) found.columns.push_back(column.name);
        }
    }
    if (found.columns.empty()) found.why = plan.items[place].name + " is no column";
    return found;
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
    for (std::size_t i = 0; i < plan.items.size(); ++i) {
        if (SameName(plan.items[i].name, name)) return ColumnsOfItem(plan, i);
    }
    return {{}, "the record has no field " + std::string(name)};
}

KeyColumns ColumnsOfCutKey(const RecordPlan& plan, std::string_view beginning) {
    const std::string key = NameKey(beginning);
    std::vector<std::size_t> meant;
    for (std::size_t i = 0; i < plan.items.size(); ++i) {
        if (NameKey(plan.items[i].name).starts_with(key)) meant.push_back(i);
    }
    if (meant.size() == 1) return ColumnsOfItem(plan, meant.front());
    return {
        {},
        (meant.empty() ? "no field of the record begins with " : "several fields of the record begin with ") +
            std::string(beginning)};
}

double KeyBytes(const ColumnType& type, const Limits& limits) {
    constexpr double kNumber = 8;
    const auto length = static_cast<double>(type.length);
    switch (type.kind) {
        case ColumnType::Kind::Text:
        case ColumnType::Kind::FixedText:
            return length * limits.bytesPerCharacter;
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
