#pragma once

#include <initializer_list>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "store/recordset.h"

struct sqlite3;
struct sqlite3_stmt;

namespace norvelis {

/// One open dictionary store: an encrypted file that stays one file and may be copied. Not for use by two
/// threads.
///
/// Statements keep their classic shape ("Delete * FROM Parents", "Select distinct(schemaname) FROM Parents",
/// the bare column `set`, #date# literals); a `?` stands for each value, which is bound and so can neither
/// break a statement nor change its meaning. Names of tables and columns ignore letter case, and so do
/// comparisons of text, which also ignore trailing blanks. Rows come in order of insertion unless the
/// statement orders them.
///
/// Every function throws RuntimeFailure (StoreFailure) with the file and the reason when the store refuses.
class Connection : public std::enable_shared_from_this<Connection> {
  public:
    /// Opens by the familiar string "Provider=…;Data Source=<path>;Jet OLEDB:Database password=<password>". A
    /// store that is missing, has another password, or is no store is a failure; opening never creates a
    /// file.
    static std::shared_ptr<Connection> Open(std::string_view connectionString);

    /// Makes an empty store with all tables at `path`, over whatever stands there.
    static void CreateStore(const std::string& path);

    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Closing twice is no error. Recordsets of a closed connection fail when used.
    void Close();
    bool IsOpen() const { return database_ != nullptr; }
    const std::string& Path() const { return path_; }

    /// Memory for pages of the file. Readers who look rows up again and again want the usual size; who writes
    /// each row once is served as well by little.
    void SetPageCache(int kilobytes);
    static constexpr int kBrowsingCache = 16000, kWritingCache = 500;

    /// Runs a statement that gives no rows.
    void Execute(std::string_view statement, std::initializer_list<std::string_view> values = {});

    /// Runs "Select …" and fixes its rows; see Recordset.
    Recordset Select(std::string_view statement, std::initializer_list<std::string_view> values = {});

    /// The number that "Select count(*) …" gives.
    long Count(std::string_view statement, std::initializer_list<std::string_view> values = {});

    /// Column names of a table as the store spells them, in their order; empty for a table that is not there.
    const std::vector<std::string>& ColumnsOf(std::string_view table);

  private:
    friend class Recordset;
    friend class Transaction;
    friend class Inserter;
    struct Statements;

    Connection(sqlite3* database, std::string path);

    sqlite3* database_;
    std::string path_;
    std::unique_ptr<Statements> statements_;
    int transactions_ = 0;
};

/// The connection string of a store file, as Open reads it.
std::string ConnectionString(std::string_view path);

/// All writes until the scope's end become lasting at once. The writes done so far are
/// committed when the scope is left, by a failure too: what a command wrote before it failed stays. Only a
/// killed process goes back to the state before. Nested scopes belong to the outermost.
class Transaction {
  public:
    explicit Transaction(Connection& connection);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    /// Commits now and reports a failure, which the destructor could not.
    void Commit();
    /// Goes back to the state before: for a store that refuses (disk full), where half of the work is no use.
    void Rollback();

  private:
    Connection* connection_;
};

/// Adds many rows to one table with one prepared statement: the fast road for bulk writers. Not to be used
/// after its connection is closed.
class Inserter {
  public:
    Inserter(Connection& connection, std::string_view table, std::initializer_list<std::string_view> columns);

    /// One value for each column, in their order; nothing is null.
    void Add(std::span<const std::optional<std::string_view>> values);

  private:
    Connection* connection_;
    sqlite3_stmt* statement_;
};

}  // namespace norvelis
