#pragma once

#include <functional>
#include <memory>

#include "sqlconv/sql_connection.h"

namespace norvelis {

/// Connects to servers that may never answer. A connect cannot be canceled, and some drivers ignore the login
/// timeout, so each runs in a thread of its own, which the caller may leave alone: what it opens in the end
/// is closed again, and neither a destructor nor the program's exit waits for it.
class Connector {
  public:
    /// Waits for the connect and asks `goOn` about every 20 ms. Null when goOn said no: the connect is then
    /// abandoned. SqlFailure when the server refuses, or when an abandoned connect has not ended yet.
    std::unique_ptr<SqlConnection> Connect(const ConnectRequest& request, const std::function<bool()>& goOn);

  private:
    struct Attempt;
    std::weak_ptr<Attempt> abandoned_;  ///< Alive until its thread ends.
};

}  // namespace norvelis
