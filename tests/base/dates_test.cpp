#include "base/dates.h"

#include <gtest/gtest.h>

namespace norvelis {
namespace {

TEST(Dates, GeneralTextLeavesOutMidnightAndDayZero) {
    EXPECT_EQ(GeneralDateText(ToDateTime({2026, 11, 24, 13, 5, 9})), "11/24/2026 1:05:09 PM");
    EXPECT_EQ(GeneralDateText(ToDateTime({2026, 1, 2, 0, 0, 0})), "1/2/2026");
    EXPECT_EQ(GeneralDateText(ToDateTime({1899, 12, 30, 0, 30, 0})), "12:30:00 AM");
    EXPECT_EQ(GeneralDateText(ToDateTime({1899, 12, 29, 18, 0, 0})), "12/29/1899 6:00:00 PM");
}

TEST(Dates, TextsReadBackAndNonsenseDoesNot) {
    const DateTime moment = ToDateTime({2026, 11, 24, 13, 5, 9});
    for (const char* text :
         {"11/24/2026 1:05:09 PM", "2026-11-24 13:05:09", "2026-11-24T13:05:09", "11/24/26 13:05:09"}) {
        ASSERT_TRUE(ParseDateTime(text)) << text;
        EXPECT_EQ(GeneralDateText(*ParseDateTime(text)), GeneralDateText(moment)) << text;
    }
    EXPECT_EQ(GeneralDateText(*ParseDateTime("12:00 AM")), "12:00:00 AM");
    for (const char* text :
         {"", "13/1/2026", "2/30/2026", "1/1/2026 25:00", "13:00 PM", "12", "1/1/2026x", "hello"}) {
        EXPECT_FALSE(ParseDateTime(text)) << text;
    }
}

TEST(Dates, DaysAndMonthsBeyondTheirRangeCarryOver) {
    EXPECT_EQ(GeneralDateText(ToDateTime({2026, 13, 1})), "1/1/2027");
    EXPECT_EQ(GeneralDateText(ToDateTime({2026, 0, 31})), "12/31/2025");
    EXPECT_EQ(GeneralDateText(ToDateTime({2024, 2, 30})), "3/1/2024");
    EXPECT_EQ(ToDateTime({1900, 1, 1}), 2);
}

TEST(Dates, TenStepsOfATenthOfAnHourMakeOneHour) {
    DateTime moment = ToDateTime({2026, 11, 24, 8, 0, 0});
    for (int i = 0; i < 10; ++i) moment += 0.1 / 24;
    EXPECT_EQ(GeneralDateText(moment), "11/24/2026 9:00:00 AM");
}

}  // namespace
}  // namespace norvelis
