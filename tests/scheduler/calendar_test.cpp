#include <gtest/gtest.h>

#include <random>

#include "base/failure.h"
#include "scheduler/next_time.h"

// Against a search through the calendar, day by day or minute by minute, that knows what a definition means
// and nothing of how the next run is worked out. For definitions whose words mean what they say.
namespace norvelis {
namespace {

const DateTime kNow = ToDateTime({2026, 1, 1, 0, 0, 0});

int Number(std::mt19937& random, int least, int most) {
    return std::uniform_int_distribution<int>(least, most)(random);
}

ScheduleRecord OnceADay(std::mt19937& random) {
    ScheduleRecord record;
    record.Duration_End_Option = 1;
    record.Freq_Once_AMPM = Number(random, 0, 1);
    record.Freq_Once_Hr = static_cast<std::int16_t>(Number(random, 0, 11));
    record.Freq_Once_Min = static_cast<std::int16_t>(Number(random, 0, 59));
    record.NextActionDateTime =
        ToDateTime({Number(random, 1990, 2090), Number(random, 1, 12), Number(random, 1, 28),
                    Number(random, 0, 23), Number(random, 0, 59), Number(random, 0, 59)});
    return record;
}

/// The day, within 200 years, that is the first behind `date` for which `fits` holds, at the record's time.
template <class Fits>
std::string FirstDay(const ScheduleRecord& record, DateTime date, Fits fits) {
    for (int i = 1; i < 200 * 366; ++i) {
        CalendarTime day = ToCalendar(date + i);
        if (!fits(day, date + i)) continue;
        day.hour = record.Freq_Once_Hr + (record.Freq_Once_AMPM != 0 ? 12 : 0);
        day.minute = record.Freq_Once_Min;
        day.second = 0;
        return GeneralDateText(ToDateTime(day));
    }
    return "none";
}

// Saturdays are the days that seven divides, for day zero was one.
int DayOfWeek(DateTime date) {
    return static_cast<int>((static_cast<long>(date) + 6) % 7) + 1;
}

TEST(Calendar, WeeksAreThoseOfASearchThroughTheDays) {
    std::mt19937 random(1);
    for (int i = 0; i < 2000; ++i) {
        ScheduleRecord record = OnceADay(random);
        record.Occurrence = kWeekly;
        record.Occurs_WeeklyNum = static_cast<std::int16_t>(Number(random, 1, 12));
        for (std::size_t day = 1; day <= 7; ++day)
            record.Days[day] = static_cast<std::int16_t>(Number(random, 0, 1));
        record.Days[static_cast<std::size_t>(Number(random, 1, 7))] = 1;
        const DateTime from = DateOnly(record.NextActionDateTime);
        const DateTime sunday = from - (DayOfWeek(from) - 1);
        const std::string expected = FirstDay(record, from, [&](const CalendarTime&, DateTime date) {
            const int weeks = static_cast<int>(date - sunday) / 7;
            return record.Days[static_cast<std::size_t>(DayOfWeek(date))] == 1 &&
                   (weeks == 0 || weeks == record.Occurs_WeeklyNum);
        });
        EXPECT_EQ(GeneralDateText(GetNextTime(record, kNow)), expected);
    }
}

TEST(Calendar, MonthsAreThoseOfASearchThroughTheDays) {
    std::mt19937 random(2);
    for (int i = 0; i < 2000; ++i) {
        ScheduleRecord record = OnceADay(random);
        record.Occurrence = kMonthly;
        record.Occurs_MonthlyOption = Number(random, 0, 1);
        const int months = Number(random, 1, 24), day = Number(random, 1, 28);
        record.Occurs_Monthly_Each_Num = record.Occurs_Monthly_Every_Num = static_cast<std::int16_t>(months);
        record.Occurs_Monthly_Each_Day = static_cast<std::int16_t>(day);
        record.Occurs_Monthly_Every_Week = Number(random, 0, 3);
        record.Occurs_Monthly_Every_WeekDay = Number(random, 0, 6);
        const CalendarTime from = ToCalendar(record.NextActionDateTime);
        const std::string expected = FirstDay(
            record, DateOnly(record.NextActionDateTime), [&](const CalendarTime& date, DateTime serial) {
                if ((date.year - from.year) * 12 + date.month - from.month != months) return false;
                if (record.Occurs_MonthlyOption == 0) return date.day == day;
                return DayOfWeek(serial) - 1 == record.Occurs_Monthly_Every_WeekDay &&
                       (date.day - 1) / 7 == record.Occurs_Monthly_Every_Week;
            });
        EXPECT_EQ(GeneralDateText(GetNextTime(record, kNow)), expected);
    }
}

TEST(Calendar, TimesOfADayAreThoseOfItsList) {
    std::mt19937 random(3);
    for (int i = 0; i < 500; ++i) {
        ScheduleRecord record = OnceADay(random);
        record.Occurs_DailyNum = static_cast<std::int16_t>(Number(random, 1, 40));
        record.Freq_Option = 1;
        const int interval = Number(random, 1, 60),
                  start = Number(random, 0, 11) * 60 + Number(random, 0, 59);
        const int end = Number(random, 12, 23) * 60 + Number(random, 0, 59);
        record.Freq_Every_Interval = static_cast<std::int16_t>(interval);
        record.Freq_Every_Interval_HrMin = 1;
        record.Freq_Every_StartHr = static_cast<std::int16_t>(start / 60);
        record.Freq_Every_StartMin = static_cast<std::int16_t>(start % 60);
        record.Freq_Every_EndHr = static_cast<std::int16_t>(end / 60 - 12);
        record.Freq_Every_Endampm = 1;
        record.Freq_Every_EndMin = static_cast<std::int16_t>(end % 60);
        const CalendarTime day = ToCalendar(record.NextActionDateTime);
        record.NextActionDateTime = ToDateTime({day.year, day.month, day.day, 0, start, 0});
        for (int date = day.day, minute = start + interval, steps = 0; steps < 200; ++steps) {
            if (minute >= end) {
                date += record.Occurs_DailyNum;
                minute = start;
            }
            ASSERT_EQ(GeneralDateText(GetNextTime(record, kNow)),
                      GeneralDateText(ToDateTime({day.year, day.month, date, 0, minute, 0})));
            minute += interval;
        }
    }
}

TEST(Calendar, AFailureLeavesTheTimeAsItWas) {
    ScheduleRecord record;
    record.Duration_End_Option = 1;
    record.Occurs_DailyNum = 32767;
    record.NextActionDateTime = ToDateTime({9990, 1, 1, 6, 0, 0});
    EXPECT_THROW(GetNextTime(record, kNow), RuntimeFailure);
    EXPECT_EQ(GeneralDateText(record.NextActionDateTime), "1/1/9990 6:00:00 AM");
}

TEST(Calendar, AFinishedScheduleGoesOnFromItsResult) {
    ScheduleRecord record;
    record.Occurs_DailyNum = 1;
    record.Freq_Once_Hr = 6;
    record.Duration_End = ToDateTime({2026, 1, 1, 0, 0, 0});
    record.NextActionDateTime = ToDateTime({2026, 1, 1, 6, 0, 0});
    EXPECT_EQ(GeneralDateText(GetNextTime(record, kNow)), "12/31/2025 11:00:00 PM");
    EXPECT_EQ(GeneralDateText(GetNextTime(record, kNow)), "1/1/2026 6:00:00 AM");
}

TEST(Calendar, ARecordOnItsFirstDayStartsWithTheFirstTime) {
    ScheduleRecord record;
    record.Duration_End_Option = 1;
    record.Duration_Start = DateOf(2026, 5, 1);
    record.Freq_BuildStartTime = TimeOf(6, 0);
    EXPECT_EQ(GeneralDateText(GetNextTime(record, kNow)), "5/1/2026 6:00:00 AM");
}

TEST(Calendar, DatesOfNumbers) {
    EXPECT_EQ(GeneralDateText(DateOf(2026, 14, 31)), "3/3/2027");
    EXPECT_EQ(GeneralDateText(DateOf(0, 0, 0)), "11/30/1999");
    EXPECT_EQ(GeneralDateText(DateOf(29, 1, 1)), "1/1/2029");
    EXPECT_EQ(GeneralDateText(DateOf(30, 1, 1)), "1/1/1930");
    for (const int year : {-1, -32768, 10000, 32767})
        EXPECT_THROW(DateOf(year, 1, 1), RuntimeFailure) << year;
    EXPECT_THROW(DateOf(9999, 12, 32), RuntimeFailure);
    EXPECT_EQ(Weekday(DateOf(2026, 3, 1)), 1);
    EXPECT_EQ(Weekday(ToDateTime({1899, 12, 30, 0, 0, 0})), 7);
    EXPECT_EQ(Weekday(ToDateTime({1899, 12, 23, 18, 0, 0})), 7);
}

}  // namespace
}  // namespace norvelis
