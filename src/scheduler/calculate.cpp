#include "scheduler/calculate.h"

#include "scheduler/schedule_xml.h"

namespace norvelis {

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
