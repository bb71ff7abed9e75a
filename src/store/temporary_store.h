#pragma once

#include <memory>

#include "base/work_folder.h"
#include "store/connection.h"

namespace norvelis {

/// An empty store with all tables in a folder of its own among the system's temporary files; both go when it
/// is destroyed. RuntimeFailure where that place cannot be written.
class TemporaryStore {
  public:
    TemporaryStore();
    ~TemporaryStore();
    TemporaryStore(const TemporaryStore&) = delete;
    TemporaryStore& operator=(const TemporaryStore&) = delete;

    Connection& operator*() const { return *connection_; }

  private:
    WorkFolder folder_;
    std::shared_ptr<Connection> connection_;
};

}  // namespace norvelis
