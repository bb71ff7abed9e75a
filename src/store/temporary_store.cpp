#include "store/temporary_store.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "base/failure.h"
#include "base/paths.h"

namespace norvelis {

namespace {

std::string MakeFolder() {
    std::error_code error;
    std::string folder = (std::filesystem::temp_directory_path(error) / "norvelis-XXXXXX").string();
    if (error || mkdtemp(folder.data()) == nullptr)
        throw RuntimeFailure(FailureNumber::PathFileAccess,
                             folder + ": " + (error ? error.message() : std::strerror(errno)));
    return folder;
}

}  // namespace

TemporaryStore::TemporaryStore() : folder_(MakeFolder()) {
    try {
        const std::string path = folder_ + "/records.mdb";
        Connection::CreateStore(path);
        connection_ = Connection::OpenFile(path);
    } catch (...) {
        DeleteFolder(folder_);
        throw;
    }
}

TemporaryStore::~TemporaryStore() {
    connection_->Close();
    DeleteFolder(folder_);
}

}  // namespace norvelis
