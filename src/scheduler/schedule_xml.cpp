#include "scheduler/schedule_xml.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <variant>

#include "base/failure.h"
#include "base/text.h"
#include "scheduler/next_time.h"

namespace norvelis {

namespace {

using Field = std::variant<std::int16_t ScheduleRecord::*, std::int32_t ScheduleRecord::*>;

struct NumberAttribute {
    const char* name;
    Field field;
    const char* missing = "";
};

// In the order of writing: these, the days, the pattern, the two times, the duration.
constexpr NumberAttribute kOccurrence[] = {
    {"Occurrence", &ScheduleRecord::Occurrence},
    {"Occurs_DailyNum", &ScheduleRecord::Occurs_DailyNum, "1"},
    {"Occurs_WeeklyNum", &ScheduleRecord::Occurs_WeeklyNum},
};

constexpr const char* kDayNames[] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                     "Thursday", "Friday", "Saturday"};

constexpr NumberAttribute kPattern[] = {
    {"Occurs_MonthlyOption", &ScheduleRecord::Occurs_MonthlyOption},
    {"Occurs_Monthly_Each_Day", &ScheduleRecord::Occurs_Monthly_Each_Day},
    {"Occurs_Monthly_Each_Num", &ScheduleRecord::Occurs_Monthly_Each_Num},
    {"Occurs_Monthly_Every_Num", &ScheduleRecord::Occurs_Monthly_Every_Num},
    {"Occurs_Monthly_Every_Week", &ScheduleRecord::Occurs_Monthly_Every_Week},
    {"Occurs_Monthly_Every_WeekDay", &ScheduleRecord::Occurs_Monthly_Every_WeekDay},
    {"Freq_Option", &ScheduleRecord::Freq_Option},
    {"Freq_Once_Hr", &ScheduleRecord::Freq_Once_Hr},
    {"Freq_Once_Min", &ScheduleRecord::Freq_Once_Min},
    {"Freq_Once_AMPM", &ScheduleRecord::Freq_Once_AMPM},
    {"Freq_Every_Interval", &ScheduleRecord::Freq_Every_Interval},
    {"Freq_Every_Interval_HrMin", &ScheduleRecord::Freq_Every_Interval_HrMin},
    {"Freq_Every_StartHr", &ScheduleRecord::Freq_Every_StartHr},
    {"Freq_Every_StartMin", &ScheduleRecord::Freq_Every_StartMin},
    {"Freq_Every_Startampm", &ScheduleRecord::Freq_Every_Startampm},
    {"Freq_Every_EndHr", &ScheduleRecord::Freq_Every_EndHr},
    {"Freq_Every_EndMin", &ScheduleRecord::Freq_Every_EndMin},
    {"Freq_Every_Endampm", &ScheduleRecord::Freq_Every_Endampm},
};

constexpr NumberAttribute kDuration[] = {
    {"Duration_Start_Month", &ScheduleRecord::Duration_Start_Month},
    {"Duration_Start_Day", &ScheduleRecord::Duration_Start_Day},
    {"Duration_Start_Year", &ScheduleRecord::Duration_Start_Year},
    {"Duration_End_Option", &ScheduleRecord::Duration_End_Option},
    {"Duration_End_Month", &ScheduleRecord::Duration_End_Month},
    {"Duration_End_Day", &ScheduleRecord::Duration_End_Day},
    {"Duration_End_Year", &ScheduleRecord::Duration_End_Year},
};

double LeadingNumber(std::string_view text) {
    text = Trim(text);
    if (text.starts_with('+')) text.remove_prefix(1);
    double value = 0;
    // Val() takes a number with more digits than a double can count for none; here it is one that does not
    // fit.
    if (std::from_chars(text.data(), text.data() + text.size(), value).ec == std::errc::result_out_of_range)
        throw RuntimeFailure(FailureNumber::Overflow);
    return std::isfinite(value) ? value : 0;
}

template <class Number>
Number LeadingNumberOf(std::string_view text) {
    const double value = std::nearbyint(LeadingNumber(text));
    if (value < std::numeric_limits<Number>::min() || value > std::numeric_limits<Number>::max())
        throw RuntimeFailure(FailureNumber::Overflow);
    return static_cast<Number>(value);
}

template <class Number>
void ReadNumber(const XmlNode& element, const char* name, const char* missing, Number& number) {
    number = LeadingNumberOf<Number>(GetAttribute(element, name, missing));
}

template <class Table>
void ReadNumbers(const XmlNode& element, const Table& table, ScheduleRecord& record) {
    for (const NumberAttribute& attribute : table) {
        std::visit([&](auto field) { ReadNumber(element, attribute.name, attribute.missing, record.*field); },
                   attribute.field);
    }
}

template <class Table>
void WriteNumbers(const XmlNode& element, const Table& table, const ScheduleRecord& record) {
    for (const NumberAttribute& attribute : table) {
        std::visit([&](auto field) { element.SetAttribute(attribute.name, std::to_string(record.*field)); },
                   attribute.field);
    }
}

DateTime ReadMoment(const XmlNode& element, const char* name, DateTime now) {
    const std::string text = GetAttribute(element, name, GeneralDateText(now));
    const auto moment = ParseDateTime(text);
    if (!moment) throw RuntimeFailure(FailureNumber::TypeMismatch);
    return *moment;
}

void BuildDates(ScheduleRecord& record) {
    record.Freq_Every_StartTime =
        TimeOf(ClockHour(record.Freq_Every_StartHr, record.Freq_Every_Startampm), record.Freq_Every_StartMin);
    if (record.Freq_Option != 0) {
        record.Freq_BuildStartTime = record.Freq_Every_StartTime;
    } else {
        record.Freq_Once_Time =
            TimeOf(ClockHour(record.Freq_Once_Hr, record.Freq_Once_AMPM), record.Freq_Once_Min);
        record.Freq_BuildStartTime = record.Freq_Once_Time;
    }
    record.Freq_Every_EndTime =
        TimeOf(ClockHour(record.Freq_Every_EndHr, record.Freq_Every_Endampm), record.Freq_Every_EndMin);
    record.Duration_Start =
        DateOf(record.Duration_Start_Year, record.Duration_Start_Month, record.Duration_Start_Day);
    record.Duration_End =
        DateOf(record.Duration_End_Year, record.Duration_End_Month, record.Duration_End_Day);
}

}  // namespace

