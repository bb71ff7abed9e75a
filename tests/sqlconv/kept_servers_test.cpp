#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>

#include "base/text.h"
#include "sqlconv/diagnostics.h"
#include "sqlconv/mariadb_server.h"
#include "sqlconv/odbc_folder.h"
#include "sqlconv/postgres_server.h"
#include "sqlconv/schema_of.h"
#include "sqlconv/table_creation.h"
#include "testing/literal_extraction.h"
#include "testing/odd_dictionary.h"
#include "testing/test_store.h"

// Scripts on real servers: the server's own catalogue is read back, rows go in that obey the sets, and those
// that do not are refused.
namespace norvelis {
namespace {

using tables::Column;
using tables::ColumnType;
using tables::Dialect;
using tables::ForeignKey;
using tables::Index;
using tables::KeptTables;
using tables::Table;
using ::testing::HasSubstr;

/// A server, and how its catalogue says what a model says: statements that give lines.
struct ServerUnderTest {
    std::string source;
    const Dialect* dialect;
    std::function<std::string(std::string)> typeInCatalogue;  ///< Of a type as scripts write it.
    std::string columns, primaryKeys, foreignKeys, indexes;
};

std::string Replaced(std::string text, const std::vector<std::pair<std::string, std::string>>& words) {
    for (const auto& [from, to] : words) {
        if (text.starts_with(from)) return to + text.substr(from.size());
    }
    return text;
}

ServerUnderTest PostgresUnderTest(const std::string& source) {
    return {
        source,
        &tables::PostgresqlDialect(),
        [](const std::string& type) {
            return LowerCase(Replaced(
                type, {{"VARCHAR", "character varying"}, {"CHAR", "character"}, {"DECIMAL", "numeric"}}));
        },
        "select c.relname||'.'||a.attname||' '||format_type(a.atttypid, a.atttypmod)||case when a.attnotnull "
        "then ' "
        "required' else '' end from pg_attribute a join pg_class c on c.oid = a.attrelid where c.relkind = "
        "'r' and "
        "c.relnamespace = 'public'::regnamespace and a.attnum > 0",
        "select c.relname||' '||(select string_agg(a.attname, ',' order by n) from unnest(p.conkey) with "
        "ordinality "
        "u(k, n) join pg_attribute a on a.attrelid = c.oid and a.attnum = k) from pg_constraint p join "
        "pg_class c on "
        "c.oid = p.conrelid where c.relnamespace = 'public'::regnamespace and p.contype = 'p'",
        "select c.relname||' '||(select string_agg(a.attname, ',' order by n) from unnest(p.conkey) with "
        "ordinality "
        "u(k, n) join pg_attribute a on a.attrelid = c.oid and a.attnum = k)||' '||o.relname||' '||(select "
        "string_agg(a.attname, ',' order by n) from unnest(p.confkey) with ordinality u(k, n) join "
        "pg_attribute a on "
        "a.attrelid = o.oid and a.attnum = k)||case p.confdeltype when 'c' then ' cascade' else '' end from "
        "pg_constraint p join pg_class c on c.oid = p.conrelid join pg_class o on o.oid = p.confrelid where "
        "p.contype "
        "= 'f'",
        "select t.relname||case when i.indisunique then ' unique ' else ' ' end||(select "
        "string_agg(a.attname||case when i.indoption[n - 1] & 1 = 1 then '-' else '' end, ',' order by n) "
        "from "
        "unnest(i.indkey) with ordinality u(k, n) join pg_attribute a on a.attrelid = t.oid and a.attnum = "
        "k) from "
        "pg_index i join pg_class t on t.oid = i.indrelid where t.relnamespace = 'public'::regnamespace and "
        "not "
        "i.indisprimary"};
}

ServerUnderTest MariadbUnderTest(const std::string& source) {
    return {source, &tables::MysqlDialect(),
            [](const std::string& type) {
                return LowerCase(Replaced(
                    type, {{"SMALLINT", "smallint(6)"}, {"INTEGER", "int(11)"}, {"BIGINT", "bigint(20)"}}));
            },
            "select concat(table_name, '.', column_name, ' ', column_type, if(is_nullable = 'NO', ' "
            "required', '')) from "
            "information_schema.columns where table_schema = database()",
            "select concat(table_name, ' ', group_concat(column_name order by ordinal_position separator "
            "',')) from "
            "information_schema.key_column_usage where table_schema = database() and constraint_name = "
            "'PRIMARY' group by "
            "table_name",
            "select concat(k.table_name, ' ', group_concat(k.column_name order by k.ordinal_position "
            "separator ','), ' ', "
            "k.referenced_table_name, ' ', group_concat(k.referenced_column_name order by k.ordinal_position "
            "separator "
            "','), if(max(r.delete_rule) = 'CASCADE', ' cascade', '')) from "
            "information_schema.key_column_usage k join "
            "information_schema.referential_constraints r on r.constraint_schema = k.table_schema and "
            "r.constraint_name = "
            "k.constraint_name where k.table_schema = database() and k.referenced_table_name is not null "
            "group by "
            "k.table_name, k.constraint_name, k.referenced_table_name",
            // Keys that refer to other tables have indexes of their own here, under the key's name.
            "select concat(table_name, if(non_unique = 0, ' unique ', ' '), group_concat(concat(column_name, "
            "if(collation "
            "= 'D', '-', '')) order by seq_in_index separator ',')) from information_schema.statistics where "
            "table_schema "
            "= database() and index_name <> 'PRIMARY' and index_name not like 'fk\\_%' group by table_name, "
            "index_name, "
            "non_unique"};
}

ServerUnderTest SqliteUnderTest(const std::string& source) {
    return {
        source,
        &tables::SqliteDialect(),
        [](const std::string& type) { return type; },
        "select m.name||'.'||p.name||' '||p.type||case when p.\"notnull\" then ' required' else '' end from "
        "sqlite_master m join pragma_table_info(m.name) p where m.type = 'table'",
        "select name||' '||group_concat(pk) from (select m.name as name, p.name as pk from sqlite_master m "
        "join "
        "pragma_table_info(m.name) p where m.type = 'table' and p.pk > 0 order by m.name, p.pk) group by "
        "name",
        "select name||' '||group_concat(a)||' '||owner||' '||group_concat(b)||cascade from (select m.name as "
        "name, "
        "f.id as id, f.\"from\" as a, f.\"table\" as owner, f.\"to\" as b, case f.on_delete when 'CASCADE' "
        "then ' "
        "cascade' else '' end as cascade from sqlite_master m join pragma_foreign_key_list(m.name) f where "
        "m.type = "
        "'table' order by m.name, f.id, f.seq) group by name, id, owner, cascade",
        "select name||case u when 1 then ' unique ' else ' ' end||group_concat(k) from (select m.name as "
        "name, l.name "
        "as ix, l.\"unique\" as u, x.name||case x.\"desc\" when 1 then '-' else '' end as k from "
        "sqlite_master m join "
        "pragma_index_list(m.name) l join pragma_index_xinfo(l.name) x where m.type = 'table' and l.origin = "
        "'c' and "
        "x.key = 1 order by m.name, l.name, x.seqno) group by name, ix, u"};
}

std::string Joined(const std::vector<std::string>& names) {
    std::string text;
    for (const auto& name : names) text += (text.empty() ? "" : ",") + name;
    return text;
}

/// The model in the words of the catalogue's statements.
struct Lines {
    std::vector<std::string> columns, primaryKeys, foreignKeys, indexes;
};

Lines LinesOf(const KeptTables& kept, const ServerUnderTest& server) {
    Lines lines;
    for (const Table& table : kept.model.tables) {
        lines.primaryKeys.push_back(table.name + " " + Joined(table.primaryKey));
        for (const Column& column : table.columns) {
            const bool rowid = column.identity && server.dialect->Name() == "sqlite";
            lines.columns.push_back(
                table.name + "." + column.name + " " +
                (rowid ? "INTEGER" : server.typeInCatalogue(server.dialect->TypeText(column.type))) +
                (column.required && !rowid ? " required" : ""));
        }
        for (const ForeignKey& key : table.foreignKeys)
            lines.foreignKeys.push_back(table.name + " " + Joined(key.columns) + " " + key.owner + " " +
                                        Joined(key.ownerColumns) + (key.cascade ? " cascade" : ""));
        for (const Index& index : table.indexes) {
            std::vector<std::string> keys;
            for (const auto& key : index.keys) keys.push_back(key.column + (key.descending ? "-" : ""));
            lines.indexes.push_back(table.name + (index.unique ? " unique " : " ") + Joined(keys));
        }
    }
    for (auto* part : {&lines.columns, &lines.primaryKeys, &lines.foreignKeys, &lines.indexes})
        std::ranges::sort(*part);
    return lines;
}

class Session {
  public:
    explicit Session(const std::string& source) : connection_({source, "", "", 0}) {}

