#include "scheduler/calculate.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "base/failure.h"
#include "base/text.h"
#include "scheduler/schedule_xml.h"

namespace norvelis {

std::vector<std::string> DatesToBook(const FutureRuns& runs, bool alsoNext) {
    std::vector<std::string> dates = runs.lstFuture;
    if (alsoNext) dates.insert(dates.begin(), runs.txtNextSchedule);
    return dates;
}

int CountOfDates(std::string_view text) {
    if (Trim(text).empty()) return 1;
    const double count = Val(text);
    if (count > std::numeric_limits<std::int16_t>::max()) throw RuntimeFailure(FailureNumber::Overflow);
    return static_cast<int>(std::max(count, 0.0));
}

std::optional<FutureRuns> Calculate(const XmlNode& scheduleElement, std::string_view T, int count,
                                    DateTime now) {
    if (!ParseDateTime(T)) return std::nullopt;
    ScheduleRecord record;
    const auto runAfter = [&](std::string_view last) {
        scheduleElement.SetAttribute("LastActionDateTime", last);
        return GeneralDateText(GetNextTime(record, scheduleElement, now));
    };
    FutureRuns runs;
    runs.txtNextSchedule = runAfter(T);
    std::string last = runs.txtNextSchedule;
    for (int i = 0; i < count; ++i) {
        last = runAfter(last);
        runs.lstFuture.push_back(last);
    }
    return runs;
}

}  // namespace norvelis
