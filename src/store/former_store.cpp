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

void Copy(const std::string& from, const std::string& to) {
    std::error_code error;
    std::filesystem::copy_file(from, to, std::filesystem::copy_options::overwrite_existing, error);
    if (!error) return;
    DeleteFile(to);
    throw RuntimeFailure(FailureNumber::PathFileAccess,
                         to + ", a copy of the dictionary: " + error.message());
}

// With which a change that a program left in the middle is taken back when the store is next opened.
std::string JournalOf(const std::string& store) {
    return store + "-journal";
}

}  // namespace

std::string FormerStorePath(const std::string& store) {
    return store + ".former";
}

FormerStore::FormerStore(Connection& store) : store_(store.Path()), copy_(store_ + ".copy") {
    store.CopyTo(copy_);
}

FormerStore::~FormerStore() {
    if (!copy_.empty()) DeleteFile(copy_);
}

void FormerStore::Keep() {
    Rename(copy_, FormerStorePath(store_));
    copy_.clear();
}

// The store is in its place at every moment. Ended before the last step, the one that was present is whole
// under the third name, and the next call takes that step.
void RestoreFormerStore(const std::string& store) {
    const std::string former = FormerStorePath(store), present = store + ".present";
    if (FileExists(JournalOf(store))) {
        throw RuntimeFailure(FailureNumber::PathFileAccess,
                             JournalOf(store) + ": the store is in the middle of a change");
    }
    const bool wasEnded = !FileExists(former) && FileExists(present);
    if (!wasEnded) {
        if (!FileExists(former))
            throw RuntimeFailure(FailureNumber::FileNotFound, former + ": no former dictionary was kept");
        DeleteFile(present);
        if (FileExists(store)) Copy(store, present);
        Rename(former, store);
    }
    if (FileExists(present)) Rename(present, former);
}

std::string KeepDamagedStore(const std::string& store) {
    std::string kept = store + ".damaged";
    for (int number = 2; FileExists(kept); ++number) kept = store + ".damaged" + std::to_string(number);
    Rename(store, kept);
    if (FileExists(JournalOf(store))) Rename(JournalOf(store), JournalOf(kept));
    return kept;
}

}  // namespace norvelis
