#include "sqlconv/table_creation.h"

#include <algorithm>
#include <unordered_set>

#include "base/name_key.h"
#include "base/text.h"
#include "dictionary/schema_contents.h"
#include "sqlconv/connection_text.h"
#include "sqlconv/diagnostics.h"

namespace norvelis {

namespace {

using tables::Dialect;
using tables::KeptTables;
using tables::Script;

const Dialect& DialectOfServer(SqlState& sql) {
    std::string server;
    InBackground(sql, [&] { server = sql.gSqlConnection->ServerName(); });
    if (const Dialect* dialect = tables::DialectOf(server)) return *dialect;
    throw SqlFailure(0, server.empty() ? "The server does not say of what kind it is"
                                       : "There is no dialect for a server that calls itself " + server);
}

/// Takes back what was not committed when the scope ends.
class ServerTransaction {
  public:
    ServerTransaction(SqlState& sql, Dialect::TransactionWords words) : sql_(sql), words_(words) {
        if (!words_.begin.empty()) ExecuteSql(sql_, words_.begin);
    }
    ~ServerTransaction() {
        if (committed_ || words_.rollback.empty()) return;
        try {
            if (sql_.gSqlConnection) sql_.gSqlConnection->Execute(words_.rollback);
        } catch (const std::exception&) {  // The server takes it back when the connection ends.
        }
    }
    ServerTransaction(const ServerTransaction&) = delete;
    ServerTransaction& operator=(const ServerTransaction&) = delete;

    void Commit() {
        if (!words_.commit.empty()) ExecuteSql(sql_, words_.commit);
        committed_ = true;
    }

  private:
    SqlState& sql_;
    Dialect::TransactionWords words_;
    bool committed_ = false;
};

std::string Joined(const std::vector<std::string>& names) {
    std::string text;
    for (const auto& name : names) text += (text.empty() ? "" : ", ") + name;
    return text;
}

class Creator {
  public:
    Creator(TableCreation& creation, KeptTables kept)
        : creation_(creation), sql_(creation.sql), dialect_(kept.dialect), kept_(std::move(kept)) {}

    void Run() {
        CreateDatabase();
        const auto there = TablesThere();
        std::vector<std::string> drops;
        if (!there.empty()) {
            if (creation_.existing == ExistingTables::Fail)
                throw SqlFailure(0, "The data source has tables of these names: " + Joined(there));
            if (creation_.existing == ExistingTables::Replace) drops = DropsOf(there);
            if (creation_.existing == ExistingTables::Skip) LeaveOut(there);
        }
        CreateTables(drops);
    }

    std::string WhatStays() const {
        std::vector<std::string> made;
        if (!creation_.createdDatabase.empty()) made.push_back("database " + creation_.createdDatabase);
        for (const auto& table : creation_.created) made.push_back("table " + table);
        return made.empty() ? "Nothing was created." : "Created before: " + Joined(made) + ".";
    }

  private:
    /// A server whose data source is the database itself has no others.
    void CreateDatabase() {
        if (creation_.database.empty() || !dialect_.HasDatabases()) return;
        InBackground(sql_, [&] { ExecuteSql(sql_, dialect_.CreateDatabase(creation_.database)); });
        creation_.createdDatabase = creation_.database;
        DisconnectSql(sql_);
        ConnectionText source(creation_.dsn);
        source.Set("Database", creation_.database);
        ConnectSql(sql_, source.Text(), kSqlTimeout);
    }

    /// Where the server puts tables whose names have no schema; empty when there is only one place.
    std::string CurrentSchema() {
        if (dialect_.CurrentSchema().empty()) return {};
        SqlResult result = sql_.gSqlConnection->Execute(std::string(dialect_.CurrentSchema()));
        const auto* row = result.Next();
        return row == nullptr ? std::string() : row->front().value_or("");
    }

    /// The tables of the model that the server has, in the model's order.
    std::vector<std::string> TablesThere() {
        std::unordered_set<std::string> onServer;
        InBackground(sql_, [&] {
            const std::string current = CurrentSchema();
            SqlResult tables = sql_.gSqlConnection->Tables();
            constexpr std::size_t kSchema = 1, kName = 2;
            while (const auto* row = tables.Next()) {
                if (current.empty() || row->at(kSchema).value_or("") == current)
                    onServer.insert(NameKey(row->at(kName).value_or("")));
            }
        });
        std::vector<std::string> there;
        for (const auto& table : kept_.model.tables) {
            if (onServer.contains(NameKey(table.name))) there.push_back(table.name);
        }
        return there;
    }

