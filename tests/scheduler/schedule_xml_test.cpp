#include "scheduler/schedule_xml.h"

#include <gtest/gtest.h>

#include <random>
#include <regex>

#include "base/failure.h"
#include "scheduler/next_time.h"

namespace norvelis {
namespace {

const DateTime kNow = ToDateTime({2026, 11, 24, 8, 30, 0});

std::vector<std::pair<std::string, std::string>> AttributesOf(const XmlNode& element) {
    const std::string text = element.Text();
    const std::regex attribute("(\\w+)=\"([^\"]*)\"");
    std::vector<std::pair<std::string, std::string>> attributes;
    for (std::sregex_iterator it(text.begin(), text.end(), attribute), end; it != end; ++it)
        attributes.emplace_back((*it)[1], (*it)[2]);
    return attributes;
}

TEST(ScheduleXml, AttributesStandInTheirOrder) {
    ScheduleRecord record;
    record.NextActionDateTime = ToDateTime({2026, 11, 24, 6, 0, 0});
    record.Occurs_DailyNum = 2;
    record.Days[1] = 1;
    record.Freq_Once_Hr = 6;
    record.Freq_Every_StartHr = 8;
    record.Freq_Every_Startampm = 0;
    record.Freq_Every_EndHr = 5;
    record.Freq_Every_Endampm = 1;  // it is this flag that moves the written start time
    record.Freq_BuildStartTime = TimeOf(6, 0);
    record.Duration_End_Option = 1;
    const XmlNode element = WriteScheduleXML(record, kNow);
    EXPECT_EQ(element.Name(), "schedule");
    EXPECT_EQ(
        element.Text(),
        R"(<schedule NextActionDateTime="11/26/2026 6:00:00 AM" Occurrence="0" Occurs_DailyNum="2" )"
        R"(Occurs_WeeklyNum="0" Sunday="1" Monday="0" Tuesday="0" Wednesday="0" Thursday="0" Friday="0" )"
        R"(Saturday="0" Occurs_MonthlyOption="0" Occurs_Monthly_Each_Day="0" Occurs_Monthly_Each_Num="0" )"
        R"(Occurs_Monthly_Every_Num="0" Occurs_Monthly_Every_Week="0" Occurs_Monthly_Every_WeekDay="0" )"
        R"(Freq_Option="0" Freq_Once_Hr="6" Freq_Once_Min="0" Freq_Once_AMPM="0" Freq_Every_Interval="0" )"
        R"(Freq_Every_Interval_HrMin="0" Freq_Every_StartHr="8" Freq_Every_StartMin="0" )"
        R"(Freq_Every_Startampm="0" Freq_Every_EndHr="5" Freq_Every_EndMin="0" Freq_Every_Endampm="1" )"
        R"(Freq_Every_StartTime="8:00:00 PM" Freq_BuildStartTime="6:00:00 AM" Duration_Start_Month="0" )"
        R"(Duration_Start_Day="0" Duration_Start_Year="0" Duration_End_Option="1" Duration_End_Month="0" )"
        R"(Duration_End_Day="0" Duration_End_Year="0"/>)");
}

TEST(ScheduleXml, ANewRecordIsFirstDueOnItsStartDate) {
    ScheduleRecord record;
    record.Duration_Start = ToDateTime({2026, 12, 1, 0, 0, 0});
    record.Duration_End_Option = 1;
    record.Freq_BuildStartTime = TimeOf(6, 30);
    EXPECT_EQ(GetAttribute(WriteScheduleXML(record, kNow), "NextActionDateTime", ""), "12/1/2026 6:30:00 AM");
    EXPECT_EQ(record.NextActionDateTime, 0);
}

// Values that no list of the editor offers too.
TEST(ScheduleXml, WhatWasWrittenIsWrittenAgainTheSame) {
    std::mt19937 random(1);
    const auto number = [&](int most) {
        return std::to_string(std::uniform_int_distribution<int>(-3, most)(random));
    };
    const std::vector<std::string> names = [] {
        std::vector<std::string> all;
        for (const auto& [name, value] : AttributesOf(WriteScheduleXML(ScheduleRecord{}, kNow)))
            all.push_back(name);
        return all;
    }();
    for (int i = 0; i < 500; ++i) {
        const XmlNode element = LoadXML("<schedule/>");
        for (const auto& name : names) {
            if (!name.ends_with("Time")) element.SetAttribute(name, number(name.ends_with("Year") ? 0 : 40));
        }
        for (const char* year : {"Duration_Start_Year", "Duration_End_Year"})
            element.SetAttribute(year, std::to_string(2000 + i % 60));
        const auto once = AttributesOf(WriteScheduleXML(ReadScheduleXML(element, kNow), kNow));
        const auto twice = AttributesOf(WriteScheduleXML(
            ReadScheduleXML(WriteScheduleXML(ReadScheduleXML(element, kNow), kNow), kNow), kNow));
        ASSERT_EQ(once.size(), names.size());
        for (std::size_t k = 1; k < once.size(); ++k) {
            EXPECT_EQ(twice[k], once[k]);
            if (!once[k].first.ends_with("Time")) {
                EXPECT_EQ(once[k].second, GetAttribute(element, once[k].first, "")) << once[k].first;
            }
        }
    }
}

TEST(ScheduleXml, ATextCountsAsTheNumberItBeginsWith) {
    const struct {
        const char* text;
        int number;
    } cases[] = {{"7", 7},    {" 7 ", 7},    {"+7", 7},  {"-7", -7},       {"007", 7},
                 {"7x", 7},   {"x7", 0},     {"", 0},    {"-", 0},         {"2.5", 2},
                 {"3.5", 4},  {"1e3", 1000}, {".6", 1},  {"inf", 0},       {"nan", 0},
                 {"0x10", 0}, {"1 2", 1},    {"1,5", 1}, {"32767", 32767}, {"-32768", -32768}};
    for (const auto& c : cases) {
        const XmlNode element = LoadXML("<schedule/>");
        element.SetAttribute("Occurs_DailyNum", c.text);
        EXPECT_EQ(ReadScheduleXML(element, kNow).Occurs_DailyNum, c.number) << c.text;
    }
    for (const std::string& text : {std::string("32768"), std::string("-32769"), std::string("32767.5"),
                                    std::string("1e400"), std::string(100'000, '9')}) {
        const XmlNode element = LoadXML("<schedule/>");
        element.SetAttribute("Occurs_DailyNum", text);
        EXPECT_THROW(ReadScheduleXML(element, kNow), RuntimeFailure) << text.substr(0, 40);
    }
    const XmlNode wide = LoadXML(R"(<schedule Occurrence="2147483647" Freq_Option="-2147483648"/>)");
    EXPECT_EQ(ReadScheduleXML(wide, kNow).Occurrence, 2147483647);
    EXPECT_THROW(ReadScheduleXML(LoadXML(R"(<schedule Occurrence="2147483648"/>)"), kNow), RuntimeFailure);
}

TEST(ScheduleXml, AnEmptyElementHasTheDefaults) {
    const ScheduleRecord record = ReadScheduleXML(LoadXML("<schedule/>"), kNow);
    EXPECT_EQ(record.Occurs_DailyNum, 1);
    EXPECT_EQ(record.Occurs_WeeklyNum, 0);
    EXPECT_EQ(record.Duration_End_Option, 0);
    EXPECT_EQ(GeneralDateText(record.LastActionDateTime), GeneralDateText(kNow));
    EXPECT_EQ(GeneralDateText(record.NextActionDateTime), GeneralDateText(kNow));
}

TEST(ScheduleXml, AMissedTimeIsLiftedToTheLastAction) {
    const auto next = [](const char* attributes) {
        const XmlNode element = LoadXML("<schedule " + std::string(attributes) + "/>");
        return GeneralDateText(ReadScheduleXML(element, kNow).NextActionDateTime);
    };
    EXPECT_EQ(next("NextActionDateTime='1/1/2026 6:00:00 AM'"), "11/24/2026 8:30:00 AM");
    EXPECT_EQ(next("NextActionDateTime='1/1/2027 6:00:00 AM'"), "1/1/2027 6:00:00 AM");
    EXPECT_EQ(next("NextActionDateTime='1/1/2026' LastActionDateTime='1/2/2026'"), "1/2/2026");
    EXPECT_EQ(next("LastActionDateTime='1/2/2026'"), "11/24/2026 8:30:00 AM");
    for (const char* name : {"NextActionDateTime", "LastActionDateTime"}) {
        for (const char* text : {"", "soon", "2/30/2026", "13/13/2026"}) {
            const XmlNode element = LoadXML("<schedule/>");
            element.SetAttribute(name, text);
            EXPECT_THROW(ReadScheduleXML(element, kNow), RuntimeFailure) << name << text;
        }
    }
}

TEST(ScheduleXml, DateValuedTimesAreBuiltFromTheNumbers) {
    const char* times =
        "Freq_Once_Hr='6' Freq_Once_Min='30' Freq_Once_AMPM='1' Freq_Every_StartHr='8' "
        "Freq_Every_EndHr='5' Freq_Every_Endampm='1' Freq_BuildStartTime='1:11:11 AM' ";
    const ScheduleRecord once = ReadScheduleXML(LoadXML("<schedule " + std::string(times) + "/>"), kNow);
    EXPECT_EQ(GeneralDateText(once.Freq_BuildStartTime), "6:30:00 PM");
    EXPECT_EQ(GeneralDateText(once.Freq_Once_Time), "6:30:00 PM");
    EXPECT_EQ(GeneralDateText(once.Freq_Every_StartTime), "8:00:00 AM");
    EXPECT_EQ(GeneralDateText(once.Freq_Every_EndTime), "5:00:00 PM");
    const ScheduleRecord repeated =
        ReadScheduleXML(LoadXML("<schedule Freq_Option='1' " + std::string(times) + "/>"), kNow);
    EXPECT_EQ(GeneralDateText(repeated.Freq_BuildStartTime), "8:00:00 AM");
    EXPECT_EQ(repeated.Freq_Once_Time, 0);
}

}  // namespace
}  // namespace norvelis