    std::vector<std::string> Values(const std::string& statement) {
        SqlResult result = connection_.Execute(statement);
        std::vector<std::string> values;
        while (const auto* row = result.Next()) values.push_back(row->at(0).value_or("null"));
        return values;
    }
    std::vector<std::string> Sorted(const std::string& statement) {
        auto values = Values(statement);
        std::ranges::sort(values);
        return values;
    }
    std::string RefusalOf(const std::string& statement) {
        try {
            connection_.Execute(statement);
        } catch (const SqlFailure& failure) {
            return failure.what();
        }
        return {};
    }

  private:
    SqlConnection connection_;
};

/// Rows 1 to 4 of each table: keys go up with the row, all else goes down, and each set has two owners.
std::string ValueOf(const Table& table, const Column& column, int row) {
    const bool key = std::ranges::find(table.primaryKey, column.name) != table.primaryKey.end();
    if (column.most > 0) return "1";
    const int number = key ? row : 9 - row;
    switch (column.type.kind) {
        case ColumnType::Kind::Text:
        case ColumnType::Kind::FixedText:
            return "'" + std::to_string(number) + "'";
        case ColumnType::Kind::Decimal:
            return column.type.decimals == 0
                       ? std::to_string(number)
                       : "0." + std::string(static_cast<std::size_t>(column.type.decimals) - 1, '0') +
                             std::to_string(number);
        default:
            return std::to_string(number);
    }
}

int OwnerRow(int row) {
    return row % 2 + 1;
}

std::map<std::string, std::string> RowOf(const KeptTables& kept, const Table& table, int row) {
    std::map<std::string, std::string> values;
    for (const Column& column : table.columns) values[column.name] = ValueOf(table, column, row);
    for (const ForeignKey& key : table.foreignKeys) {
        if (key.cascade) continue;
        const Table& owner = *std::ranges::find(kept.model.tables, key.owner, &Table::name);
        for (std::size_t i = 0; i < key.columns.size(); ++i)
            values[key.columns[i]] = ValueOf(owner, *owner.Find(key.ownerColumns[i]), OwnerRow(row));
    }
    return values;
}

std::string InsertOf(const Dialect& dialect, const Table& table,
                     const std::map<std::string, std::string>& row) {
    std::string names, values;
    for (const auto& [name, value] : row) {
        names += (names.empty() ? "" : ", ") + dialect.NameText(name);
        values += (values.empty() ? "" : ", ") + value;
    }
    return "insert into " + dialect.NameText(table.name) + " (" + names + ") values (" + values + ")";
}

class KeptServers : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        postgres = std::make_unique<PostgresServer>();
        mariadb = std::make_unique<MariadbServer>();
    }
    static void TearDownTestSuite() {
        postgres.reset();
        mariadb.reset();
    }
    KeptServers() {
        odbc.Source(odbc.pg, POSTGRES_DRIVER, postgres->Keys());
        odbc.Source("MARIA" + odbc.own, MARIADB_DRIVER, mariadb->Keys());
        odbc.SqliteSource();
    }
    std::vector<ServerUnderTest> Servers() const {
        return {PostgresUnderTest(odbc.pg), MariadbUnderTest("MARIA" + odbc.own), SqliteUnderTest(odbc.lite)};
    }
    void ReadSample() {
        literal::Dictionary dictionary;
        literal::ExtractReport(literal::SplitLines(ReadFile(NORVELIS_SOURCE "/app/reportfiles/empschm.text")),
                               dictionary);
        WriteDictionary(*test.app.gConnection, dictionary);
    }
    KeptTables SampleFor(const ServerUnderTest& server) {
        return MakeKeptTables(dictionary::ReadSchema(*test.app.gConnection, "EMPSCHM"), {}, *server.dialect);
    }
    static void ExpectCatalogue(const KeptTables& kept, const ServerUnderTest& server) {
        Session session(server.source);
        const Lines lines = LinesOf(kept, server);
        EXPECT_EQ(session.Sorted(server.columns), lines.columns) << server.source;
        EXPECT_EQ(session.Sorted(server.primaryKeys), lines.primaryKeys) << server.source;
        EXPECT_EQ(session.Sorted(server.foreignKeys), lines.foreignKeys) << server.source;
        EXPECT_EQ(session.Sorted(server.indexes), lines.indexes) << server.source;
    }
    void RemoveTables(const KeptTables& kept, const std::string& source) {
        Session session(source);
        for (const auto& statement : kept.dialect.DropTables(kept.model.tables))
            EXPECT_EQ(session.RefusalOf(statement), "");
    }

