#include "store/store_failure.h"

#include <sqlcipher/sqlite3.h>
#include <unistd.h>

#include <cerrno>

#include "base/failure.h"

namespace norvelis {

namespace {

std::string Reason(sqlite3* engine, const std::string& path) {
    switch (sqlite3_errcode(engine) & 0xFF) {
        case SQLITE_NOTADB:
            return "wrong password, or the file is no dictionary store";
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return "locked by another program";
        case SQLITE_READONLY:
            return "write-protected";
        case SQLITE_FULL:
            return "the disk is full";
        case SQLITE_CANTOPEN:
            return access(path.c_str(), R_OK) != 0 ? "may not be read" : "its folder may not be written to";
        case SQLITE_IOERR:
            return "the disk refused to read or write it";
        case SQLITE_CORRUPT:
            return "the file is damaged";
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

void ThrowStoreFailure(sqlite3* engine, const std::string& path) {
    throw RuntimeFailure(FailureNumber::StoreFailure,
                         path + ": " + (engine != nullptr ? Reason(engine, path) : "out of memory"));
}

}  // namespace norvelis
