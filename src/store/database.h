#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "store/statement_text.h"

struct sqlite3;
struct sqlite3_stmt;

// The engine's side of a connection. Seen by the store's own files only.
namespace norvelis {

/// One open file of the engine, with the statements that were prepared for it, kept by their text. Connection
/// and its recordsets share it; once closed it stays closed, and every use of it is a RuntimeFailure.
class Database {
  public:
    /// Opens the file. With `mayCreate` a missing one is made.
    Database(std::string path, const std::string& password, bool mayCreate);
    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    void Close();
    bool IsOpen() const { return engine_ != nullptr; }
    const std::string& Path() const { return path_; }

    /// Runs statements of the engine that give no rows, without keeping them.
    void RunScript(const std::string& script);

    /// Copies the file as it is, encrypted; see Connection::CopyTo.
    void CopyTo(const std::string& path);

    /// The statement, owned by the database, prepared at its first use.
    sqlite3_stmt* Prepare(const std::string& sql);
    /// A classic statement in the engine's words, worked out at its first use.
    const StatementText& TextOf(std::string_view classic);

    int Changes() const;  ///< How many rows were written since the file was opened; 0 when closed.
    long long LastRowId() const;

  private:
    struct StatementFinalizer {
        void operator()(sqlite3_stmt* statement) const;
    };

    void KeepFileForm();

    sqlite3* engine_ = nullptr;
    std::string path_;
    std::unordered_map<std::string, std::unique_ptr<sqlite3_stmt, StatementFinalizer>> prepared_;
    std::unordered_map<std::string, StatementText> translated_;
};

}  // namespace norvelis
