#pragma once

#include <optional>
#include <string>

#include "extract/repair/encodings.h"
#include "extract/repair/repaired_report.h"

// Brings the bytes of a report that was sent, printed or edited in another form into the one form that the
// reader takes. A report in that form is left as it is, byte for byte.
namespace norvelis::repair {

/// `encoding` as the person says, or as the report seems to have it. RuntimeFailure 5 where the machine
/// cannot convert.
RepairedReport RepairReport(std::string bytes, std::optional<Encoding> encoding = std::nullopt);

}  // namespace norvelis::repair
