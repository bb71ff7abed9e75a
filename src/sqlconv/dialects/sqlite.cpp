#include "base/text.h"
#include "sqlconv/dialects/dialect.h"

namespace norvelis::tables {

namespace {

constexpr std::string_view kReservedWords =
    "ADD AUTOINCREMENT COMMIT DEFERRABLE ESCAPE GLOB IF INDEX ISNULL LIMIT NOTHING NOTNULL RAISE "
    "RETURNING TRANSACTION VALUES";

class Sqlite : public Dialect {
  public:
    Sqlite() : Dialect(kReservedWords) {}
    std::string_view Name() const override { return "sqlite"; }
    std::string_view Title() const override { return "SQLite"; }
    bool Means(std::string_view server) const override {
        return LowerCase(server).find("sqlite") != std::string::npos;
    }
    Limits ServerLimits() const override {
        constexpr double kNoLimit = 1e12;
        Limits limits;
        limits.name = static_cast<std::size_t>(kNoLimit);
        limits.columns = 2000;
        limits.row = limits.primaryKey = limits.index = kNoLimit;
        limits.keyColumns = 2000;
        limits.takenPrefix = "SQLITE_";
        return limits;
    }
    std::vector<std::string> Remarks() const override {
        return {"SQLite has no decimal type: a DECIMAL value with decimals is kept as an 8-byte float.",
                "Each connection checks foreign keys only after PRAGMA foreign_keys = ON."};
    }
    bool TakesSeveral() const override { return false; }
    bool HasDatabases() const override { return false; }

    std::vector<std::string> Comments(const Table&) const override { return {}; }
    std::string Comment(const Table&, const Column&) const override { return {}; }
    std::string AddForeignKey(const Table&, const ForeignKey&) const override { return {}; }

  protected:
    std::string_view IdentityType() const override { return "INTEGER PRIMARY KEY"; }
    bool KeyInIdentity() const override { return true; }
    bool RefersForward() const override { return true; }
    std::string LineRemark(const std::string& remark) const override {
        return remark.empty() ? std::string() : " -- " + OneLine(remark);
    }
};

}  // namespace

const Dialect& SqliteDialect() {
    static const Sqlite dialect;
    return dialect;
}

}  // namespace norvelis::tables