    static inline std::unique_ptr<PostgresServer> postgres;
    static inline std::unique_ptr<MariadbServer> mariadb;
    OdbcFolder odbc;
    TestApp test;
    SqlState sql{test.app};
};

TEST_F(KeptServers, TheSampleWithItsSetsOnEachServer) {
    ReadSample();
    for (const ServerUnderTest& server : Servers()) {
        TableCreation creation(sql, server.source);
        ASSERT_TRUE(CreateKeptTables(creation, "EMPSCHM")) << creation.refusal;
        const KeptTables kept = SampleFor(server);
        ExpectCatalogue(kept, server);
        Session session(server.source);
        if (server.dialect->Name() == "sqlite") session.Values("pragma foreign_keys = on");
        std::size_t walked = 0;
        for (const Table& table : kept.model.tables) {
            for (int row = 1; row <= 4; ++row)
                EXPECT_EQ(session.RefusalOf(InsertOf(*server.dialect, table, RowOf(kept, table, row))), "");
        }
        for (const Table& table : kept.model.tables) {
            for (const ForeignKey& key : table.foreignKeys) {
                if (key.set.empty()) continue;
                const Table& owner = *std::ranges::find(kept.model.tables, key.owner, &Table::name);
                const auto order = std::ranges::find_if(table.indexes, [&key](const Index& index) {
                    return index.keys.size() > 1 && index.keys.front().column == key.columns.front();
                });
                ASSERT_NE(order, table.indexes.end()) << key.set;
                std::string by;
                for (const auto& sort : order->keys)
                    by += (by.empty() ? "" : ", ") + ("m." + sort.column) + (sort.descending ? " desc" : "");
                const auto members =
                    session.Values("select m." + table.primaryKey[0] + " from " + table.name + " m join " +
                                   owner.name + " o on m." + key.columns[0] + " = o." + key.ownerColumns[0] +
                                   " where o." + key.ownerColumns[0] + " = " +
                                   ValueOf(owner, *owner.Find(key.ownerColumns[0]), 1) + " order by " + by);
                const bool byKey = order->keys[1].column == table.primaryKey[0];
                const bool up = byKey != order->keys[1].descending;
                EXPECT_EQ(members,
                          up ? (std::vector<std::string>{"2", "4"}) : (std::vector<std::string>{"4", "2"}))
                    << key.set;
                ++walked;
            }
        }
        EXPECT_EQ(walked, 14u);
        for (int point = 2; point <= 8; ++point) {
            EXPECT_EQ(session.RefusalOf("insert into instrument_instr_measure_0310 values ('1', " +
                                        std::to_string(point) + ", 'P')"),
                      "");
            for (int value = 1; value <= 2; ++value)
                EXPECT_EQ(session.RefusalOf("insert into instrument_measure_value_0310 values ('1', " +
                                            std::to_string(point) + ", " + std::to_string(value) + ", 1.25)"),
                          "");
        }
        EXPECT_EQ(session.RefusalOf("insert into instrument_measure_value_0310 values ('1', 1, 2, 1.25)"),
                  "");
        EXPECT_EQ(
            session.Values("select count(*) from instrument_measure_value_0310 where instr_serial_0310 = '1'")
                .at(0),
            "16");
        EXPECT_NE(session.RefusalOf("insert into instrument_measure_value_0310 values ('1', 1, 3, 1.25)"),
                  "");
        RemoveTables(kept, server.source);
    }
}

