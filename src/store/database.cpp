#include "store/database.h"

#include <sqlcipher/sqlite3.h>

#include <utility>

#include "base/failure.h"
#include "base/text.h"
#include "store/store_failure.h"

namespace norvelis {

namespace {

constexpr int kBusyMilliseconds = 2000;

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
