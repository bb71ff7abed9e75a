#include "sqlconv/conversion.h"

#include "base/paths.h"
#include "base/text.h"
#include "core/places.h"
#include "sqlconv/diagnostics.h"
#include "sqlconv/name_checks.h"
#include "sqlconv/record_tables.h"

namespace norvelis {

namespace {

void Status(Conversion& conversion, const std::string& text) {
    if (conversion.screen.status) conversion.screen.status(text);
}

/// The screen's commands; without a screen the connection alone.
void Refresh(Conversion& conversion) {
    DisconnectSql(conversion.sql);
    if (conversion.screen.disconnect) conversion.screen.disconnect();
    if (conversion.screen.connect) conversion.screen.connect();
}

void ConnectIfNeeded(Conversion& conversion) {
    if (!conversion.sql.gSqlConnected) ConnectSql(conversion.sql, conversion.dsn, kSqlTimeout);
}

bool Refuse(Conversion& conversion, const std::string& reason) {
    DisconnectSql(conversion.sql);
    conversion.refusal = reason;
    Status(conversion, reason);
    return false;
}

std::string CreatedBefore(const Conversion& conversion) {
    if (conversion.createdDatabase.empty()) return "Nothing was created before.";
    std::string words = "Created before: database " + conversion.createdDatabase;
    for (const auto& record : conversion.created) words += ", " + record;
    return words + '.';
}

/// Executes while windows stay alive. A person who cancels then reads what is true.
void Execute(Conversion& conversion, const std::string& statement) {
    conversion.sql.app.host.SetAfterCancel(CreatedBefore(conversion) + std::string(kLineBreak) +
                                           "The server may have executed the statement that was canceled.");
    InBackground(conversion.sql, [&] { ExecuteSql(conversion.sql, statement); });
}

/// Why names are refused, if they are. A large schema takes a while.
std::string UnsafeName(AppState& app, const std::vector<std::string>& records) {
    for (const auto& record : records) {
        app.host.Yield();
        if (auto unsafe = RefusedRecordName(*app.gConnection, {&record, 1}); !unsafe.empty()) return unsafe;
    }
    return {};
}

std::string WhatIsMissing(const Conversion& conversion, const std::string& schemaname) {
    if (Trim(conversion.dsn).empty()) return "You must select a DSN from the List Box above....";
    if (Trim(schemaname).empty()) return "You must select a schema of the dictionary first.";
    return {};
}

}  // namespace

bool CreateDatabase(Conversion& conversion, std::string& name) {
    try {
        if (name.empty())
            name = conversion.sql.app.host
                       .InputBox("Please Enter the name of the new Database", "New Database's Name", "")
                       .value_or("");
        conversion.refusal = RefusedDatabaseName(name);
        if (!conversion.refusal.empty()) return false;
        ConnectIfNeeded(conversion);
        if (Trim(name).empty()) {
            conversion.refusal = "No name was given for the new database.";
            return false;
        }
        Execute(conversion, DatabaseStatement(name));
        conversion.createdDatabase = name;
        conversion.sql.app.host.SetAfterCancel(CreatedBefore(conversion));
        Refresh(conversion);
        return true;
    } catch (const std::exception& failure) {
        conversion.refusal = failure.what();
        return false;
    }
}

bool CreateRecordTable(Conversion& conversion, std::string_view recordName, std::string_view databaseName) {
    ConnectIfNeeded(conversion);
    Connection& store = *conversion.sql.app.gConnection;
    const std::string statement = RecordTableStatement(store, recordName, databaseName);
    if (!statement.empty()) {
        Execute(conversion, statement);
        conversion.created.emplace_back(recordName);
        conversion.sql.app.host.SetAfterCancel(CreatedBefore(conversion));
    }
    conversion.sql.gSqlRecordset.reset();
    Status(conversion, "IDMS conversion to SQL was successful.");
    return true;
}

bool ConvertSchema(Conversion& conversion, const std::string& schemaname, std::string_view databaseName) {
    AppState& app = conversion.sql.app;
    if (!FileExists(app.AppPath(places::kStore))) {
        conversion.refusal = "Please locate and extract IDMS Report File.";
        app.host.MessageBox(conversion.refusal);
        return false;
    }
    if (const auto missing = WhatIsMissing(conversion, schemaname); !missing.empty())
        return Refuse(conversion, missing);
    const std::vector<std::string> records = RecordsOf(*app.gConnection, schemaname);
    app.host.SetAfterCancel("Nothing was created.");
    if (const auto unsafe = UnsafeName(app, records); !unsafe.empty())
        return Refuse(conversion, "Nothing was created: " + unsafe);

    std::string database(Trim(databaseName));
    if (!CreateDatabase(conversion, database)) return Refuse(conversion, conversion.refusal);
    app.progress.BResetprogressbar(Bar::TreeviewValue, static_cast<int>(records.size()));
    const ShownBars shown(app.progress, kTreeBars);
    for (const auto& record : records) {
        app.progress.BStepprogressbar(Bar::TreeviewValue, 1, record);
        try {
            CreateRecordTable(conversion, record, database);
        } catch (const std::exception& failure) {
            return Refuse(conversion,
                          "Record " + record + ": " + failure.what() + " " + CreatedBefore(conversion));
        }
    }
    Refresh(conversion);
    return true;
}

}  // namespace norvelis
