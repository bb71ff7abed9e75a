#pragma once

#include <string>

struct sqlite3;

namespace norvelis {

/// The one text for a refusal of the engine: throws RuntimeFailure (StoreFailure) with the file and the
/// reason.
[[noreturn]] void ThrowStoreFailure(sqlite3* engine, const std::string& path);

/// The file of an open store was removed or renamed. Reading goes on without it; what is written would be
/// lost, which the engine refuses in words that name another cause.
bool HasVanished(const std::string& path);
[[noreturn]] void ThrowVanished(const std::string& path);

}  // namespace norvelis