ScheduleRecord ReadScheduleXML(const XmlNode& scheduleElement, DateTime now) {
    ScheduleRecord record;
    record.LastActionDateTime = ReadMoment(scheduleElement, "LastActionDateTime", now);
    record.NextActionDateTime = ReadMoment(scheduleElement, "NextActionDateTime", now);
    ReadNumbers(scheduleElement, kOccurrence, record);
    for (std::size_t day = 1; day <= std::size(kDayNames); ++day)
        ReadNumber(scheduleElement, kDayNames[day - 1], "", record.Days[day]);
    ReadNumbers(scheduleElement, kPattern, record);
    ReadNumbers(scheduleElement, kDuration, record);
    if (record.NextActionDateTime < record.LastActionDateTime)
        record.NextActionDateTime = record.LastActionDateTime;
    BuildDates(record);
    return record;
}

XmlNode LoadSchedule(std::string_view text) {
    XmlNode element = LoadXML(text);
    if (element.Name() == "schedule") return element;
    throw std::runtime_error(
        GetAttribute(element, "msg", "the element is named \"" + element.Name() + "\" and not \"schedule\""));
}

XmlNode WriteScheduleXML(const ScheduleRecord& record, DateTime now) {
    ScheduleRecord calculation = record;
    XmlNode element = LoadXML("<schedule/>");
    element.SetAttribute("NextActionDateTime", GeneralDateText(GetNextTime(calculation, now)));
    WriteNumbers(element, kOccurrence, record);
    for (std::size_t day = 1; day <= std::size(kDayNames); ++day)
        element.SetAttribute(kDayNames[day - 1], std::to_string(record.Days[day]));
    WriteNumbers(element, kPattern, record);
    // The hour of this one time goes by the flag of the end; nothing reads it back.
    const DateTime startTime =
        TimeOf(ClockHour(record.Freq_Every_StartHr, record.Freq_Every_Endampm), record.Freq_Every_StartMin);
    element.SetAttribute("Freq_Every_StartTime", GeneralDateText(startTime));
    element.SetAttribute("Freq_BuildStartTime", GeneralDateText(record.Freq_BuildStartTime));
    WriteNumbers(element, kDuration, record);
    return element;
}

DateTime GetNextTime(ScheduleRecord& record, const XmlNode& scheduleElement, DateTime now) {
    record = ReadScheduleXML(scheduleElement, now);
    return GetNextTime(record, now);
}

}  // namespace norvelis
