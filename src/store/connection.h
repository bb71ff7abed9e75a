#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "store/recordset.h"

namespace norvelis {

class Database;  // store/database.h

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
class Connection {
  public:
    /// Opens by the familiar string "Provider=…;Data Source=<path>;Jet OLEDB:Database password=<password>". A
    /// store that is missing, has another password, or is no store is a failure; opening never creates a
    /// file.
    static std::shared_ptr<Connection> Open(std::string_view connectionString);

    /// The same for the store under this path, which may hold any character.
    static std::shared_ptr<Connection> OpenFile(std::string_view path);

    /// Makes an empty store with all tables at `path`, over whatever is there.
    static void CreateStore(const std::string& path);

    /// A store without a file that takes rows of all tables and forgets them: what writes to it can be run
    /// for what else it does.
    static std::shared_ptr<Connection> WithoutMemory();

    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Closing twice is no error. Recordsets of a closed connection fail when used; those of one that is only
    /// destroyed keep the file open until they go.
    void Close();
    bool IsOpen() const;
    const std::string& Path() const;

    /// Memory for pages of the file. Readers who look rows up again and again want the usual size; who writes
    /// each row once is served as well by little.
    void SetPageCache(int kilobytes);
    static constexpr int kBrowsingCache = 16000, kWritingCache = 500;

    /// Copies the store as it is now to a file: one picture of it, whoever else writes it meanwhile. Within a
    /// transaction only as long as that has written nothing. LockedStore while another program is in the
    /// middle of a change; after any RuntimeFailure there is no such file.
    void CopyTo(const std::string& path);

    /// Runs a statement that gives no rows.
    void Execute(std::string_view statement, std::initializer_list<std::string_view> values = {});

    /// Runs "Select …" and fixes its rows; see Recordset.
    Recordset Select(std::string_view statement, std::initializer_list<std::string_view> values = {});

    /// The number that "Select count(*) …" gives.
    long Count(std::string_view statement, std::initializer_list<std::string_view> values = {});

  private:
    static std::shared_ptr<Connection> Open(const std::string& path, const std::string& password);

    friend class Inserter;
    friend class RowReader;

    explicit Connection(std::shared_ptr<Database> database);

    std::shared_ptr<Database> database_;
};

/// The connection string of a store file, as Open reads it.
std::string ConnectionString(std::string_view path);

}  // namespace norvelis
