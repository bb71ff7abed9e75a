#include "store/connection.h"

#include <gtest/gtest.h>

#include "base/failure.h"
#include "base/paths.h"
#include "store/inserter.h"
#include "store/tables.h"
#include "testing/test_store.h"

namespace norvelis {
namespace {

std::string FailureOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const RuntimeFailure& failure) {
        return failure.what();
    }
    return {};
}

TEST(Store, OpeningRefusesInWordsThatSayWhatIsWrongAndCreatesNothing) {
    TestApp test;
    const std::string missing = test.folder.Path("none.mdb");
    EXPECT_NE(FailureOf([&] {
                  Connection::Open(ConnectionString(missing));
              }).find("none.mdb: the file does not exist"),
              std::string::npos);
    EXPECT_FALSE(FileExists(missing));

    const std::string wrong = "Data Source=" + test.StorePath() + ";Jet OLEDB:Database password=1";
    EXPECT_NE(FailureOf([&] { Connection::Open(wrong); }).find("wrong password"), std::string::npos);

    WriteFile(test.folder.Path("text.mdb"), std::string(5000, 'x'));
    EXPECT_NE(FailureOf([&] {
                  Connection::Open(ConnectionString(test.folder.Path("text.mdb")));
              }).find("no dictionary store"),
              std::string::npos);
    WriteFile(test.folder.Path("empty.mdb"), "");
    EXPECT_NE(FailureOf([&] {
                  Connection::Open(ConnectionString(test.folder.Path("empty.mdb")));
              }).find("it lacks the table schema_details"),
              std::string::npos);
}

TEST(Store, AFileThatVanishedIsNamedWhereItCounts) {
    TestApp test;
    Connection& store = *test.app.gConnection;
    std::filesystem::rename(test.StorePath(), test.StorePath() + ".moved");
    EXPECT_NE(FailureOf([&] {
                  store.Execute("Insert into Parents (schemaname, recordname) values ('A', 'B')");
              }).find(test.StorePath() + ": the file is not there any more"),
              std::string::npos)
        << "what is written would be lost";
}

TEST(Store, TheFileIsFoundInAnyCaseAndIsEncrypted) {
    TestApp test;
    EXPECT_NO_THROW(Connection::Open(ConnectionString(test.folder.Path() + "\\DATABASE\\Records.MDB")));
    const std::string bytes = ReadFile(test.StorePath());
    EXPECT_EQ(bytes.find("schema_details"), std::string::npos);
    EXPECT_EQ(bytes.find("SQLite format"), std::string::npos);
}

TEST(Store, HasAllTablesWithTheirColumnsInTheirSpelling) {
    TestApp test;
    Connection& store = *test.app.gConnection;
    for (const auto& table : AllTables()) {
        auto columns = store.Select("PRAGMA table_info(" + std::string(table.name) + ")");
        ASSERT_EQ(columns.RecordCount(), table.columns.size()) << table.name;
        for (const auto& column : table.columns) {
            EXPECT_EQ(columns.Text("name"), column.name);
            columns.MoveNext();
        }
    }
}

TEST(Store, ABoundValueCannotChangeAStatement) {
    TestApp test;
    auto& store = *test.app.gConnection;
    Inserter(store, "Parents", {"schemaname", "Recordname"})
        .Add(std::vector<std::optional<std::string_view>>{"S", "O'NEIL"});
    EXPECT_EQ(store.Count("Select count(*) FROM Parents where recordname = ?", {"o'neil  "}), 1);
    EXPECT_EQ(store.Count("Select count(*) FROM Parents where recordname = ?", {"x' or '1'='1"}), 0);
}

}  // namespace
}  // namespace norvelis
