#include <cstdint>
#include <string>

#include "base/failure.h"
#include "extract/driver.h"
#include "extract/repair/repair.h"
#include "extract/report.h"
#include "testing/test_store.h"

/// Any bytes as a file that might be a report: repaired, read, and its losses told.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static norvelis::TestApp test;
    using namespace norvelis;
    repair::RepairedReport repaired =
        repair::RepairReport(std::string(reinterpret_cast<const char*>(data), size));
    if (!IsSchemaReport(repaired.bytes)) return 0;
    try {
        FindingsIn(test.app,
                   {"report", ReportCheck::Valid, std::move(repaired.bytes), std::move(repaired.lines), {}},
                   {});
    } catch (const RuntimeFailure&) {
        // Reports that the extraction ends with words.
    }
    return 0;
}
