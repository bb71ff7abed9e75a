#include "sqlconv/dialects/script.h"

#include <algorithm>

namespace norvelis::tables {

namespace {

Script::Group GroupOf(const Table& table, const Dialect& dialect) {
    Script::Group group{table.name, table.notes, {dialect.CreateTable(table)}, false};
    std::ranges::move(dialect.Comments(table), std::back_inserter(group.statements));
    for (const Index& index : table.indexes) group.statements.push_back(dialect.CreateIndex(table, index));
    return group;
}

/// Tables and indexes that the statements of a table make or look at: those of its owners' keys, too.
std::size_t ObjectsOf(const Table& table) {
    constexpr std::size_t kTableWithKey = 3;  // The table, its key's index, and the source of its numbers.
    return kTableWithKey + table.indexes.size() + 2 * table.foreignKeys.size();
}

void AppendComment(std::string& text, const std::string& line) {
    text += "-- " + OneLine(line) + "\n";
}

}  // namespace

std::vector<std::string> HeadingOf(const SchemaModel& model, const Dialect& dialect) {
    std::vector<std::string> lines = {"Norvelis: schema " + model.schema + " as tables for " +
                                      std::string(dialect.Title()) + " (dialect " +
                                      std::string(dialect.Name()) + ")"};
    std::string source;
    const auto add = [&source](const char* what, const std::string& value) {
        if (!value.empty()) source += (source.empty() ? "From the dictionary: " : ", ") + (what + value);
    };
    add("", model.release);
    add("schema version ", model.version);
    add("report of ", model.date);
    if (!source.empty()) lines.push_back(source);
    std::ranges::move(dialect.Remarks(), std::back_inserter(lines));
    return lines;
}

Script MakeScript(const SchemaModel& model, const Dialect& dialect) {
    Script script{HeadingOf(model, dialect), {}};
    Script::Group closing;
    std::size_t objects = 0;
    bool several = false;
    for (const Table& table : model.tables) {
        script.groups.push_back(GroupOf(table, dialect));
        objects += ObjectsOf(table);
        if (objects > dialect.MostInTransaction()) {
            script.groups.back().afterCommit = several = true;
            objects = ObjectsOf(table);
        }
        for (const ForeignKey& key : table.foreignKeys) {
            if (!key.ownerLater) continue;
            if (auto statement = dialect.AddForeignKey(table, key); !statement.empty())
                closing.statements.push_back(std::move(statement));
        }
    }
    if (several)
        script.heading.push_back(
            "A server as delivered does not hold so many tables in one transaction: there are several.");
    closing.afterCommit = several;
    if (!closing.statements.empty()) script.groups.push_back(std::move(closing));
    return script;
}

std::string ScriptText(const Script& script, const Dialect& dialect) {
    const auto words = dialect.Script();
    const auto transaction = dialect.Transaction();
    std::string text;
    const auto statement = [&text](std::string_view words) {
        if (!words.empty()) text.append(words).append(";\n");
    };
    for (const auto& line : script.heading) AppendComment(text, line);
    text += "\n";
    text += words.first;
    statement(transaction.begin);
    for (const auto& group : script.groups) {
        if (group.afterCommit) {
            text += "\n";
            statement(transaction.commit);
            statement(transaction.begin);
        }
        text += "\n";
        for (const auto& note : group.notes) AppendComment(text, note);
        if (group.statements.empty()) continue;
        text += words.beforeGroup;
        for (const auto& one : group.statements) statement(one);
        text += words.afterGroup;
    }
    if (transaction.commit.empty()) return text;
    text.append("\n").append(words.beforeGroup);
    statement(transaction.commit);
    return text.append(words.afterGroup).append(words.last);
}

}  // namespace norvelis::tables