TEST_F(KeptServers, RowsThatBreakARuleAreRefused) {
    ReadSample();
    for (const ServerUnderTest& server : Servers()) {
        TableCreation creation(sql, server.source);
        ASSERT_TRUE(CreateKeptTables(creation, "EMPSCHM")) << creation.refusal;
        const KeptTables kept = SampleFor(server);
        Session session(server.source);
        if (server.dialect->Name() == "sqlite") session.Values("pragma foreign_keys = on");
        std::size_t required = 0, unique = 0;
        for (const Table& table : kept.model.tables) {
            const auto refused = [&](const std::map<std::string, std::string>& row) {
                return !session.RefusalOf(InsertOf(*server.dialect, table, row)).empty();
            };
            const auto first = RowOf(kept, table, 1), other = RowOf(kept, table, 2);
            // The other owner's row, but for the one that a case changes, would be taken.
            EXPECT_EQ(session.RefusalOf(InsertOf(*server.dialect, table, first)), "") << table.name;
            EXPECT_EQ(session.RefusalOf(InsertOf(*server.dialect, table, other)), "") << table.name;
            EXPECT_TRUE(refused(first)) << table.name;
            const auto third = RowOf(kept, table, 3);
            for (const ForeignKey& key : table.foreignKeys) {
                auto row = third;
                if (key.set.empty()) continue;
                row[key.columns[0]] = row[key.columns[0]].starts_with("'") ? "'9'" : "9";
                EXPECT_TRUE(refused(row)) << key.set << ": an owner that is not there";
                if (!table.Find(key.columns[0])->required) continue;
                row[key.columns[0]] = "null";
                EXPECT_TRUE(refused(row)) << key.set << ": no owner";
                ++required;
            }
            for (const Index& index : table.indexes) {
                if (!index.unique) continue;
                auto row = third;
                bool onlyKey = true;
                for (const auto& key : index.keys) {
                    row[key.column] = first.at(key.column);
                    onlyKey = onlyKey && key.column != table.primaryKey[0];
                }
                EXPECT_TRUE(refused(row)) << index.name;
                unique += onlyKey ? 1 : 0;
            }
        }
        EXPECT_EQ(required, 10u) << server.source;
        EXPECT_EQ(unique, 2u);
        RemoveTables(kept, server.source);
    }
}

