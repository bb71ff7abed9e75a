#include "base/text.h"
#include "sqlconv/dialects/dialect.h"

namespace norvelis::tables {

namespace {

constexpr std::string_view kReservedWords =
    "ADD AUTHORIZATION BACKUP BEGIN BREAK BROWSE BULK CASCADE CHECKPOINT CLOSE CLUSTERED COALESCE "
    "COMMIT COMPUTE CONTAINS CONTAINSTABLE CONTINUE CONVERT CURRENT CURSOR DATABASE DBCC DEALLOCATE "
    "DECLARE DENY DISK DISTRIBUTED DOUBLE DUMP ERRLVL ESCAPE EXEC EXECUTE EXIT EXTERNAL FILE "
    "FILLFACTOR FREETEXT FREETEXTTABLE FUNCTION GOTO HOLDLOCK IDENTITY IDENTITYCOL IDENTITY_INSERT "
    "IF INDEX KEY KILL LINENO LOAD MERGE NATIONAL NOCHECK NONCLUSTERED NULLIF OF OFF OFFSETS OPEN "
    "OPENDATASOURCE OPENQUERY OPENROWSET OPENXML OPTION OVER PERCENT PIVOT PLAN PRECISION PRINT PROC "
    "PROCEDURE PUBLIC RAISERROR READ READTEXT RECONFIGURE REPLICATION RESTORE RESTRICT RETURN REVERT "
    "REVOKE ROLLBACK ROWCOUNT ROWGUIDCOL RULE SAVE SCHEMA SECURITYAUDIT SEMANTICKEYPHRASETABLE "
    "SEMANTICSIMILARITYDETAILSTABLE SEMANTICSIMILARITYTABLE SESSION_USER SETUSER SHUTDOWN STATISTICS "
    "SYSTEM_USER TABLESAMPLE TEXTSIZE TOP TRAN TRANSACTION TRIGGER TRUNCATE TRY_CONVERT TSEQUAL "
    "UNPIVOT UPDATETEXT USE VALUES VARYING VIEW WAITFOR WHILE WITHIN WRITETEXT";

std::string National(std::string_view text) {
    return "N" + Literal(text);
}

class Sqlserver : public Dialect {
  public:
    Sqlserver() : Dialect(kReservedWords) {}
    std::string_view Name() const override { return "sqlserver"; }
    std::string_view Title() const override { return "SQL Server"; }
    bool Means(std::string_view server) const override {
        return LowerCase(server).find("sql server") != std::string::npos;
    }

    // Longer texts leave the page for 24 bytes. The primary key is clustered, and so may be 900 bytes.
    Limits ServerLimits() const override {
        Limits limits;
        limits.name = 128;
        limits.nameInBytes = false;
        limits.columns = 1024;
        limits.bytesPerCharacter = 1;
        limits.bytesPerWideCharacter = 2;
        limits.primaryKey = 900;
        limits.index = 1700;
        return limits;
    }

    std::string TypeText(const ColumnType& type) const override {
        constexpr long kLongestText = 8000, kMostDigits = 38;
        if (type.kind == ColumnType::Kind::Decimal && type.length > kMostDigits)
            return TypeText({ColumnType::Kind::Text, type.length + 2});
        if (type.kind == ColumnType::Kind::DoubleFloat) return "FLOAT(53)";
        const bool text = type.kind == ColumnType::Kind::Text || type.kind == ColumnType::Kind::FixedText;
        const long longest = type.wide ? kLongestText / 2 : kLongestText;
        return (text && type.wide ? "N" : "") +
               (text && type.length > longest ? "VARCHAR(MAX)" : Dialect::TypeText(type));
    }

    TransactionWords Transaction() const override {
        return {"BEGIN TRANSACTION", "COMMIT TRANSACTION", "ROLLBACK TRANSACTION"};
    }
    std::string_view CurrentSchema() const override { return "SELECT SCHEMA_NAME()"; }
    // An index with a condition needs the first line. A failure undoes all; the batches behind it are then
    // read but not executed.
    ScriptWords Script() const override {
        return {"SET QUOTED_IDENTIFIER ON;\nSET XACT_ABORT ON;\nGO\n",
                "IF @@TRANCOUNT = 0 SET NOEXEC ON;\nGO\n", "GO\n", "SET NOEXEC OFF;\nGO\n"};
    }

    std::vector<std::string> Comments(const Table& table) const override {
        std::vector<std::string> comments = {Property(table.comment, table.name)};
        for (const Column& column : table.columns) comments.push_back(Comment(table, column));
        return comments;
    }
    std::string Comment(const Table& table, const Column& column) const override {
        return Property(column.comment, table.name) + ", N'COLUMN', " + National(column.name);
    }

    // For a unique index two nulls are equal: rows outside the set must not be in it.
    std::string CreateIndex(const Table& table, const Index& index) const override {
        std::string text = Dialect::CreateIndex(table, index), condition;
        if (!index.unique) return text;
        for (const auto& column : index.optional)
            condition += (condition.empty() ? " WHERE " : " AND ") + NameText(column) + " IS NOT NULL";
        return text + condition;
    }
    std::string AddColumn(const Table& table, const Column& column) const override {
        return "ALTER TABLE " + NameText(table.name) + " ADD " + ColumnText(column);
    }

  protected:
    std::string Quoted(const std::string& name) const override { return Enclosed(name, '[', ']'); }
    std::string_view IdentityType() const override { return "BIGINT IDENTITY(1,1)"; }
    bool Defers() const override { return false; }

  private:
    static std::string Property(std::string_view words, std::string_view table) {
        return "EXEC sp_addextendedproperty N'MS_Description', " + National(words) +
               ", N'SCHEMA', N'dbo', N'TABLE', " + National(table);
    }
};

}  // namespace

const Dialect& SqlserverDialect() {
    static const Sqlserver dialect;
    return dialect;
}

}  // namespace norvelis::tables
