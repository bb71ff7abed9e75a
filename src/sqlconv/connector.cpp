#include "sqlconv/connector.h"

#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>

#include "sqlconv/diagnostics.h"

namespace norvelis {

struct Connector::Attempt {
    std::mutex mutex;
    std::condition_variable_any changed;
    bool ended = false;
    std::unique_ptr<SqlConnection> connection;
    std::exception_ptr failure;

    void Run(const ConnectRequest& request) {
        std::unique_ptr<SqlConnection> opened;
        std::exception_ptr thrown;
        try {
            opened = std::make_unique<SqlConnection>(request);
        } catch (...) {
            thrown = std::current_exception();
        }
        const std::lock_guard lock(mutex);
        connection = std::move(opened);
        failure = thrown;
        ended = true;
        changed.notify_all();
    }
};

std::unique_ptr<SqlConnection> Connector::Connect(const ConnectRequest& request,
                                                  const std::stop_token& cancellation) {
    if (!abandoned_.expired())
        throw SqlFailure(0, "an earlier connect that was given up has not ended yet; try again later");
    auto attempt = std::make_shared<Attempt>();
    std::thread([attempt, request] { attempt->Run(request); }).detach();

    std::unique_lock lock(attempt->mutex);
    if (!attempt->changed.wait(lock, cancellation, [&] { return attempt->ended; })) abandoned_ = attempt;
    ThrowIfCanceled(cancellation);
    if (attempt->failure) std::rethrow_exception(attempt->failure);
    return std::move(attempt->connection);
}

}  // namespace norvelis