    std::vector<std::string> DropsOf(const std::vector<std::string>& there) const {
        std::vector<tables::Table> dropped;
        for (const auto& table : kept_.model.tables) {
            if (std::ranges::find(there, table.name) != there.end()) dropped.push_back(table);
        }
        return dialect_.DropTables(dropped);
    }

    void LeaveOut(const std::vector<std::string>& there) {
        std::erase_if(kept_.model.tables, [&there](const tables::Table& table) {
            return std::ranges::find(there, table.name) != there.end();
        });
        kept_.script = MakeScript(kept_.model, dialect_);
    }

    void CreateTables(const std::vector<std::string>& drops) {
        const auto words = dialect_.Transaction();
        const bool together = !words.begin.empty();
        auto& progress = sql_.app.progress;
        progress.BResetprogressbar(Bar::TreeviewValue, static_cast<int>(kept_.script.groups.size()));
        const ShownBars shown(progress, kTreeBars);
        std::vector<std::string> made;
        std::optional<ServerTransaction> transaction(std::in_place, sql_, words);
        const auto commit = [&] {
            transaction->Commit();
            std::ranges::move(made, std::back_inserter(creation_.created));
            made.clear();
        };
        for (const auto& statement : drops) ExecuteSql(sql_, statement);
        // Handing work over takes as long as a statement, so that it is done for many at a time.
        constexpr std::size_t kAtOnce = 50;
        const auto& groups = kept_.script.groups;
        for (std::size_t from = 0, to = 0; from < groups.size(); from = to) {
            if (groups[from].afterCommit) {
                commit();
                transaction.emplace(sql_, words);
            }
            for (to = from + 1; to < std::min(from + kAtOnce, groups.size()) && !groups[to].afterCommit;)
                ++to;
            sql_.app.host.SetAfterCancel(together ? WhatStays() : WhatStays() + kMaybeMore);
            InBackground(sql_, [&] {
                for (std::size_t i = from; i < to; ++i) {
                    Execute(groups[i]);
                    if (!groups[i].table.empty())
                        (together ? made : creation_.created).push_back(groups[i].table);
                }
            });
            for (std::size_t i = from; i < to; ++i)
                progress.BStepprogressbar(Bar::TreeviewValue, 1, groups[i].table);
        }
        commit();
    }

    void Execute(const Script::Group& group) {
        ThrowIfCanceled(sql_.cancellation);
        try {
            if (dialect_.TakesSeveral()) {
                std::string all;
                for (const auto& statement : group.statements) all += statement + ";\n";
                ExecuteWhole(all);
            } else {
                for (const auto& statement : group.statements) ExecuteWhole(statement);
            }
        } catch (const SqlFailure& failure) {
            throw SqlFailure(failure.Number(), (group.table.empty() ? "" : "Table " + group.table + ": ") +
                                                   std::string(failure.what()));
        }
    }

    /// Also to the end of what gives several results: a later one may be the server's refusal.
    void ExecuteWhole(const std::string& statements) {
        SqlResult result = sql_.gSqlConnection->Execute(statements);
        while (result.MoreResults()) {
        }
    }

    static constexpr auto kMaybeMore = " The server may have created more.";

    TableCreation& creation_;
    SqlState& sql_;
    const Dialect& dialect_;
    KeptTables kept_;
};

std::string WhatIsMissing(const TableCreation& creation, const std::string& schema) {
    if (Trim(creation.dsn).empty()) return "You must select a DSN from the List Box above....";
    if (Trim(schema).empty()) return "You must select a schema of the dictionary first.";
    return {};
}

}  // namespace

KeptTables KeptTablesFor(SqlState& sql, const std::string& dsn, const std::string& schema,
                         const tables::Options& options) {
    const SqlSession session(sql, dsn);
    const Dialect& dialect = DialectOfServer(sql);
    return MakeKeptTables(dictionary::ReadSchema(*sql.app.gConnection, schema), options, dialect);
}

bool CreateKeptTables(TableCreation& creation, const std::string& schema) {
    const auto say = [&creation] {
        if (creation.screen.status) creation.screen.status(creation.refusal);
    };
    creation.refusal = WhatIsMissing(creation, schema);
    if (!creation.refusal.empty()) {
        say();
        return false;
    }
    std::optional<Creator> creator;
    try {
        const SqlSession session(creation.sql, creation.dsn);
        creator.emplace(creation, KeptTablesFor(creation.sql, creation.dsn, schema, creation.options));
        creator->Run();
    } catch (const std::exception& failure) {
        creation.refusal = std::string(failure.what()) + " " +
                           (creator ? creator->WhatStays() : std::string("Nothing was created."));
        say();
        return false;
    }
    return true;
}

}  // namespace norvelis
