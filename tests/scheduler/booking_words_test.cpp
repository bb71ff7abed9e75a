#include "scheduler/booking_words.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "scheduler/next_time.h"
#include "scheduler/schedule_xml.h"
#include "testing/temporary_folder.h"

namespace norvelis {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const DateTime kNow = ToDateTime({2026, 3, 10, 9, 0, 0});

DateTime At(const char* text) {
    return ParseDateTime(text).value();
}

TEST(BookingWords, OrdinaryTimesNeedNoWords) {
    ScheduleRecord record;
    record.Occurs_DailyNum = 1;
    EXPECT_THAT(OddTimes(record, {At("2026-03-11 06:00"), At("2026-03-12 06:00")}, kNow), IsEmpty());
    EXPECT_EQ(WithWeekday(At("2026-05-03 06:00")), "Sunday 5/3/2026 6:00:00 AM");
}

TEST(BookingWords, PastAndRepeatedTimesAndNone) {
    EXPECT_THAT(OddTimes({At("2026-03-10 08:00"), At("2026-03-10 08:00")}, kNow),
                ElementsAre("Tuesday 3/10/2026 8:00:00 AM lies in the past and would run at once.",
                            "Tuesday 3/10/2026 8:00:00 AM comes more than once."));
    EXPECT_THAT(OddTimes({kNow}, kNow), IsEmpty());
    EXPECT_THAT(OddTimes({}, kNow), ElementsAre(HasSubstr("number of dates is 0")));
}

TEST(BookingWords, CountsOfZeroAndNoWeekday) {
    ScheduleRecord record;
    const std::vector<DateTime> times = {At("2026-03-11 06:00")};
    EXPECT_THAT(OddTimes(record, times, kNow), ElementsAre("The number of days is 0."));
    record.Occurrence = kWeekly;
    record.Days[1] = 2;
    EXPECT_THAT(
        OddTimes(record, times, kNow),
        ElementsAre("The number of weeks is 0.", "No weekday is selected: the date does not change."));
    record.Occurrence = kMonthly;
    EXPECT_THAT(OddTimes(record, times, kNow), ElementsAre("The number of months is 0."));
    record.Occurs_Monthly_Each_Num = 1;
    record.Freq_Option = 1;
    record.Freq_Every_EndTime = TimeOf(24, 0);
    EXPECT_THAT(OddTimes(record, times, kNow), ElementsAre("The number of hours or minutes is 0."));
}

TEST(BookingWords, TimesOutsideTheHours) {
    ScheduleRecord record;
    record.Occurs_DailyNum = record.Freq_Every_Interval = 1;
    record.Freq_Option = 1;
    record.Freq_Every_StartTime = TimeOf(8, 0);
    record.Freq_Every_EndTime = TimeOf(17, 0);
    EXPECT_THAT(OddTimes(record, {At("2026-03-11 08:00"), At("2026-03-11 16:59")}, kNow), IsEmpty());
    for (const char* time : {"2026-03-11 07:59", "2026-03-11 17:00"}) {
        EXPECT_THAT(
            OddTimes(record, {At(time)}, kNow),
            ElementsAre(WithWeekday(At(time)) + " lies outside the hours from 8:00:00 AM to 5:00:00 PM."));
    }
}

TEST(BookingWords, DaysThatAreNotWhatTheListsSay) {
    const struct {
        int week, day;
        const char* asSaid;
        const char* notAsSaid;
    } cases[] = {{1, 2, "2026-04-14", "2026-04-07"},
                 {kLastWeek, 0, "2026-05-31", "2026-04-05"},
                 {kLastWeek, 2, "2026-03-31", "2026-04-21"},
                 {0, kAnyDay, "2026-04-01", "2026-04-05"},
                 {kLastWeek, kAnyDay, "2026-04-30", "2026-03-29"},
                 {0, kWorkday, "2026-06-01", "2026-08-01"},
                 {2, kWorkday, "2026-04-03", "2026-04-15"},
                 {0, kWeekend, "2026-04-04", "2026-04-07"},
                 {kLastWeek, kWeekend, "2026-05-31", "2026-04-28"}};
    for (const auto& c : cases) {
        ScheduleRecord record;
        record.Occurrence = kMonthly;
        record.Occurs_MonthlyOption = 1;
        record.Occurs_Monthly_Every_Num = 1;
        record.Occurs_Monthly_Every_Week = c.week;
        record.Occurs_Monthly_Every_WeekDay = c.day;
        EXPECT_THAT(OddTimes(record, {At(c.asSaid)}, kNow), IsEmpty()) << c.asSaid;
        EXPECT_THAT(OddTimes(record, {At(c.asSaid), At(c.notAsSaid)}, kNow),
                    Contains(HasSubstr(WithWeekday(At(c.notAsSaid)) + " is what \"")))
            << c.notAsSaid;
    }
}

TEST(BookingWords, TheFirstDateAndTenBehindIt) {
    ScheduleRecord record;
    record.Occurs_DailyNum = record.Duration_End_Option = 1;
    record.Freq_Once_Hr = 6;
    record.Duration_Start_Year = 2026;
    record.Duration_Start_Month = record.Duration_Start_Day = 1;
    const XmlNode element = WriteScheduleXML(record, kNow);
    const auto words = [&](int count, bool alsoNext) {
        const auto runs = Calculate(element, "3/10/2026 9:00:00 AM", count, kNow);
        return WordsBeforeBooking(element, runs.value(), alsoNext, kNow);
    };
    for (const int count : {1, 3, 15}) {
        const auto lines = words(count, false);
        ASSERT_EQ(lines.size(), 13u) << count;
        EXPECT_EQ(lines[0], "First booked: Thursday 3/12/2026 6:00:00 AM");
        EXPECT_EQ(lines[2], "Friday 3/13/2026 6:00:00 AM");
        EXPECT_EQ(lines[11], "Sunday 3/22/2026 6:00:00 AM");
        EXPECT_EQ(lines[12], "The next date, Wednesday 3/11/2026 6:00:00 AM, is not booked.");
    }
    EXPECT_EQ(words(0, true)[0], "First booked: Wednesday 3/11/2026 6:00:00 AM");
    EXPECT_EQ(words(0, true).size(), 12u);
    EXPECT_THAT(words(0, false), ElementsAre(HasSubstr("is not booked."), HasSubstr("number of dates is 0")));
}

TEST(BookingWords, DatesThatHavePassedAreAskedAbout) {
    EXPECT_EQ(QuestionOfPastDate({"3/10/2026 9:00:00 AM", "no date"}, kNow), "");
    EXPECT_EQ(
        QuestionOfPastDate({"3/11/2026", "3/10/2026 8:59:59 AM"}, kNow),
        "Tuesday 3/10/2026 8:59:59 AM lies in the past and would run at once.\r\nBook it all the same?");
}

TEST(BookingWords, AReportThatIsGone) {
    const TemporaryFolder folder;
    const std::string report = folder.Path("report.txt");
    EXPECT_EQ(MissingReport(report), "The report " + report + " is missing now.");
    EXPECT_EQ(MissingReport(folder.Path()), "The report " + folder.Path() + " is missing now.");
    fclose(fopen(report.c_str(), "w"));
    EXPECT_EQ(MissingReport(report), "");
}

}  // namespace
}  // namespace norvelis
