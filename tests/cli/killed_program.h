#pragma once

#include <string>

#include "kill_at_write/kill_at_write.h"

namespace norvelis {

/// The words that load the library which counts writes into a program, with one of its variables set.
inline std::string Loaded(const char* variable, const std::string& value) {
    return std::string("ASAN_OPTIONS=verify_asan_link_order=0 LD_PRELOAD=" NORVELIS_KILL_AT_WRITE " ") +
           variable + "=" + value + " ";
}

}  // namespace norvelis
