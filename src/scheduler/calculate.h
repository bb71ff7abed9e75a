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

/// What Create stores of them: the dates behind the next one, and with `alsoNext` that one before them.
std::vector<std::string> DatesToBook(const FutureRuns& runs, bool alsoNext);

/// How many dates a person wants: the number that the text begins with, 1 for an empty text. RuntimeFailure 6
/// for one that does not fit into 16 bits.
int CountOfDates(std::string_view text);

/// The runs of the element after the date text T: the next one and `count` more. Nothing when T is no date.
/// The element's LastActionDateTime is left at the last date asked for. Fails as GetNextTime does.
std::optional<FutureRuns> Calculate(const XmlNode& scheduleElement, std::string_view T, int count,
                                    DateTime now);

}  // namespace norvelis
