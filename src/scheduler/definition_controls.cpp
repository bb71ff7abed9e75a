#include "scheduler/definition_controls.h"

#include <cmath>
#include <limits>

#include "base/failure.h"
#include "base/text.h"
#include "scheduler/next_time.h"

namespace norvelis {

namespace {

constexpr int kWeekChoices = 5, kWeekDayChoices = 10, kIntervalChoices = 2, kOccursChoices = 3;

std::int16_t NumberIn(const std::string& text) {
    using Limits = std::numeric_limits<std::int16_t>;
    const double value = std::nearbyint(Val(text));
    if (value < Limits::min() || value > Limits::max()) throw RuntimeFailure(FailureNumber::Overflow);
    return static_cast<std::int16_t>(value);
}

int PositionOf(std::int32_t value, int choices) {
    return value >= 0 && value < choices ? value : kNothingChosen;
}

bool SameMoment(DateTime a, DateTime b) {
    return GeneralDateText(a) == GeneralDateText(b);
}

void SetTime(DateTime picker, std::int16_t& hour, std::int16_t& minute, std::int32_t& ampm, DateTime& time) {
    const CalendarTime clock = ToCalendar(picker);
    ampm = clock.hour > 12 ? 1 : 0;
    hour = static_cast<std::int16_t>(clock.hour > 12 ? clock.hour - 12 : clock.hour);
    minute = static_cast<std::int16_t>(clock.minute);
    time = TimeOf(clock.hour, clock.minute);
}

void SetDate(DateTime picker, std::int16_t& month, std::int16_t& day, std::int16_t& year, DateTime& date) {
    const CalendarTime calendar = ToCalendar(picker);
    month = static_cast<std::int16_t>(calendar.month);
    day = static_cast<std::int16_t>(calendar.day);
    year = static_cast<std::int16_t>(calendar.year);
    date = DateOnly(picker);
}

void GatherWeekly(const DefinitionControls& controls, ScheduleRecord& record) {
    record.Occurs_WeeklyNum = NumberIn(controls.txtOccursWeek);
    for (std::size_t day = 1; day < controls.chkDay.size(); ++day) {
        if (controls.chkDay[day] != (record.Days[day] == 1)) record.Days[day] = controls.chkDay[day] ? 1 : 0;
    }
}

void GatherMonthly(const DefinitionControls& controls, const DefinitionControls& shown,
                   ScheduleRecord& record) {
    if (controls.optMonthly != shown.optMonthly) record.Occurs_MonthlyOption = controls.optMonthly;
    if (controls.optMonthly == 0) {
        record.Occurs_Monthly_Each_Day = NumberIn(controls.lstMonthlyDays);
        record.Occurs_Monthly_Each_Num = NumberIn(controls.txtNumofMonths);
        return;
    }
    if (controls.clstMonthlyWeek != shown.clstMonthlyWeek)
        record.Occurs_Monthly_Every_Week = controls.clstMonthlyWeek;
    if (controls.clstMonthlyWeekDay != shown.clstMonthlyWeekDay)
        record.Occurs_Monthly_Every_WeekDay = controls.clstMonthlyWeekDay;
    record.Occurs_Monthly_Every_Num = NumberIn(controls.lstMonthlyEvery);
}

void GatherFrequency(const DefinitionControls& controls, const DefinitionControls& shown,
                     ScheduleRecord& record) {
    // The pickers of a form that was not in use when the definition was opened did not show its numbers.
    const bool formInUse = controls.optFreq == shown.optFreq;
    const auto changed = [&](DateTime DefinitionControls::*picker) {
        return !formInUse || !SameMoment(controls.*picker, shown.*picker);
    };
    if (!formInUse) record.Freq_Option = controls.optFreq;
    if (controls.optFreq == 0) {
        if (changed(&DefinitionControls::dtpFreqTime))
            SetTime(controls.dtpFreqTime, record.Freq_Once_Hr, record.Freq_Once_Min, record.Freq_Once_AMPM,
                    record.Freq_Once_Time);
        return;
    }
    record.Freq_Every_Interval = NumberIn(controls.lstFreqEvery);
    if (controls.clstFreqInterval != shown.clstFreqInterval)
        record.Freq_Every_Interval_HrMin = controls.clstFreqInterval;
    if (changed(&DefinitionControls::dtpFreqIntervalStart))
        SetTime(controls.dtpFreqIntervalStart, record.Freq_Every_StartHr, record.Freq_Every_StartMin,
                record.Freq_Every_Startampm, record.Freq_Every_StartTime);
    if (changed(&DefinitionControls::dtpFreqIntervalEnd))
        SetTime(controls.dtpFreqIntervalEnd, record.Freq_Every_EndHr, record.Freq_Every_EndMin,
                record.Freq_Every_Endampm, record.Freq_Every_EndTime);
}

void GatherDuration(const DefinitionControls& controls, const DefinitionControls& shown,
                    ScheduleRecord& record) {
    if (!SameMoment(controls.dtpDurationStart, shown.dtpDurationStart))
        SetDate(controls.dtpDurationStart, record.Duration_Start_Month, record.Duration_Start_Day,
                record.Duration_Start_Year, record.Duration_Start);
    if (controls.opDurationEnd != shown.opDurationEnd)
        record.Duration_End_Option = controls.opDurationEnd == 1 ? 1 : 0;
    if (!SameMoment(controls.dtpDurationEnd, shown.dtpDurationEnd))
        SetDate(controls.dtpDurationEnd, record.Duration_End_Month, record.Duration_End_Day,
                record.Duration_End_Year, record.Duration_End);
}

}  // namespace

DefinitionControls StartUpControls(DateTime now) {
    DefinitionControls controls;
    controls.dtpDurationStart = now;
    controls.dtpDurationEnd = now + 1;
    return controls;
}

DefinitionControls ShowDefinition(const ScheduleRecord& record) {
    const auto timeOfDay = [](DateTime time) { return time - DateOnly(time); };
    DefinitionControls controls;
    controls.optOccurs = PositionOf(record.Occurrence, kOccursChoices);
    controls.txtNumofDays = std::to_string(record.Occurs_DailyNum);
    controls.txtOccursWeek = std::to_string(record.Occurs_WeeklyNum);
    for (std::size_t day = 1; day < controls.chkDay.size(); ++day)
        controls.chkDay[day] = record.Days[day] == 1;

    controls.optMonthly = record.Occurs_MonthlyOption != 0 ? 1 : 0;
    controls.lstMonthlyDays = std::to_string(record.Occurs_Monthly_Each_Day);
    controls.txtNumofMonths = std::to_string(record.Occurs_Monthly_Each_Num);
    controls.clstMonthlyWeek = PositionOf(record.Occurs_Monthly_Every_Week, kWeekChoices);
    controls.clstMonthlyWeekDay = PositionOf(record.Occurs_Monthly_Every_WeekDay, kWeekDayChoices);
    controls.lstMonthlyEvery = std::to_string(record.Occurs_Monthly_Every_Num);

    controls.optFreq = record.Freq_Option != 0 ? 1 : 0;
    controls.dtpFreqTime = timeOfDay(record.Freq_Once_Time);
    controls.lstFreqEvery = std::to_string(record.Freq_Every_Interval);
    controls.clstFreqInterval = PositionOf(record.Freq_Every_Interval_HrMin, kIntervalChoices);
    controls.dtpFreqIntervalStart = timeOfDay(record.Freq_Every_StartTime);
    controls.dtpFreqIntervalEnd = timeOfDay(record.Freq_Every_EndTime);

    controls.dtpDurationStart = record.Duration_Start;
    controls.dtpDurationEnd = record.Duration_End;
    controls.opDurationEnd = record.Duration_End_Option != 0 ? 1 : 0;
    return controls;
}

void GatherDefinition(const DefinitionControls& controls, ScheduleRecord& record) {
    const DefinitionControls shown = ShowDefinition(record);
    if (controls.optOccurs != shown.optOccurs) record.Occurrence = controls.optOccurs;
    switch (controls.optOccurs) {
        case kDaily:
            record.Occurs_DailyNum = NumberIn(controls.txtNumofDays);
            break;
        case kWeekly:
            GatherWeekly(controls, record);
            break;
        case kMonthly:
            GatherMonthly(controls, shown, record);
            break;
        default:
            break;
    }
    GatherFrequency(controls, shown, record);
    GatherDuration(controls, shown, record);
}

}  // namespace norvelis
