#pragma once

#include <cstdio>
#include <nlohmann/json.hpp>

namespace norvelis::cli {

/// A whole answer, indented for people; bytes that are no UTF-8 are replaced.
inline void PrintJson(const nlohmann::ordered_json& json) {
    std::printf("%s\n", json.dump(2, ' ', false, nlohmann::json::error_handler_t::replace).c_str());
}

}  // namespace norvelis::cli
