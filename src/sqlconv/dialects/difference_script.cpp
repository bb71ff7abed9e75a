#include "sqlconv/dialects/difference_script.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "base/name_key.h"
#include "base/text.h"

namespace norvelis::tables {

namespace {

template <typename Named>
const Named* FindNamed(const std::vector<Named>& all, const std::string& name) {
    const auto found =
        std::ranges::find_if(all, [&name](const Named& one) { return SameName(one.name, name); });
    return found == all.end() ? nullptr : &*found;
}

bool SameKeys(const std::vector<std::string>& a, const std::vector<std::string>& b) {
    return std::ranges::equal(a, b, SameName);
}

/// The primary key as the server knows it: names and types of its columns.
std::vector<std::string> KeyText(const Table& table, const Dialect& dialect) {
    std::vector<std::string> texts;
    for (const auto& name : table.primaryKey)
        texts.push_back(NameKey(name) + " " + dialect.TypeText(table.Find(name)->type));
    return texts;
}

/// Tables, by NameKey, whose primary key is another one now. The server has the earlier one, to which no new
/// foreign key can refer.
using ChangedOwners = std::unordered_set<std::string>;

ChangedOwners FindChangedOwners(const std::unordered_map<std::string, const Table*>& before,
                                const SchemaModel& later, const Dialect& dialect) {
    ChangedOwners changed;
    for (const Table& table : later.tables) {
        const auto was = before.find(NameKey(table.name));
        if (was != before.end() && KeyText(*was->second, dialect) != KeyText(table, dialect))
            changed.insert(was->first);
    }
    return changed;
}

std::string NoKeyNote(const ForeignKey& key) {
    return "no foreign key " + key.name + ": the key of " + key.owner + " is another one now";
}

void TakeOutKeysTo(const ChangedOwners& changed, Table& table) {
    std::erase_if(table.foreignKeys, [&](const ForeignKey& key) {
        const bool refused = changed.contains(NameKey(key.owner));
        if (refused) table.notes.push_back(NoKeyNote(key));
        return refused;
    });
}

/// One table that was there before.
class TableDifference {
  public:
    TableDifference(const Table& before, const Table& now, const ChangedOwners& changed,
                    const Dialect& dialect)
        : before_(before), now_(now), changed_(changed), dialect_(dialect) {}

    Script::Group Make() {
        if (!SameKeys(before_.primaryKey, now_.primaryKey))
            Note("the primary key was (" + Joined(before_.primaryKey) + ") and is (" +
                 Joined(now_.primaryKey) + ") now");
        for (const Column& column : now_.columns) CompareColumn(column);
        for (const Column& column : before_.columns) {
            if (now_.Find(column.name) == nullptr && FindNamed(now_.columns, column.name) == nullptr)
                Note("the column " + column.name + " is no longer in the dictionary");
        }
        CompareKeys();
        CompareIndexes();
        return std::move(group_);
    }

  private:
    void Note(const std::string& words) { group_.notes.push_back("Table " + now_.name + ": " + words); }
    static std::string Joined(const std::vector<std::string>& names) {
        std::string text;
        for (const auto& name : names) text += (text.empty() ? "" : ", ") + name;
        return text;
    }

    bool LeadsToChanged(const ForeignKey& key) const { return changed_.contains(NameKey(key.owner)); }

    /// The new key of this column alone, where keys cannot be added to a table by themselves.
    const ForeignKey* KeyMadeWith(const Column& column) const {
        for (const ForeignKey& key : now_.foreignKeys) {
            if (key.columns.size() == 1 && key.columns.front() == column.name && !LeadsToChanged(key) &&
                FindNamed(before_.foreignKeys, key.name) == nullptr &&
                dialect_.AddForeignKey(now_, key).empty())
                return &key;
        }
        return nullptr;
    }

