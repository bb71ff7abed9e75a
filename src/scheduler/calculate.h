#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/dates.h"
#include "scheduler/xml.h"

namespace norvelis {

/// The future of a definition, as general date text.
struct FutureRuns {
    std::string txtNextSchedule;         ///< The next date. It is shown and not booked.
    std::vector<std::string> lstFuture;  ///< The dates behind it; each becomes a job.
};

/// The runs of the element after the date text T: the next one and `count` more. Nothing when T is no date.
/// The element's LastActionDateTime is left at the last date asked for. Fails as GetNextTime does.
std::optional<FutureRuns> Calculate(const XmlNode& scheduleElement, std::string_view T, int count,
                                    DateTime now);

}  // namespace norvelis
