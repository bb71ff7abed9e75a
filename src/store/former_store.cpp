#include "store/former_store.h"

#include <filesystem>

#include "base/failure.h"
#include "base/paths.h"

namespace norvelis {

namespace {

void Rename(const std::string& from, const std::string& to) {
    std::error_code error;
    std::filesystem::rename(from, to, error);
    if (error) throw RuntimeFailure(FailureNumber::PathFileAccess, to + ": " + error.message());
}

}  // namespace

std::string FormerStorePath(const std::string& store) {
    return store + ".former";
}

FormerStore::FormerStore(const std::string& store) : store_(store), copy_(store + ".copy") {
    std::error_code error;
    std::filesystem::copy_file(store_, copy_, std::filesystem::copy_options::overwrite_existing, error);
    if (!error) return;
    DeleteFile(copy_);
    throw RuntimeFailure(FailureNumber::PathFileAccess,
                         copy_ + ", the copy of the former dictionary: " + error.message());
}

FormerStore::~FormerStore() {
    if (!copy_.empty()) DeleteFile(copy_);
}

void FormerStore::Keep() {
    Rename(copy_, FormerStorePath(store_));
    copy_.clear();
}

void RestoreFormerStore(const std::string& store) {
    const std::string former = FormerStorePath(store);
    if (!FileExists(former))
        throw RuntimeFailure(FailureNumber::FileNotFound, former + ": no former dictionary was kept");
    const std::string present = store + ".present";
    const bool hasPresent = FileExists(store);
    if (hasPresent) Rename(store, present);
    Rename(former, store);
    if (hasPresent) Rename(present, former);
}

std::string KeepDamagedStore(const std::string& store) {
    std::string kept = store + ".damaged";
    for (int number = 2; FileExists(kept); ++number) kept = store + ".damaged" + std::to_string(number);
    Rename(store, kept);
    return kept;
}

}  // namespace norvelis
