#include "cli/sql_commands.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <nlohmann/json.hpp>

#include "base/text.h"
#include "cli/json_output.h"
#include "cli/sql_rows.h"
#include "cli/table_commands.h"
#include "dictionary/schemas.h"
#include "sqlconv/connection_text.h"
#include "sqlconv/conversion.h"
#include "sqlconv/data_sources.h"
#include "sqlconv/diagnostics.h"
#include "sqlconv/record_tables.h"
#include "sqlconv/server_tables.h"
#include "sqlconv/table_creation.h"
#include "sqlconv/table_procedures.h"
#include "store/connection.h"

namespace norvelis::cli {

namespace {

using Json = nlohmann::ordered_json;

struct Options {
    std::string name, dsn, database;
    std::string tables = "literal", ifExists = "fail", wishes;
    bool json = false, csv = false, noDatabase = false;
    std::size_t limit = kMostResultRows;
};

void PrintLine(const std::string& line) {
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fputc('\n', stdout);
}

/// A list as lines of the texts that belong to a line, or as a JSON array.
template <typename Item>
int PrintList(const std::vector<Item>& items, bool json, const std::function<std::string(const Item&)>& line,
              const std::function<Json(const Item&)>& object) {
    Json array = Json::array();
    for (const auto& item : items) {
        if (json) {
            array.push_back(object(item));
        } else {
            PrintLine(line(item));
        }
    }
    if (json) PrintJson(array);
    return kDone;
}

int PrintSources(bool json) {
    const DataSourceList list = DataSources();
    if (list.trouble)
        std::fprintf(stderr, "%s\n", OdbcErrorText(*list.trouble).c_str());
    else if (list.shown.empty())
        std::fprintf(stderr, "There are no data sources; \"odbcinst -j\" shows where they are looked for.\n");
    return PrintList<DataSource>(
        list.shown, json, [](const DataSource& source) { return source.name + "\t" + source.driver; },
        [](const DataSource& source) {
            return Json{{"name", source.name}, {"driver", source.driver}};
        });
}

int PrintTables(CommandContext& context, const Options& options) {
    SqlState sql(*context.app);
    return PrintList<ServerTable>(
        TablesOf(sql, options.dsn), options.json, [](const ServerTable& table) { return table.shown; },
        [](const ServerTable& table) {
            return Json{{"table", table.shown}, {"name", table.name}, {"schema", table.schema}};
        });
}

std::string FullName(const ServerTable& table) {
    return table.schema.empty() ? table.name : table.schema + "." + table.name;
}

/// The table that is meant: NAME or SCHEMA.NAME, as the server spells it before any other letter case.
const ServerTable& TableNamed(const std::vector<ServerTable>& tables, const std::string& name) {
    std::vector<const ServerTable*> exact, meant;
    for (const auto& table : tables) {
        const std::string full = FullName(table);
        if (full == name) return table;
        if (table.name == name) exact.push_back(&table);
        if (EqualIgnoringCase(table.name, name) || EqualIgnoringCase(full, name)) meant.push_back(&table);
    }
    if (!exact.empty()) meant = std::move(exact);
    if (meant.empty()) throw SqlFailure(0, "there is no table " + name + " in the data source");
    if (meant.size() > 1)
        throw SqlFailure(0, "several tables are meant by " + name + "; give one as the server spells it: " +
                                FullName(*meant[0]) + ", " + FullName(*meant[1]));
    return *meant.front();
}

int PrintFields(CommandContext& context, const Options& options) {
    SqlState sql(*context.app);
    const SqlSession session(sql, options.dsn);
    const auto tables = TablesOf(sql, options.dsn);
    return PrintList<ServerField>(
        FieldsOf(sql, TableNamed(tables, options.name)), options.json,
        [](const ServerField& field) { return field.name + "\t" + field.type; },
        [](const ServerField& field) {
            return Json{{"field", field.name}, {"type", field.type}, {"number", field.number}};
        });
}

int PrintProcedures(CommandContext& context, bool json) {
    context.OpenStore();
    Connection& store = *context.app->gConnection;
    return PrintList<std::string>(
        ProcedureNames(store), json, [](const std::string& name) { return name; },
        [&store](const std::string& name) {
            const auto procedure = FindProcedure(store, name).value_or(TableProcedure{name, {}, {}, {}, {}});
            return Json{{"name", name},
                        {"dsn", ShownSource(Trim(procedure.dsn))},
                        {"username", Trim(procedure.username)},
                        {"sql", procedure.sql}};
        });
}

int RunProcedure(CommandContext& context, const Options& options) {
    context.OpenStore();
    const auto procedure = FindProcedure(*context.app->gConnection, options.name);
    if (!procedure) return Refuse("there is no table procedure " + options.name);
    const auto rows = MakeRowPrinter(options.csv, options.json);
    Connector connector;
    try {
        const QueryEnd end = Execute(connector, context.host.Cancellation(), *procedure,
                                     {[&rows](const auto& fields) { rows->Fields(fields); },
                                      [&rows](const auto& row) { rows->Row(row); }},
                                     options.limit);
        rows->End();
        if (end.limited)
            std::fprintf(stderr, "Stopped at the limit of %zu; there are more rows.\n", end.rows);
        if (end.moreResults)
            std::fprintf(stderr, "The statement gave more than one result; this is the first.\n");
        return kDone;
    } catch (const SqlFailure& failure) {
        rows->End();
        return Refuse(std::string(kExecuteError) + " " + failure.what());
    }
}

/// The schema as the dictionary spells it.
std::string SchemaNamed(Connection& store, const std::string& name) {
    const auto schema = dictionary::StoredSchemaName(store, name);
    if (!schema) throw std::runtime_error("there is no schema " + name + " in the dictionary");
    return *schema;
}

int PrintStatements(CommandContext& context, const Options& options) {
    context.OpenStore();
    Connection& store = *context.app->gConnection;
    const std::string database(Trim(options.database));
    if (database.empty()) return Refuse("the name of the database is empty");
    const std::string schema = SchemaNamed(store, options.name);
    ReadStatements(store, schema, database,
                   [](const std::string&, const std::string& statement) { PrintLine(statement); });
    return kDone;
}

/// Tables with types, keys and relations.
int Keep(SqlState& sql, const std::string& schema, const Options& options) {
    TableCreation creation(sql, options.dsn);
    if (!options.noDatabase) creation.database = Trim(options.database);
    if (options.ifExists == "skip") creation.existing = ExistingTables::Skip;
    if (options.ifExists == "replace") creation.existing = ExistingTables::Replace;
    creation.options = OptionsIn(options.wishes, schema);
    if (!CreateKeptTables(creation, schema)) return Refuse(creation.refusal);
    const std::string database =
        creation.createdDatabase.empty() ? "" : "database " + creation.createdDatabase + " with ";
    std::printf("Created %s%zu tables.\n", database.c_str(), creation.created.size());
    return kDone;
}

int Convert(CommandContext& context, const Options& options) {
    const bool keep = options.tables == "keep";
    if (Trim(options.database).empty() && !(keep && options.noDatabase)) {
        std::fprintf(stderr, "--database is required, but with --tables keep --no-create-database\n");
        return kWrongUsage;
    }
    context.OpenStore();
    const std::string schema = SchemaNamed(*context.app->gConnection, options.name);
    SqlState sql(*context.app);
    if (keep) return Keep(sql, schema, options);
    Conversion conversion{sql, options.dsn, {}, {}, {}, {}};
    if (!ConvertSchema(conversion, schema, options.database)) return Refuse(conversion.refusal);
    std::printf("Created database %s with %zu tables.\n", conversion.createdDatabase.c_str(),
                conversion.created.size());
    return kDone;
}

}  // namespace

void AddSqlCommands(CLI::App& program, CommandContext& context) {
    auto* sql = program.add_subcommand("sql", "SQL servers: sources, tables, saved statements, conversion");
    sql->require_subcommand(1);
    auto options = std::make_shared<Options>();

    const auto command = [sql, &context](const char* name, const char* text,
                                         const std::function<int()>& run) {
        auto* added = sql->add_subcommand(name, text);
        added->callback([&context, run] { context.run = run; });
        return added;
    };
    const auto addJson = [options](CLI::App* to) { return to->add_flag("--json", options->json, "As JSON"); };
    const auto addDsn = [options](CLI::App* to) {
        to->add_option("--dsn", options->dsn, "Data source, or a connection text with \"=\" in it")
            ->required();
    };
    const auto addSchema = [options](CLI::App* to) {
        to->add_option("SCHEMA", options->name, "Schema of the dictionary")->required();
        return to->add_option("--database", options->database, "Name of the new database")->required();
    };

    addJson(command("sources", "List the ODBC data sources with their drivers",
                    [options] { return PrintSources(options->json); }));
    auto* tables = command("tables", "List the tables of a data source",
                           [&context, options] { return PrintTables(context, *options); });
    addDsn(tables);
    addJson(tables);
    auto* fields = command("fields", "List the fields of a table",
                           [&context, options] { return PrintFields(context, *options); });
    fields->add_option("TABLE", options->name, "The table, or SCHEMA.TABLE")->required();
    addDsn(fields);
    addJson(fields);
    addJson(command("procedures", "List the saved table procedures",
                    [&context, options] { return PrintProcedures(context, options->json); }));
    auto* run = command("run", "Run a saved table procedure and print its rows",
                        [&context, options] { return RunProcedure(context, *options); });
    run->add_option("NAME", options->name, "Name of the table procedure")->required();
    auto* csv = run->add_flag("--csv", options->csv, "As comma-separated values");
    addJson(run)->excludes(csv);
    run->add_option("--limit", options->limit, "Stop after this many rows (default: 1000000)")
        ->check(CLI::Range(std::size_t{1}, std::numeric_limits<std::size_t>::max() / 2));
    addSchema(command("statements", "Print the statements of a conversion; nothing is executed",
                      [&context, options] { return PrintStatements(context, *options); }));
    auto* convert = command("convert", "Create a database with an empty table for each record",
                            [&context, options] { return Convert(context, *options); });
    addSchema(convert)->required(false);
    addDsn(convert);
    convert->add_option("--tables", options->tables, "literal (default), or keep: types, keys and relations")
        ->check(CLI::IsMember({"literal", "keep"}));
    auto* noDatabase = convert->add_flag("--no-create-database", options->noDatabase,
                                         "With keep: the tables go where the data source leads");
    convert->get_option("--database")->excludes(noDatabase);
    convert->add_option("--if-exists", options->ifExists, "With keep: fail (default), skip or replace")
        ->check(CLI::IsMember({"fail", "skip", "replace"}));
    convert->add_option("--options", options->wishes, "With keep: file of names, types and keys");
    AddTableCommands(*sql, context);
}

}  // namespace norvelis::cli
