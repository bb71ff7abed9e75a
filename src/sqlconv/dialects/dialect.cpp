#include "sqlconv/dialects/dialect.h"

#include <algorithm>
#include <array>
#include <sstream>

#include "base/text.h"

namespace norvelis::tables {

namespace {

// Kept by SQL servers in general; one that does not mind takes the quoted name all the same.
constexpr std::string_view kReservedWords =
    "ALL ALTER AND ANY AS ASC BETWEEN BY CASE CAST CHECK COLLATE COLUMN CONSTRAINT CREATE CROSS "
    "CURRENT_DATE CURRENT_TIME CURRENT_TIMESTAMP CURRENT_USER DEFAULT DELETE DESC DISTINCT DROP ELSE "
    "END EXCEPT EXISTS FETCH FOR FOREIGN FROM FULL GRANT GROUP HAVING IN INNER INSERT INTERSECT INTO "
    "IS JOIN LEFT LIKE NATURAL NOT NULL ON OR ORDER OUTER PRIMARY REFERENCES RIGHT SELECT SET SOME "
    "TABLE THEN TO UNION UNIQUE UPDATE USER USING WHEN WHERE WITH";

bool IsPlain(std::string_view name) {
    const auto letter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_'; };
    return !name.empty() && letter(name.front()) &&
           std::ranges::all_of(name, [&](char c) { return letter(c) || (c >= '0' && c <= '9'); });
}

std::string Number(long number) {
    return std::to_string(number);
}

}  // namespace

std::string Enclosed(std::string_view name, char open, char close) {
    std::string text(1, open);
    for (const char c : name) {
        text += c;
        if (c == close) text += c;
    }
    return text + close;
}

std::string Literal(std::string_view text) {
    return Enclosed(text, '\'', '\'');
}

std::string OneLine(std::string_view text) {
    std::string line(text);
    for (char& c : line) {
        if (static_cast<unsigned char>(c) < ' ') c = ' ';
    }
    return line;
}

Dialect::Dialect(std::string_view reservedWords) {
    for (const auto words : {kReservedWords, reservedWords}) {
        std::istringstream stream{std::string(words)};
        for (std::string word; stream >> word;) reservedWords_.insert(word);
    }
}

std::string Dialect::Quoted(const std::string& name) const {
    return Enclosed(name, '"', '"');
}

std::string Dialect::NameText(const std::string& name) const {
    return !IsPlain(name) || reservedWords_.contains(UpperCase(name)) ? Quoted(Folded(name)) : name;
}

std::string Dialect::NamesText(std::span<const std::string> names) const {
    std::string text;
    for (const auto& name : names) text += (text.empty() ? "" : ", ") + NameText(name);
    return "(" + text + ")";
}

std::string Dialect::TypeText(const ColumnType& type) const {
    switch (type.kind) {
        case ColumnType::Kind::None:
            return {};
        case ColumnType::Kind::SmallInteger:
            return "SMALLINT";
        case ColumnType::Kind::Integer:
            return "INTEGER";
        case ColumnType::Kind::BigInteger:
            return "BIGINT";
        case ColumnType::Kind::Decimal:
            return "DECIMAL(" + Number(type.length) + "," + Number(type.decimals) + ")";
        case ColumnType::Kind::SingleFloat:
            return "REAL";
        case ColumnType::Kind::DoubleFloat:
            return "DOUBLE PRECISION";
        case ColumnType::Kind::Text:
            return "VARCHAR(" + Number(type.length) + ")";
        case ColumnType::Kind::FixedText:
            return "CHAR(" + Number(type.length) + ")";
        case ColumnType::Kind::Given:
            return type.given;
    }
    return {};
}

std::string Dialect::ColumnText(const Column& column) const {
    std::string text = NameText(column.name) + " ";
    if (column.identity) {
        text += IdentityType();
        if (KeyInIdentity()) return text;
    } else {
        text += TypeText(column.type);
    }
    if (column.required) text += " NOT NULL";
    return text;
}

std::string Dialect::ForeignKeyText(const ForeignKey& key) const {
    std::string text = "CONSTRAINT " + NameText(key.name) + " FOREIGN KEY " + NamesText(key.columns) +
                       " REFERENCES " + NameText(key.owner) + " " + NamesText(key.ownerColumns);
    if (key.cascade) text += " ON DELETE CASCADE";
    if (key.cyclic && Defers()) text += " DEFERRABLE INITIALLY DEFERRED";
    return text;
}

std::string Dialect::CreateTable(const Table& table) const {
    struct Line {
        std::string text, remark;
    };
    std::vector<Line> lines;
    bool keyWritten = false;
    for (const Column& column : table.columns) {
        lines.push_back({ColumnText(column) + ColumnTail(column), LineRemark(column.comment)});
        keyWritten = keyWritten || (column.identity && KeyInIdentity());
    }
    if (!keyWritten) {
        const std::string name = NamesPrimaryKey() ? "CONSTRAINT " + NameText(table.keyName) + " " : "";
        lines.push_back({name + "PRIMARY KEY " + NamesText(table.primaryKey), {}});
    }
    for (const Column& column : table.columns) {
        if (column.most > 0)
            lines.push_back(
                {"CHECK (" + NameText(column.name) + " BETWEEN 1 AND " + Number(column.most) + ")", {}});
        if (column.notNegative) lines.push_back({"CHECK (" + NameText(column.name) + " >= 0)", {}});
    }
    for (const ForeignKey& key : table.foreignKeys) {
        if (!key.ownerLater || RefersForward()) lines.push_back({ForeignKeyText(key), {}});
    }
    std::string text = "CREATE TABLE " + NameText(table.name) + " (" + LineRemark(table.comment) + "\n";
    for (std::size_t i = 0; i < lines.size(); ++i)
        text += "    " + lines[i].text + (i + 1 < lines.size() ? "," : "") + lines[i].remark + "\n";
    return text + ")" + TableTail(table);
}

std::string Dialect::Comment(const Table& table, const Column& column) const {
    return "COMMENT ON COLUMN " + NameText(table.name) + "." + NameText(column.name) + " IS " +
           Literal(column.comment);
}

std::vector<std::string> Dialect::Comments(const Table& table) const {
    std::vector<std::string> comments;
    comments.push_back("COMMENT ON TABLE " + NameText(table.name) + " IS " + Literal(table.comment));
    for (const Column& column : table.columns) comments.push_back(Comment(table, column));
    return comments;
}

std::string Dialect::CreateIndex(const Table& table, const Index& index) const {
    std::string keys;
    for (const auto& [column, descending] : index.keys)
        keys += (keys.empty() ? "" : ", ") + NameText(column) + (descending ? " DESC" : "");
    return std::string(index.unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ") + NameText(index.name) +
           " ON " + NameText(table.name) + " (" + keys + ")";
}

std::string Dialect::AddForeignKey(const Table& table, const ForeignKey& key) const {
    return "ALTER TABLE " + NameText(table.name) + " ADD " + ForeignKeyText(key);
}

std::string Dialect::AddColumn(const Table& table, const Column& column) const {
    return "ALTER TABLE " + NameText(table.name) + " ADD COLUMN " + ColumnText(column) + ColumnTail(column);
}

std::string Dialect::ReferenceText(const ForeignKey& key) const {
    return " CONSTRAINT " + NameText(key.name) + " REFERENCES " + NameText(key.owner) + " " +
           NamesText(key.ownerColumns);
}

std::vector<std::string> Dialect::DropTables(std::span<const Table> tables) const {
    std::vector<std::string> statements;
    for (const Table& table : tables) {
        for (const ForeignKey& key : table.foreignKeys) {
            if (key.ownerLater && !RefersForward())
                statements.push_back("ALTER TABLE " + NameText(table.name) + " DROP CONSTRAINT IF EXISTS " +
                                     NameText(key.name));
        }
    }
    for (std::size_t i = tables.size(); i-- > 0;)
        statements.push_back("DROP TABLE " + NameText(tables[i].name));
    return statements;
}

std::span<const Dialect* const> AllDialects() {
    static const std::array<const Dialect*, 4> all = {&PostgresqlDialect(), &MysqlDialect(),
                                                      &SqlserverDialect(), &SqliteDialect()};
    return all;
}

const Dialect* DialectNamed(std::string_view name) {
    for (const Dialect* dialect : AllDialects()) {
        if (EqualIgnoringCase(dialect->Name(), name)) return dialect;
    }
    return nullptr;
}

const Dialect* DialectOf(std::string_view server) {
    for (const Dialect* dialect : AllDialects()) {
        if (dialect->Means(server)) return dialect;
    }
    return nullptr;
}

}  // namespace norvelis::tables
