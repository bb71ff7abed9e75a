#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "testing/extraction_pair.h"

/// Any bytes as a schema report: read, extracted into a store, and compared with the literal procedure.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static norvelis::ExtractionPair pair;
    pair.Clear();
    const std::string difference = pair.Extract(std::string(reinterpret_cast<const char*>(data), size));
    if (!difference.empty()) {
        std::fprintf(stderr, "%s\n", difference.c_str());
        std::abort();
    }
    return 0;
}
