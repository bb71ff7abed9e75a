#include "sqlconv/tables/build_model.h"

#include <algorithm>

#include "base/name_key.h"
#include "base/text.h"
#include "sqlconv/tables/build.h"

namespace norvelis::tables {

namespace {

Outcome OutcomeOf(const RecordPlan& plan) {
    Outcome outcome{Outcome::Subject::Record, plan.record->name, plan.record->name, {}, {}, plan.lookAt, {}};
    outcome.became = "table " + plan.table.name;
    for (const Table& child : plan.children) outcome.became += ", " + child.name;
    std::string key;
    for (const auto& column : plan.table.primaryKey) key += (key.empty() ? "" : ", ") + column;
    outcome.why = "key " + key + ": " + plan.keyReason;
    std::vector<std::string> owners;
    for (const ForeignKey& foreign : plan.table.foreignKeys) {
        const bool required = plan.table.Find(foreign.columns.front())->required;
        if (required && std::ranges::find(owners, foreign.owner) == owners.end())
            owners.push_back(foreign.owner);
    }
    if (owners.size() > 1) {
        outcome.why += "; joins";
        for (std::size_t i = 0; i < owners.size(); ++i)
            outcome.why += (i == 0 ? " " : i + 1 == owners.size() ? " and " : ", ") + owners[i];
        outcome.why += ", many to many";
    }
    if (plan.record->fields.empty()) {
        outcome.why += "; the dictionary has no fields of it";
        outcome.lookAt = true;
    }
    return outcome;
}

void AddFieldOutcomes(const RecordPlan& plan, std::vector<Outcome>& outcomes) {
    std::vector<std::string> columns(plan.items.size());
    const auto collect = [&columns](const Table& table) {
        for (const Column& column : table.columns) {
            if (column.item == Column::kAdded) continue;
            std::string& names = columns[column.item];
            names += (names.empty() ? "" : ", ") + table.name + "." + column.name;
        }
    };
    collect(plan.table);
    std::ranges::for_each(plan.children, collect);
    for (std::size_t i = 0; i < plan.items.size(); ++i) {
        const Item& item = plan.items[i];
        const bool group = item.state == Item::State::Group;
        Outcome outcome{
            Outcome::Subject::Field, plan.record->name, item.name, columns[i], item.why, false, item.type};
        outcome.isValue = item.isValue;
        outcome.lookAt =
            !item.why.empty() && item.state != Item::State::Filler && item.state != Item::State::LeftOut;
        if (group && item.why.empty())
            outcome.why = item.usage.occurs ? "its occurrences are rows" : "a group is its items";
        outcomes.push_back(std::move(outcome));
    }
}

void AddOptionOutcome(Build& build, std::size_t line, const std::string& words) {
    build.outcomes.push_back(
        {Outcome::Subject::Option, {}, "line " + std::to_string(line), {}, words, true, {}});
}

/// What the options name must be there.
void CheckOptions(Build& build) {
    for (const auto& [line, words] : build.options.mistakes) AddOptionOutcome(build, line, words);
    for (const auto& wished : build.options.records) {
        const auto& name = wished.first;
        const auto& wishes = wished.second;
        const auto record = std::ranges::find_if(
            build.contents.records, [&](const auto& candidate) { return SameName(candidate.name, name); });
        if (record == build.contents.records.end()) {
            AddOptionOutcome(build, wishes.line, "the schema has no record \"" + name + "\"");
            continue;
        }
        for (const auto& wishedField : wishes.fields) {
            const auto& field = wishedField.first;
            if (std::ranges::none_of(record->fields,
                                     [&](const auto& candidate) { return SameName(candidate.name, field); }))
                AddOptionOutcome(build, wishedField.second.line,
                                 "the record " + name + " has no field \"" + field + "\"");
        }
    }
}

}  // namespace

RecordPlan* Build::PlanOf(std::string_view record) {
    const auto found = planOf.find(NameKey(record));
    return found == planOf.end() ? nullptr : &plans[found->second];
}

SchemaModel BuildModel(const dictionary::SchemaContents& contents, const Options& options,
                       const Limits& limits) {
    Build build(contents, options, limits);
    CheckOptions(build);
    PlanRecords(build);
    AddSets(build);
    AddIndexes(build);
    const auto order = OwnersFirst(build);
    SplitWideTables(build);

    SchemaModel model{contents.name, contents.release, contents.version, contents.date, {}, {}};
    for (const RecordPlan& plan : build.plans) {
        model.outcomes.push_back(OutcomeOf(plan));
        AddFieldOutcomes(plan, model.outcomes);
    }
    std::ranges::move(build.outcomes, std::back_inserter(model.outcomes));
    for (const std::size_t place : order) {
        model.tables.push_back(std::move(build.plans[place].table));
        std::ranges::move(build.plans[place].children, std::back_inserter(model.tables));
    }
    return model;
}

}  // namespace norvelis::tables
