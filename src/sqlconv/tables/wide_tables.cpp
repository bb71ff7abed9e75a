#include <algorithm>
#include <unordered_set>
#include <utility>

#include "base/name_key.h"
#include "sqlconv/tables/build.h"

namespace norvelis::tables {

namespace {

/// The part of what a row may hold that this column takes at most, in the measure that is short first.
double ShareOfRow(const Column& column, const Limits& limits) {
    constexpr double kDefinition = 18;  // Beside name and comment.
    const ColumnType& type = column.type;
    const bool text = type.kind == ColumnType::Kind::Text || type.kind == ColumnType::Kind::FixedText;
    const double bytes =
        text ? static_cast<double>(type.length) * limits.rowBytesPerCharacter : KeyBytes(type, limits);
    const double inRow = text && bytes > limits.textInRow ? limits.textOutside : bytes + 1;
    const double inAll = text && type.length > limits.longText ? limits.textOutside : bytes;
    const double definition = static_cast<double>(column.name.size()) + kDefinition +
                              std::min(static_cast<double>(column.comment.size()), limits.longestComment);
    return std::max(
        {1 / limits.columns, inRow / limits.row, inAll / limits.wholeRow, definition / limits.definition});
}

double ShareOfRow(const Table& table, const Limits& limits) {
    double share = 0;
    for (const Column& column : table.columns) share += ShareOfRow(column, limits);
    return share;
}

/// Keys and indexes do not reach into another table: their columns stay.
std::unordered_set<std::string> BoundColumns(const Table& table) {
    std::unordered_set<std::string> bound;
    const auto add = [&bound](const std::string& name) { bound.insert(NameKey(name)); };
    std::ranges::for_each(table.primaryKey, add);
    for (const ForeignKey& key : table.foreignKeys) std::ranges::for_each(key.columns, add);
    for (const Index& index : table.indexes) {
        for (const auto& key : index.keys) add(key.column);
    }
    return bound;
}

std::vector<Column> KeyOf(const Table& table) {
    std::vector<Column> key;
    for (const auto& name : table.primaryKey) {
        Column column = *table.Find(name);
        column.item = Column::kAdded;
        column.identity = false;
        column.comment = "Of the row in " + table.name;
        key.push_back(std::move(column));
    }
    return key;
}

/// A table with the same key, a row of which goes with one of the first.
Table FurtherTable(Build& build, const Table& first, const std::vector<Column>& key, std::size_t number) {
    Table table;
    table.name = build.objects.Take(build.names, {first.name + "_part" + std::to_string(number)});
    table.record = first.record;
    table.comment = "Further columns of " + first.name + ", which has more than a table of the server";
    table.columns = key;
    table.keyName = PrimaryKeyName(build, table.name);
    table.primaryKey = first.primaryKey;
    ForeignKey owner;
    owner.name = build.objects.Take(build.names, {"fk_" + table.name});
    owner.columns = owner.ownerColumns = first.primaryKey;
    owner.owner = first.name;
    owner.cascade = true;
    table.foreignKeys.push_back(std::move(owner));
    return table;
}

std::vector<Table> Split(Build& build, Table& first) {
    std::vector<Table> further;
    if (ShareOfRow(first, build.limits) <= 1) return further;
    const auto bound = BoundColumns(first);
    const auto isBound = [&bound](const Column& column) { return bound.contains(NameKey(column.name)); };
    double share = 0;
    for (const Column& column : first.columns) {
        if (isBound(column)) share += ShareOfRow(column, build.limits);
    }
    const std::vector<Column> key = KeyOf(first);
    std::vector<Column> all = std::exchange(first.columns, {});
    for (Column& column : all) {
        const double own = ShareOfRow(column, build.limits);
        if (isBound(column) || (further.empty() && share + own <= 1)) {
            if (!isBound(column)) share += own;
            first.columns.push_back(std::move(column));
            continue;
        }
        if (further.empty() || share + own > 1) {
            further.push_back(FurtherTable(build, first, key, further.size() + 2));
            share = ShareOfRow(further.back(), build.limits);
        }
        share += own;
        further.back().columns.push_back(std::move(column));
    }
    first.notes.push_back("the server does not take all its columns in one table: the others are in " +
                          further.front().name +
                          (further.size() > 1 ? " to " + further.back().name : std::string()));
    return further;
}

}  // namespace

void SplitWideTables(Build& build) {
    for (RecordPlan& plan : build.plans) {
        std::vector<Table> further = Split(build, plan.table);
        if (!further.empty()) plan.lookAt = true;
        std::vector<Table> children;
        for (Table& child : plan.children) {
            std::vector<Table> ofChild = Split(build, child);
            children.push_back(std::move(child));
            std::ranges::move(ofChild, std::back_inserter(children));
        }
        std::ranges::move(children, std::back_inserter(further));
        plan.children = std::move(further);
    }
}

}  // namespace norvelis::tables
