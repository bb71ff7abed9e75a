#pragma once

#include <string>

struct sqlite3;

namespace norvelis {

/// The one text for a refusal of the engine: throws RuntimeFailure (StoreFailure) with the file and the
/// reason.
[[noreturn]] void ThrowStoreFailure(sqlite3* engine, const std::string& path);

}  // namespace norvelis
