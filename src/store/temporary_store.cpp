#include "store/temporary_store.h"

namespace norvelis {

TemporaryStore::TemporaryStore() {
    const std::string path = folder_.Path() + "/records.mdb";
    Connection::CreateStore(path);
    connection_ = Connection::OpenFile(path);
}

TemporaryStore::~TemporaryStore() {
    connection_->Close();
}

}  // namespace norvelis
