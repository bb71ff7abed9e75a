#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/failure.h"
#include "scheduler/calculate.h"
#include "scheduler/definition_controls.h"
#include "scheduler/schedule_xml.h"

using namespace norvelis;

namespace {

const DateTime kNow = ToDateTime({2026, 11, 24, 8, 30, 0});

void Require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "%s\n", what);
    std::abort();
}

/// What is saved reads back as the same record, and opening it in the editor changes nothing.
void CheckRoundTrip(const XmlNode& element) {
    ScheduleRecord record = ReadScheduleXML(element, kNow);
    const std::string saved = WriteScheduleXML(record, kNow).Text();
    const XmlNode again = LoadXML(saved);
    Require(again.Name() == "schedule", "what was written is not well-formed");
    again.SetAttribute("NextActionDateTime", GeneralDateText(record.NextActionDateTime));
    Require(WriteScheduleXML(ReadScheduleXML(again, kNow), kNow).Text() == saved ||
                record.NextActionDateTime < kNow,
            "a definition changes when it is saved twice");
    GatherDefinition(ShowDefinition(record), record);
    Require(WriteScheduleXML(record, kNow).Text() == saved, "the editor changes what nobody touched");
}

}  // namespace

/// Reads its input as XML and, when it is a schedule, works out its dates: each is a date that reads back, or
/// the calculation fails in the known words.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const XmlNode element = LoadXML(std::string_view(reinterpret_cast<const char*>(data), size));
    if (element.Name() == "error") return 0;
    Require(LoadXML(element.Text()).Name() == element.Name(), "an element does not read back");
    try {
        CheckRoundTrip(element);
        const FutureRuns runs = Calculate(element, GeneralDateText(kNow), 20, kNow).value();
        Require(ParseDateTime(runs.txtNextSchedule).has_value(), "the next date is no date");
        for (const auto& date : runs.lstFuture) Require(ParseDateTime(date).has_value(), "a run is no date");
    } catch (const RuntimeFailure& failure) {
        Require(
            failure.Number() == FailureNumber::Overflow || failure.Number() == FailureNumber::TypeMismatch,
            failure.what());
    }
    return 0;
}
