#include "store/database.h"

#include <sqlcipher/sqlite3.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <system_error>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "base/text.h"
#include "store/store_failure.h"

namespace norvelis {

namespace {

constexpr int kBusyMilliseconds = 2000;

/// In which what was read stays as it is; within a transaction that is open already, that one.
class ReadTransaction {
  public:
    explicit ReadTransaction(sqlite3* engine) : engine_(engine), isOwn_(sqlite3_get_autocommit(engine) != 0) {
        if (isOwn_) sqlite3_exec(engine_, "BEGIN", nullptr, nullptr, nullptr);
    }
    ~ReadTransaction() {
        if (isOwn_) sqlite3_exec(engine_, "COMMIT", nullptr, nullptr, nullptr);
    }
    ReadTransaction(const ReadTransaction&) = delete;
    ReadTransaction& operator=(const ReadTransaction&) = delete;

  private:
    sqlite3* engine_;
    bool isOwn_;
};

}  // namespace

Database::Database(std::string path, const std::string& password, bool mayCreate) : path_(std::move(path)) {
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | (mayCreate ? SQLITE_OPEN_CREATE : 0);
    sqlite3* opened = nullptr;
    const int result = sqlite3_open_v2(path_.c_str(), &opened, flags, nullptr);
    // The engine gives a handle for a failed opening too, which has the reason.
    std::unique_ptr<sqlite3, decltype(&sqlite3_close_v2)> owner(opened, sqlite3_close_v2);
    if (result != SQLITE_OK) ThrowStoreFailure(opened, path_);
    sqlite3_busy_timeout(opened, kBusyMilliseconds);
    sqlite3_key(opened, password.data(), static_cast<int>(password.size()));
    engine_ = owner.release();
    KeepFileForm();
}

Database::~Database() {
    Close();
}

void Database::Close() {
    prepared_.clear();
    sqlite3_close_v2(std::exchange(engine_, nullptr));
}

// Newer libraries write another file form unless asked not to; stores must move between machines.
void Database::KeepFileForm() {
    std::string version;
    sqlite3_exec(
        engine_, "PRAGMA cipher_version",
        [](void* out, int, char** values, char**) {
            if (values[0] != nullptr) *static_cast<std::string*>(out) = values[0];
            return 0;
        },
        &version, nullptr);
    if (Val(version) >= 4)
        sqlite3_exec(engine_, "PRAGMA cipher_compatibility = 3", nullptr, nullptr, nullptr);
}

void Database::RunScript(const std::string& script) {
    if (sqlite3_exec(engine_, script.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
        ThrowStoreFailure(engine_, path_);
}

// By the engine's own file: a program that opens and closes the file once more loses its locks on it.
void Database::CopyTo(const std::string& path) {
    constexpr sqlite3_int64 kChunk = 1 << 20;
    if (!IsOpen()) throw RuntimeFailure(FailureNumber::StoreFailure, path_ + ": the store is closed");
    const ReadTransaction lock(engine_);
    RunScript("SELECT count(*) FROM sqlite_master");  // From the first read on nobody writes the file.
    sqlite3_file* file = nullptr;
    sqlite3_file_control(engine_, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    sqlite3_int64 size = 0;
    if (file == nullptr || file->pMethods->xFileSize(file, &size) != SQLITE_OK)
        throw RuntimeFailure(FailureNumber::StoreFailure, path_ + ": the disk refused to read it");
    std::vector<char> bytes(static_cast<std::size_t>(std::min(size, kChunk)));
    std::ofstream copy(path, std::ios::binary | std::ios::trunc);
    for (sqlite3_int64 begin = 0; begin < size && copy; begin += kChunk) {
        const int count = static_cast<int>(std::min(size - begin, kChunk));
        if (file->pMethods->xRead(file, bytes.data(), count, begin) != SQLITE_OK)
            throw RuntimeFailure(FailureNumber::StoreFailure, path_ + ": the disk refused to read it");
        copy.write(bytes.data(), count);
    }
    copy.close();
    if (!copy)
        throw RuntimeFailure(FailureNumber::PathFileAccess,
                             path + ", a copy of the dictionary: " + std::generic_category().message(errno));
}

sqlite3_stmt* Database::Prepare(const std::string& sql) {
    if (!IsOpen()) throw RuntimeFailure(FailureNumber::StoreFailure, path_ + ": the store is closed");
    auto& slot = prepared_[sql];
    if (!slot) {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(engine_, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK)
            ThrowStoreFailure(engine_, path_);
        slot.reset(statement);
    }
    return slot.get();
}

const StatementText& Database::TextOf(std::string_view classic) {
    const auto [entry, isNew] = translated_.try_emplace(std::string(classic));
    if (isNew) entry->second = Translate(classic);
    return entry->second;
}

int Database::Changes() const {
    return IsOpen() ? sqlite3_total_changes(engine_) : 0;
}

long long Database::LastRowId() const {
    return sqlite3_last_insert_rowid(engine_);
}

void Database::StatementFinalizer::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

}  // namespace norvelis
