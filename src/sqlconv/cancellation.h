#pragma once

#include <atomic>
#include <mutex>

#include "sqlconv/diagnostics.h"
#include "sqlconv/sql_connection.h"

namespace norvelis {

/// Ends a command over a SQL server from another thread: a connect is given up, a statement canceled, and
/// nothing further is begun.
class Cancellation {
  public:
    /// For any thread.
    void Cancel() {
        canceled_ = true;
        const std::lock_guard lock(mutex_);
        if (connection_ != nullptr) connection_->Cancel();
    }
    bool IsCanceled() const { return canceled_; }
    void ThrowIfCanceled() const {
        if (canceled_) throw SqlFailure(0, "The command was canceled");
    }

    /// For the next command.
    void Reset() { canceled_ = false; }
    /// The connection whose statements Cancel reaches; null before it is closed.
    void Watch(SqlConnection* connection) {
        const std::lock_guard lock(mutex_);
        connection_ = connection;
    }

  private:
    std::atomic<bool> canceled_ = false;
    std::mutex mutex_;
    SqlConnection* connection_ = nullptr;  ///< Guarded by mutex_.
};

}  // namespace norvelis
