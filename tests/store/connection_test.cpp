#include "store/connection.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "base/failure.h"
#include "base/paths.h"
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

TEST(Store, TheFileIsFoundInAnyCaseAndIsEncrypted) {
    TestApp test;
    EXPECT_NO_THROW(Connection::Open(ConnectionString(test.folder.Path() + "\\DATABASE\\Records.MDB")));
    const std::string bytes = ReadFile(test.StorePath());
    EXPECT_EQ(bytes.find("schema_details"), std::string::npos);
    EXPECT_EQ(bytes.find("SQLite format"), std::string::npos);
}

TEST(Store, HasAllTablesWithTheirColumnsInTheirSpelling) {
    TestApp test;
    for (const auto& table : AllTables()) {
        const auto& columns = test.app.gConnection->ColumnsOf(table.name);
        ASSERT_EQ(columns.size(), table.columns.size()) << table.name;
        for (std::size_t i = 0; i < columns.size(); ++i) EXPECT_EQ(columns[i], table.columns[i].name);
    }
    EXPECT_TRUE(test.app.gConnection->ColumnsOf("nothing").empty());
}

TEST(Store, ABoundValueCannotChangeAStatement) {
    TestApp test;
    auto& store = *test.app.gConnection;
    Inserter(store, "Parents", {"schemaname", "Recordname"})
        .Add(std::vector<std::optional<std::string_view>>{"S", "O'NEIL"});
    EXPECT_EQ(store.Count("Select count(*) FROM Parents where recordname = ?", {"o'neil  "}), 1);
    EXPECT_EQ(store.Count("Select count(*) FROM Parents where recordname = ?", {"x' or '1'='1"}), 0);
}

TEST(Store, WhatWasWrittenBeforeAFailureStays) {
    TestApp test;
    EXPECT_THROW(
        {
            Transaction transaction(*test.app.gConnection);
            test.app.gConnection->Execute("Insert into Parents (schemaname) values (?)", {"S"});
            throw RuntimeFailure(FailureNumber::InputPastEnd);
        },
        RuntimeFailure);
    EXPECT_EQ(Connection::Open(ConnectionString(test.StorePath()))->Count("Select count(*) FROM Parents"), 1);
}

TEST(Store, AKilledProcessGoesBackToTheStateBefore) {
    TestApp test;
    test.app.gConnection->Execute("Insert into Parents (schemaname) values (?)", {"OLD"});
    test.app.gConnection->Close();
    const pid_t child = fork();
    if (child == 0) {
        auto store = Connection::Open(ConnectionString(test.StorePath()));
        Transaction transaction(*store);
        store->Execute("Delete * FROM Parents");
        // More than the page cache holds, so that pages of the unfinished work reach the file.
        Inserter rows(*store, "Parents", {"schemaname", "Recordname"});
        const std::string wide(2000, 'w');
        for (int i = 0; i < 8000; ++i) rows.Add(std::vector<std::optional<std::string_view>>{"NEW", wide});
        raise(SIGKILL);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status));
    auto store = Connection::Open(ConnectionString(test.StorePath()));
    EXPECT_EQ(store->Select("PRAGMA integrity_check").Text("integrity_check"), "ok");
    EXPECT_EQ(store->Count("Select count(*) FROM Parents"), 1);
    EXPECT_EQ(store->Select("Select * FROM Parents").Text("schemaname"), "OLD");
}

TEST(Store, ASecondWriterIsToldThatTheStoreIsLocked) {
    TestApp test;
    Transaction transaction(*test.app.gConnection);
    auto second = Connection::Open(ConnectionString(test.StorePath()));
    EXPECT_NE(FailureOf([&] { Transaction other(*second); }).find("locked by another program"),
              std::string::npos);
}

}  // namespace
}  // namespace norvelis
