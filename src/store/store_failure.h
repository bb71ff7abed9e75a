#pragma once

#include <string>

#include "base/failure.h"

struct sqlite3;

namespace norvelis {

/// A store that is missing or damaged: only another one in its place helps, and the text says how.
class UnusableStore : public RuntimeFailure {
  public:
    explicit UnusableStore(const std::string& reason);
};

/// Another program is in the middle of a change, and was so for as long as the store waits. It may help to
/// try again.
class LockedStore : public RuntimeFailure {
  public:
    explicit LockedStore(const std::string& path);
};

/// The one text for a refusal of the engine: throws RuntimeFailure (StoreFailure) with the file and the
/// reason.
[[noreturn]] void ThrowStoreFailure(sqlite3* engine, const std::string& path);

/// The file of an open store was removed or renamed. Reading goes on without it; what is written would be
/// lost, which the engine refuses in words that name another cause.
bool HasVanished(const std::string& path);
[[noreturn]] void ThrowVanished(const std::string& path);

}  // namespace norvelis
