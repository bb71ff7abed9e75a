#include "base/text.h"
#include "sqlconv/dialects/dialect.h"

namespace norvelis::tables {

namespace {

constexpr std::string_view kReservedWords =
    "ANALYSE ANALYZE ARRAY ASYMMETRIC AUTHORIZATION BINARY BOTH COLLATION CONCURRENTLY "
    "CURRENT_CATALOG CURRENT_ROLE CURRENT_SCHEMA DEFERRABLE DO FALSE FREEZE ILIKE INITIALLY ISNULL "
    "LATERAL LEADING LIMIT LOCALTIME LOCALTIMESTAMP NOTNULL OFFSET ONLY OVERLAPS PLACING RETURNING "
    "SESSION_USER SIMILAR SYMMETRIC SYSTEM_USER TABLESAMPLE TRAILING TRUE VARIADIC VERBOSE WINDOW";

class Postgresql : public Dialect {
  public:
    Postgresql() : Dialect(kReservedWords) {}
    std::string_view Name() const override { return "postgresql"; }
    std::string_view Title() const override { return "PostgreSQL"; }
    bool Means(std::string_view server) const override {
        return LowerCase(server).find("postgres") != std::string::npos;
    }
    // Each table has system columns, and the server's own tables are found before others.
    Limits ServerLimits() const override {
        Limits limits;
        limits.takenColumns = "TABLEOID XMIN CMIN XMAX CMAX CTID";
        limits.takenPrefix = "PG_";
        return limits;
    }
    std::string TypeText(const ColumnType& type) const override {
        constexpr long kLongestText = 10'485'760, kMostDigits = 1000;
        const bool text = type.kind == ColumnType::Kind::Text || type.kind == ColumnType::Kind::FixedText;
        if (type.kind == ColumnType::Kind::Decimal && type.length > kMostDigits) return "NUMERIC";
        return text && type.length > kLongestText ? "TEXT" : Dialect::TypeText(type);
    }
    std::string Folded(const std::string& name) const override { return LowerCase(name); }
    std::string_view CurrentSchema() const override { return "SELECT current_schema()"; }
    // Each holds a lock, of which there are 64 for each of 100 connections.
    std::size_t MostInTransaction() const override { return 5000; }
};

}  // namespace

const Dialect& PostgresqlDialect() {
    static const Postgresql dialect;
    return dialect;
}

}  // namespace norvelis::tables
