#include "base/text.h"
#include "sqlconv/dialects/dialect.h"

namespace norvelis::tables {

namespace {

// Of MySQL 8 and of MariaDB.
constexpr std::string_view kReservedWords =
    "ACCESSIBLE ADD ANALYZE ASENSITIVE BEFORE BIGINT BINARY BLOB BOTH CALL CASCADE CHANGE CHAR "
    "CHARACTER CONDITION CONTINUE CONVERT CUBE CUME_DIST CURRENT_ROLE CURSOR DATABASE DATABASES "
    "DAY_HOUR DAY_MICROSECOND DAY_MINUTE DAY_SECOND DEC DECIMAL DECLARE DELAYED DELETE_DOMAIN_ID "
    "DENSE_RANK DESCRIBE DETERMINISTIC DISTINCTROW DIV DOUBLE DO_DOMAIN_IDS DUAL EACH ELSEIF EMPTY "
    "ENCLOSED ESCAPED EXIT EXPLAIN FALSE FIRST_VALUE FLOAT FLOAT4 FLOAT8 FORCE FULLTEXT FUNCTION "
    "GENERAL GENERATED GET GROUPING GROUPS HIGH_PRIORITY HOUR_MICROSECOND HOUR_MINUTE HOUR_SECOND IF "
    "IGNORE IGNORE_DOMAIN_IDS IGNORE_SERVER_IDS INDEX INFILE INOUT INSENSITIVE INT INT1 INT2 INT3 "
    "INT4 INT8 INTEGER INTERVAL IO_AFTER_GTIDS IO_BEFORE_GTIDS ITERATE JSON_TABLE KEY KEYS KILL LAG "
    "LAST_VALUE LATERAL LEAD LEADING LEAVE LIMIT LINEAR LINES LOAD LOCALTIME LOCALTIMESTAMP LOCK "
    "LONG LONGBLOB LONGTEXT LOOP LOW_PRIORITY MASTER_BIND MASTER_DEMOTE_TO_REPLICA "
    "MASTER_DEMOTE_TO_SLAVE MASTER_HEARTBEAT_PERIOD MASTER_SSL_VERIFY_SERVER_CERT MATCH MAXVALUE "
    "MEDIUMBLOB MEDIUMINT MEDIUMTEXT MIDDLEINT MINUTE_MICROSECOND MINUTE_SECOND MOD MODIFIES "
    "NO_WRITE_TO_BINLOG NTH_VALUE NTILE NUMERIC OF OFFSET OPTIMIZE OPTIMIZER_COSTS OPTION OPTIONALLY "
    "OUT OUTFILE OVER PAGE_CHECKSUM PARSE_VCOL_EXPR PARTITION PERCENT_RANK PORTION PRECISION "
    "PROCEDURE PURGE RANGE RANK READ READS READ_WRITE REAL RECURSIVE REF_SYSTEM_ID REGEXP RELEASE "
    "RENAME REPEAT REPLACE REQUIRE RESIGNAL RESTRICT RETURN RETURNING REVOKE RLIKE ROW ROWNUM ROWS "
    "ROW_NUMBER SCHEMA SCHEMAS SECOND_MICROSECOND SENSITIVE SEPARATOR SHOW SIGNAL SLOW SMALLINT "
    "SPATIAL SPECIFIC SQL SQLEXCEPTION SQLSTATE SQLWARNING SQL_BIG_RESULT SQL_BUFFER_RESULT "
    "SQL_CACHE SQL_CALC_FOUND_ROWS SQL_NO_CACHE SQL_SMALL_RESULT SSL STARTING STATS_AUTO_RECALC "
    "STATS_PERSISTENT STATS_SAMPLE_PAGES STORED STRAIGHT_JOIN SYSTEM TERMINATED TINYBLOB TINYINT "
    "TINYTEXT TRAILING TRIGGER TRUE UNDO UNLOCK UNSIGNED USAGE USE UTC_DATE UTC_TIME UTC_TIMESTAMP "
    "VALUES VARBINARY VARCHAR VARCHARACTER VARYING VIRTUAL WHILE WINDOW WRITE XOR YEAR_MONTH "
    "ZEROFILL";

// What a row can hold of a text beside its key.
constexpr long kLongestVarchar = 16'000;
// Bytes, of a column's.
constexpr std::size_t kLongestComment = 1000;

class Mysql : public Dialect {
  public:
    Mysql() : Dialect(kReservedWords) {}
    std::string_view Name() const override { return "mysql"; }
    std::string_view Title() const override { return "MariaDB and MySQL"; }
    bool Means(std::string_view server) const override {
        const std::string name = LowerCase(server);
        return name.find("maria") != std::string::npos || name.find("mysql") != std::string::npos;
    }