/// Reserved words, odd and long names, cycles, overlaps, too many and too long columns.
dictionary::SchemaContents OddSchema() {
    std::vector<dictionary::FieldContents> words, many = {FieldOf("02 K", "9(4)")};
    for (const char* word :
         {"ORDER",  "USER",  "GROUP", "KEY",    "TABLE",    "INDEX",      "RANK",   "ROWS",
          "VALUES", "CHECK", "LEFT",  "PLAN",   "PERCENT",  "FILE",       "OFFSET", "CONDITION",
          "SYSTEM", "DATE",  "LIMIT", "RETURN", "2ND-NAME", "A#B",        "A@B",    "A$B",
          "A\"B",   "A`B",   "A]B",   "IT'S",   "B\\S",     "CAF\xC3\x89"})
        words.push_back(FieldOf(std::string("02 ") + word, "X(4)"));
    for (int i = 0; i < 1100; ++i)
        many.push_back(FieldOf("02 FIELD-OF-A-LONG-NAME-" + std::to_string(i), "X(30)"));
    // Short columns, of which the server's description of the table holds too few.
    std::vector<dictionary::FieldContents> dense = {FieldOf("02 K", "9(4)")};
    for (int i = 1000; i < 1850; ++i)
        dense.push_back(FieldOf("02 FIELD-OF-A-LONG-NAME-ABCD-" + std::to_string(i), "9(4)"));
    const std::string item(30, 'I'), group(30, 'G');
    return SchemaOf(
        {RecordOf("ORDER", words, "ORDER KEY"),
         RecordOf("USER", {FieldOf("02 CODE", "X(4)"), FieldOf("02 code", "9(9)V9")}),
         RecordOf("ORDER-LINE", {}), RecordOf("WIDE", many, "K"), RecordOf("DENSE", dense, "K"),
         RecordOf("LONG-NAMES-567890",
                  {FieldOf("02 " + group), FieldOf("03 " + item, "X(20000)", "DISPLAY OCCURS 3"),
                   FieldOf("03 " + item, "", "COMP-1 OCCURS 2"), FieldOf("02 BIG", "9(40)"),
                   FieldOf("02 D", "", "COMP-2")}),
         RecordOf("DUP", {FieldOf("02 C", "X(9)"), FieldOf("02 XMIN", "9")}, "C", ""), RecordOf("T", {}),
         RecordOf("T-PKEY", {}), RecordOf("SQLITE-X", {})},
        {SetOf("LOOP-1", "USER", "ORDER-LINE", "MA NEXT"),
         SetOf("LOOP-2", "ORDER-LINE", "USER", "OA ASC CODE DN"), SetOf("GROUP", "ORDER", "USER", "MA LAST"),
         SetOf("SELF", "DUP", "DUP", "OM NEXT"), SetOf("WIDE-SET", "WIDE", "DUP", "MM ASC C DN")},
        {{"TABLE", "ORDER", "", "MA SORTED DN", {{"RANK", "DSC"}, {"2ND-NAME", "ASC"}}}});
}

