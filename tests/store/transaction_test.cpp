#include "store/transaction.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "base/failure.h"
#include "base/paths.h"
#include "store/inserter.h"
#include "store/store_failure.h"
#include "testing/test_store.h"

namespace norvelis {
namespace {

class TransactionTest : public ::testing::Test {
  protected:
    TestApp test;
    Connection& store = *test.app.gConnection;

    void AddRow() { store.Execute("Insert into Parents (schemaname) values (?)", {"S"}); }
    /// Whether another process finds the lock of one who writes.
    bool OthersSeeItLocked() const {
        const pid_t child = fork();
        if (child == 0) {
            struct flock lock {};
            lock.l_type = F_WRLCK;
            lock.l_start = 0x40000001;  // The byte that the engine locks before it writes.
            lock.l_len = 1;
            const int file = open(test.StorePath().c_str(), O_RDWR);
            _exit(fcntl(file, F_GETLK, &lock) == 0 && lock.l_type != F_UNLCK ? 0 : 1);
        }
        int status = 0;
        waitpid(child, &status, 0);
        return WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }
    /// As another program sees the file.
    long StoredRows() const {
        return Connection::Open(ConnectionString(test.StorePath()))->Count("Select count(*) FROM Parents");
    }
};

TEST_F(TransactionTest, OnlyACommitMakesWritesLasting) {
    {
        const Transaction transaction(store);
        AddRow();
    }
    EXPECT_EQ(store.Count("Select count(*) FROM Parents"), 0) << "a return rolls back";
    EXPECT_THROW(
        {
            const Transaction transaction(store);
            AddRow();
            throw RuntimeFailure(FailureNumber::InputPastEnd);
        },
        RuntimeFailure);
    EXPECT_EQ(StoredRows(), 0) << "a failure rolls back";
    {
        Transaction transaction(store);
        AddRow();
        EXPECT_EQ(StoredRows(), 0);
        transaction.Commit();
        EXPECT_EQ(StoredRows(), 1);
    }
    EXPECT_EQ(StoredRows(), 1);
}

TEST_F(TransactionTest, AFailedCommitRollsBackAndLeavesTheStoreUnlocked) {
    store.Execute("PRAGMA foreign_keys = ON");
    store.Execute("CREATE TABLE owners (name TEXT PRIMARY KEY)");
    store.Execute("CREATE TABLE members (owner TEXT REFERENCES owners (name) DEFERRABLE INITIALLY DEFERRED)");
    EXPECT_THROW(
        {
            Transaction transaction(store);
            AddRow();
            store.Execute("Insert into members (owner) values (?)", {"nobody"});
            transaction.Commit();
        },
        RuntimeFailure);
    EXPECT_EQ(store.Count("Select count(*) FROM Parents"), 0);
    const auto second = Connection::Open(ConnectionString(test.StorePath()));
    EXPECT_NO_THROW({ const Transaction writing(*second); });
    EXPECT_NO_THROW({ const Transaction again(store); });
}

TEST_F(TransactionTest, AScopeThatOutlivesItsConnectionEndsQuietly) {
    {
        const Transaction transaction(store);
        AddRow();
        store.Close();
    }
    EXPECT_EQ(StoredRows(), 0);
}

TEST_F(TransactionTest, AReaderSeesOnePictureWhileAnotherWrites) {
    const auto second = Connection::Open(ConnectionString(test.StorePath()));
    Transaction writing(store);
    AddRow();
    {
        const Transaction picture(*second, Transaction::Purpose::Read);
        EXPECT_EQ(second->Count("Select count(*) FROM Parents"), 0);
    }
    writing.Commit();
    EXPECT_EQ(second->Count("Select count(*) FROM Parents"), 1);
}

TEST_F(TransactionTest, AKilledProcessGoesBackToTheStateBefore) {
    store.Execute("Insert into Parents (schemaname) values (?)", {"OLD"});
    store.Close();
    const pid_t child = fork();
    if (child == 0) {
        auto own = Connection::Open(ConnectionString(test.StorePath()));
        const Transaction transaction(*own);
        own->Execute("Delete * FROM Parents");
        // More than the page cache holds, so that pages of the unfinished work reach the file.
        Inserter rows(*own, "Parents", {"schemaname", "Recordname"});
        const std::string wide(2000, 'w');
        for (int i = 0; i < 8000; ++i) rows.Add(std::vector<std::optional<std::string_view>>{"NEW", wide});
        raise(SIGKILL);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status));
    auto again = Connection::Open(ConnectionString(test.StorePath()));
    EXPECT_EQ(again->Select("PRAGMA integrity_check").Text("integrity_check"), "ok");
    EXPECT_EQ(again->Count("Select count(*) FROM Parents"), 1);
    EXPECT_EQ(again->Select("Select * FROM Parents").Text("schemaname"), "OLD");
}

TEST_F(TransactionTest, ASecondWriterIsRefusedWhileAnotherWrites) {
    const Transaction transaction(store);
    const auto second = Connection::Open(ConnectionString(test.StorePath()));
    try {
        const Transaction other(*second);
        FAIL();
    } catch (const RuntimeFailure& failure) {
        EXPECT_NE(std::string(failure.what()).find("locked by another program"), std::string::npos);
    }
}

TEST_F(TransactionTest, ACopyIsOnePictureOfTheStore) {
    AddRow();
    const std::string path = test.folder.Path("copy.mdb");
    const auto other = Connection::Open(ConnectionString(test.StorePath()));
    {
        const Transaction transaction(*other);
        other->Execute("Delete * FROM Parents");
        store.CopyTo(path);
    }
    EXPECT_EQ(Connection::OpenFile(path)->Count("Select count(*) FROM Parents"), 1);

    other->Execute("BEGIN EXCLUSIVE");
    EXPECT_THROW(store.CopyTo(path), LockedStore);
    other->Execute("ROLLBACK");
    EXPECT_THROW(store.CopyTo("/dev/full"), RuntimeFailure);
    {
        const Transaction transaction(store);
        store.CopyTo(path);
        EXPECT_TRUE(OthersSeeItLocked()) << "the copy has let no lock go";
    }
    const auto copy = Connection::OpenFile(path);
    EXPECT_EQ(copy->Select("PRAGMA integrity_check").Text("integrity_check"), "ok");
}

}  // namespace
}  // namespace norvelis
