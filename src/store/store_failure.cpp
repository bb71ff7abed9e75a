#include "store/store_failure.h"

#include <sqlcipher/sqlite3.h>
#include <unistd.h>

#include <cerrno>

namespace norvelis {

namespace {

std::string Reason(sqlite3* engine, const std::string& path) {
    switch (sqlite3_errcode(engine) & 0xFF) {
        case SQLITE_READONLY:
            return "write-protected";
        case SQLITE_FULL:
            return "the disk is full";
        case SQLITE_CANTOPEN:
            return access(path.c_str(), R_OK) != 0 ? "may not be read" : "its folder may not be written to";
        case SQLITE_IOERR:
            return "the disk refused to read or write it";
        default:
            return sqlite3_errmsg(engine);
    }
}

}  // namespace

bool HasVanished(const std::string& path) {
    return access(path.c_str(), F_OK) != 0 && errno == ENOENT;
}

void ThrowVanished(const std::string& path) {
    throw RuntimeFailure(FailureNumber::StoreFailure, path + ": the file is not there any more");
}

UnusableStore::UnusableStore(const std::string& reason)
    : RuntimeFailure(
          FailureNumber::StoreFailure,
          reason + "; \"norvelis-cli store create\" makes an empty store and keeps a damaged one") {}

LockedStore::LockedStore(const std::string& path)
    : RuntimeFailure(FailureNumber::StoreFailure, path + ": locked by another program") {}

void ThrowStoreFailure(sqlite3* engine, const std::string& path) {
    if (engine == nullptr) throw RuntimeFailure(FailureNumber::StoreFailure, path + ": out of memory");
    switch (sqlite3_errcode(engine) & 0xFF) {
        case SQLITE_NOTADB:
            throw UnusableStore(path + ": wrong password, or the file is no dictionary store");
        case SQLITE_CORRUPT:
            throw UnusableStore(path + ": the file is damaged");
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            throw LockedStore(path);
        default:
            throw RuntimeFailure(FailureNumber::StoreFailure, path + ": " + Reason(engine, path));
    }
}

}  // namespace norvelis
