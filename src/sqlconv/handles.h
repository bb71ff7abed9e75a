#pragma once

#include <memory>
#include <mutex>

namespace norvelis {

enum class OdbcVersion { Two = 2, Three = 3 };

/// Handles of the driver manager, each freed by its one owner. A statement keeps its connection alive, a
/// connection its environment. Constructors throw SqlFailure when the driver manager gives no handle.
class EnvironmentHandle {
  public:
    explicit EnvironmentHandle(OdbcVersion version);
    ~EnvironmentHandle();
    EnvironmentHandle(const EnvironmentHandle&) = delete;
    EnvironmentHandle& operator=(const EnvironmentHandle&) = delete;

    void* Get() const { return handle_; }

  private:
    void* handle_ = nullptr;
};

class ConnectionHandle {
  public:
    ConnectionHandle();
    ~ConnectionHandle();  ///< Disconnects first; a refusal is nobody's business any more.
    ConnectionHandle(const ConnectionHandle&) = delete;
    ConnectionHandle& operator=(const ConnectionHandle&) = delete;

    void* Get() const { return handle_; }

    /// The statement that Cancel reaches, until it is forgotten.
    void SetRunning(void* statement);
    void Forget(void* statement);
    /// Asks the server to leave the statement that runs. The one call that another thread may make.
    void Cancel();

  private:
    EnvironmentHandle environment_{OdbcVersion::Three};
    void* handle_ = nullptr;
    std::mutex mutex_;
    void* running_ = nullptr;  ///< Guarded by mutex_.
};

/// While it lives, the newest one of its connection is what Cancel reaches.
class StatementHandle {
  public:
    explicit StatementHandle(std::shared_ptr<ConnectionHandle> connection);
    ~StatementHandle();
    StatementHandle(const StatementHandle&) = delete;
    StatementHandle& operator=(const StatementHandle&) = delete;

    void* Get() const { return handle_; }
    /// Throws SqlFailure with the diagnostics unless `result` of a call says success.
    void Check(short result) const;

  private:
    std::shared_ptr<ConnectionHandle> connection_;
    void* handle_ = nullptr;
};

}  // namespace norvelis