    // A row of InnoDB keeps in its page texts of at most 255 bytes, and the beginning of others.
    Limits ServerLimits() const override {
        Limits limits;
        limits.name = 64;
        limits.nameInBytes = false;
        limits.columns = 1017;
        limits.row = 8000;
        limits.rowBytesPerCharacter = 4;
        limits.longText = kLongestVarchar;
        limits.textInRow = 255;
        limits.textOutside = 41;
        limits.wholeRow = 65'000;
        limits.definition = 60'000;
        limits.longestComment = kLongestComment;
        limits.keyColumns = 16;
        limits.primaryKey = limits.index = 3072;
        return limits;
    }

    std::string TypeText(const ColumnType& type) const override {
        constexpr long kLongestChar = 255, kMostDigits = 65, kMostDecimals = 30;
        switch (type.kind) {
            case ColumnType::Kind::SingleFloat:
                return "FLOAT";
            case ColumnType::Kind::DoubleFloat:
                return "DOUBLE";
            case ColumnType::Kind::Decimal:
                if (type.length > kMostDigits || type.decimals > kMostDecimals) return LongText(type.length);
                break;
            case ColumnType::Kind::Text:
                if (type.length > kLongestVarchar) return LongText(type.length);
                break;
            case ColumnType::Kind::FixedText:
                if (type.length > kLongestVarchar) return LongText(type.length);
                if (type.length > kLongestChar) return "VARCHAR(" + std::to_string(type.length) + ")";
                break;
            default:
                break;
        }
        return Dialect::TypeText(type);
    }

    std::vector<std::string> Remarks() const override {
        return {"The server commits each statement by itself: what was made before a failure stays."};
    }
    TransactionWords Transaction() const override { return {}; }
    bool TakesSeveral() const override { return false; }

    std::vector<std::string> Comments(const Table&) const override { return {}; }
    std::string Comment(const Table&, const Column&) const override { return {}; }
    std::vector<std::string> DropTables(std::span<const Table> tables) const override {
        std::vector<std::string> statements = {"SET FOREIGN_KEY_CHECKS = 0"};
        for (const Table& table : tables) statements.push_back("DROP TABLE " + NameText(table.name));
        statements.push_back("SET FOREIGN_KEY_CHECKS = 1");
        return statements;
    }

  protected:
    std::string Quoted(const std::string& name) const override { return Enclosed(name, '`', '`'); }
    std::string_view IdentityType() const override { return "BIGINT AUTO_INCREMENT"; }
    bool NamesPrimaryKey() const override { return false; }
    bool Defers() const override { return false; }

    std::string ColumnTail(const Column& column) const override {
        return " COMMENT " + CommentLiteral(column.comment, kLongestComment);
    }
    // Keys are compared by their bytes, as the network database does.
    std::string TableTail(const Table& table) const override {
        constexpr std::size_t kLongestTableComment = 2000;
        return " ENGINE=InnoDB DEFAULT CHARSET=utf8mb4 COLLATE=utf8mb4_bin COMMENT=" +
               CommentLiteral(table.comment, kLongestTableComment);
    }

  private:
    static std::string LongText(long length) {
        constexpr long kText = 16'383, kMediumText = 4'194'303;
        return length <= kText ? "TEXT" : length <= kMediumText ? "MEDIUMTEXT" : "LONGTEXT";
    }
    static std::string CommentLiteral(const std::string& text, std::size_t longest) {
        std::string escaped;
        for (const char c : text.substr(0, longest)) escaped += c == '\\' ? "\\\\" : std::string(1, c);
        return Literal(escaped);
    }
};

}  // namespace

const Dialect& MysqlDialect() {
    static const Mysql dialect;
    return dialect;
}

}  // namespace norvelis::tables
