#include "core/host.h"

#include <utility>

namespace norvelis {

void Host::Yield() {
    TakeTurn();
    if (cancelableAt_ == depth_ && cancellation_.stop_requested()) throw Canceled();
}

bool Host::RunCancelable(const std::function<void()>& command) {
    struct Scope {
        explicit Scope(Host& owner) : host(owner) {
            host.cancellation_ = {};
            host.afterCancel_ = "All is as it was before.";
            host.cancelableAt_ = host.depth_;
        }
        ~Scope() {
            host.cancelableAt_.reset();
            host.cancellation_ = {};
        }
        Host& host;
    } const scope(*this);
    try {
        command();
        return true;
    } catch (const Canceled&) {
        return false;
    }
}

}  // namespace norvelis
