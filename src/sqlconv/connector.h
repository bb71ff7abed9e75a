#pragma once

#include <memory>
#include <stop_token>

#include "sqlconv/sql_connection.h"

namespace norvelis {

/// Connects to servers that may never answer. A connect cannot be canceled, and some drivers ignore the login
/// timeout, so each runs in a thread of its own, which the caller may leave alone: what it opens in the end
/// is closed again, and neither a destructor nor the program's exit waits for it.
class Connector {
  public:
    /// Waits for the connect until a stop is requested, which abandons it. SqlFailure then, when the server
    /// refuses, and when an abandoned connect has not ended yet.
    std::unique_ptr<SqlConnection> Connect(const ConnectRequest& request,
                                           const std::stop_token& cancellation);

  private:
    struct Attempt;
    std::weak_ptr<Attempt> abandoned_;  ///< Alive until its thread ends.
};

}  // namespace norvelis
