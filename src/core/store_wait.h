#pragma once

#include <chrono>
#include <thread>
#include <type_traits>

#include "core/host.h"
#include "store/store_failure.h"

namespace norvelis {

/// How long work without a person waits for a store in which another program is in the middle of a change.
inline constexpr std::chrono::seconds kStorePatience{40};

/// What `work` gives, tried again while the store is locked; then LockedStore goes through. The event loop
/// has turns between two tries, so the work is to be one that can be done again from its beginning.
template <class Work>
std::invoke_result_t<Work> WaitForStore(Host& host, Work work) {
    constexpr std::chrono::milliseconds kBetweenTries{20};
    const auto end = std::chrono::steady_clock::now() + kStorePatience;
    while (true) {
        try {
            return work();
        } catch (const LockedStore&) {
            if (std::chrono::steady_clock::now() >= end) throw;
        }
        host.Yield();
        std::this_thread::sleep_for(kBetweenTries);
    }
}

}  // namespace norvelis