TEST_F(KeptServers, OddSchemasAreValidScripts) {
    for (const ServerUnderTest& server : Servers()) {
        const KeptTables kept = MakeKeptTables(OddSchema(), {}, *server.dialect);
        Session session(server.source);
        for (const auto& group : kept.script.groups) {
            for (const auto& statement : group.statements) {
                ASSERT_EQ(session.RefusalOf(statement), "") << statement.substr(0, 300);
                if (server.dialect->Name() == "mysql") {
                    EXPECT_EQ(session.Values("show warnings"), std::vector<std::string>{})
                        << statement.substr(0, 300);
                }
            }
        }
        ExpectCatalogue(kept, server);
        RemoveTables(kept, server.source);
    }
}

TEST_F(KeptServers, TablesOfOtherSchemasAreNotMeant) {
    ReadSample();
    const ServerUnderTest server = PostgresUnderTest(odbc.pg);
    Session session(server.source);
    session.Values("create schema elsewhere create table workshop (a int)");
    TableCreation creation(sql, server.source);
    EXPECT_TRUE(CreateKeptTables(creation, "EMPSCHM")) << creation.refusal;
    TableCreation again(sql, server.source);
    EXPECT_FALSE(CreateKeptTables(again, "EMPSCHM"));
    session.Values("drop schema elsewhere cascade");
    RemoveTables(SampleFor(server), server.source);
}

TEST_F(KeptServers, AllTablesOrNone) {
    ReadSample();
    for (const ServerUnderTest& server : Servers()) {
        const bool together = !server.dialect->Transaction().begin.empty();
        Session session(server.source);
        const std::string found = "select count(*) from workshop";
        TableCreation creation(sql, server.source);
        creation.options.records["OFFER"].fields["OFFER-PRICE-0220"].type = "DECIMAL(9,";
        EXPECT_FALSE(CreateKeptTables(creation, "EMPSCHM"));
        EXPECT_THAT(creation.refusal, HasSubstr("Table offer: ")) << server.source;
        EXPECT_THAT(creation.refusal,
                    HasSubstr(together ? "Nothing was created." : "Created before: table workshop"));
        EXPECT_EQ(session.RefusalOf(found).empty(), !together);
        // What is there: refused, left alone, replaced.
        TableCreation replacing(sql, server.source);
        replacing.existing = ExistingTables::Replace;
        ASSERT_TRUE(CreateKeptTables(replacing, "EMPSCHM")) << replacing.refusal;
        const auto workshop = SampleFor(server).model.tables.at(0);
        session.Values(InsertOf(*server.dialect, workshop, RowOf(SampleFor(server), workshop, 1)));
        const auto rows = [&](ExistingTables existing) {
            TableCreation again(sql, server.source);
            again.existing = existing;
            const bool created = CreateKeptTables(again, "EMPSCHM");
            return (created ? "created " : "refused ") + session.Values(found).at(0);
        };
        EXPECT_EQ(rows(ExistingTables::Fail), "refused 1");
        session.Values("drop table " + server.dialect->NameText("payment"));
        EXPECT_EQ(rows(ExistingTables::Skip), "created 1");
        EXPECT_EQ(session.Values("select count(*) from payment").at(0), "0");
        EXPECT_EQ(rows(ExistingTables::Replace), "created 0");
        RemoveTables(SampleFor(server), server.source);
    }
}

}  // namespace
}  // namespace norvelis