    /// A required column has no value in the rows that are there: it comes without NOT NULL.
    void CompareColumn(const Column& column) {
        const Column* before = FindNamed(before_.columns, column.name);
        if (before == nullptr) {
            if (column.identity) return;  // The key is noted as another one.
            Column added = column;
            added.required = false;
            std::string statement = dialect_.AddColumn(now_, added);
            if (const ForeignKey* key = KeyMadeWith(column)) statement += dialect_.ReferenceText(*key);
            group_.statements.push_back(std::move(statement));
            if (auto comment = dialect_.Comment(now_, column); !comment.empty())
                group_.statements.push_back(std::move(comment));
            if (column.required)
                Note("the column " + column.name + " must have a value; make it NOT NULL once each row does");
            return;
        }
        const std::string was = dialect_.TypeText(before->type), is = dialect_.TypeText(column.type);
        if (was != is) Note("the column " + column.name + " was " + was + " and is " + is + " now");
        if (before->required != column.required)
            Note("the column " + column.name +
                 (column.required ? " must have a value now" : " may be null now"));
    }

    void CompareKeys() {
        for (const ForeignKey& key : now_.foreignKeys) {
            const ForeignKey* before = FindNamed(before_.foreignKeys, key.name);
            if (before == nullptr && LeadsToChanged(key)) {
                Note(NoKeyNote(key));
            } else if (before == nullptr) {
                auto statement = dialect_.AddForeignKey(now_, key);
                const Column& column = *now_.Find(key.columns.front());
                if (statement.empty() && FindNamed(before_.columns, column.name) == nullptr &&
                    KeyMadeWith(column) != nullptr)
                    continue;
                if (statement.empty())
                    Note("the foreign key " + key.name + " can be made only with the table");
                else
                    group_.statements.push_back(std::move(statement));
            } else if (!SameKeys(before->columns, key.columns) || !SameName(before->owner, key.owner) ||
                       !SameKeys(before->ownerColumns, key.ownerColumns)) {
                Note("the foreign key " + key.name + " is another one now");
            }
        }
        for (const ForeignKey& key : before_.foreignKeys) {
            if (FindNamed(now_.foreignKeys, key.name) == nullptr)
                Note("the foreign key " + key.name + " is no longer in the dictionary");
        }
    }

    void CompareIndexes() {
        for (const Index& index : now_.indexes) {
            const Index* before = FindNamed(before_.indexes, index.name);
            if (before == nullptr) {
                group_.statements.push_back(dialect_.CreateIndex(now_, index));
            } else if (before->keys != index.keys || before->unique != index.unique) {
                Note("the index " + index.name + " is another one now");
            }
        }
        for (const Index& index : before_.indexes) {
            if (FindNamed(now_.indexes, index.name) == nullptr)
                Note("the index " + index.name + " is no longer in the dictionary");
        }
    }

    const Table &before_, &now_;
    const ChangedOwners& changed_;
    const Dialect& dialect_;
    Script::Group group_;
};

}  // namespace

Script MakeDifferenceScript(const SchemaModel& earlier, const SchemaModel& later, const Dialect& dialect) {
    std::unordered_map<std::string, const Table*> before;
    for (const Table& table : earlier.tables) before.emplace(NameKey(table.name), &table);
    const ChangedOwners changed = FindChangedOwners(before, later, dialect);
    // New tables are made whole, by the same words as ever.
    SchemaModel created = later;
    std::erase_if(created.tables,
                  [&before](const Table& table) { return before.contains(NameKey(table.name)); });
    for (Table& table : created.tables) TakeOutKeysTo(changed, table);
    Script script = MakeScript(created, dialect);
    script.heading.push_back(
        "Only what the dictionary did not hold before; what would lose data is a comment.");
    for (const Table& table : later.tables) {
        const auto was = before.extract(NameKey(table.name));
        if (was.empty()) continue;
        Script::Group group = TableDifference(*was.mapped(), table, changed, dialect).Make();
        if (!group.notes.empty() || !group.statements.empty()) script.groups.push_back(std::move(group));
    }
    for (const Table& table : earlier.tables) {
        if (before.contains(NameKey(table.name)))
            script.groups.push_back(
                {{}, {"Table " + table.name + ": no longer in the dictionary"}, {}, false});
    }
    return script;
}

}  // namespace norvelis::tables
