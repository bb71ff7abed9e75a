#include "scheduler/definition_controls.h"

#include <gtest/gtest.h>

#include <random>

#include "base/failure.h"
#include "scheduler/schedule_xml.h"

namespace norvelis {
namespace {

const DateTime kNow = ToDateTime({2026, 11, 24, 8, 30, 0});

XmlNode Saved(const DefinitionControls& controls) {
    ScheduleRecord record;
    GatherDefinition(controls, record);
    return WriteScheduleXML(record, kNow);
}

std::string Attribute(const DefinitionControls& controls, const char* name) {
    return GetAttribute(Saved(controls), name, "none");
}

TEST(DefinitionControls, AFreshEditorWithABlankCountIsEveryZeroDays) {
    const DefinitionControls controls = StartUpControls(kNow);
    EXPECT_EQ(Attribute(controls, "Occurs_DailyNum"), "0");
    EXPECT_EQ(Attribute(controls, "Duration_End_Option"), "1");
    EXPECT_EQ(Attribute(controls, "NextActionDateTime"), "11/24/2026");
    EXPECT_EQ(Attribute(controls, "Freq_BuildStartTime"), "12:00:00 AM");
    EXPECT_EQ(Attribute(controls, "Duration_End_Day"), "25");
}

TEST(DefinitionControls, PickedHoursAreSplitAtTwelve) {
    const struct {
        int hour, minute;
        const char *storedHour, *storedMinute, *flag;
    } cases[] = {{0, 30, "0", "30", "0"},
                 {11, 59, "11", "59", "0"},
                 {12, 30, "12", "30", "0"},
                 {13, 0, "1", "0", "1"},
                 {23, 5, "11", "5", "1"}};
    for (const auto& c : cases) {
        DefinitionControls controls = StartUpControls(kNow);
        controls.dtpFreqTime = ToDateTime({2026, 11, 24, c.hour, c.minute, 0});
        EXPECT_EQ(Attribute(controls, "Freq_Once_Hr"), c.storedHour) << c.hour;
        EXPECT_EQ(Attribute(controls, "Freq_Once_Min"), c.storedMinute) << c.hour;
        EXPECT_EQ(Attribute(controls, "Freq_Once_AMPM"), c.flag) << c.hour;
        controls.optFreq = 1;
        controls.dtpFreqIntervalStart = controls.dtpFreqIntervalEnd = controls.dtpFreqTime;
        EXPECT_EQ(Attribute(controls, "Freq_Every_StartHr"), c.storedHour) << c.hour;
        EXPECT_EQ(Attribute(controls, "Freq_Every_Startampm"), c.flag) << c.hour;
        EXPECT_EQ(Attribute(controls, "Freq_Every_EndMin"), c.storedMinute) << c.hour;
        EXPECT_EQ(Attribute(controls, "Freq_Once_Hr"), "0") << "the other form is not read";
    }
}

TEST(DefinitionControls, OnlyTheChosenBranchIsRead) {
    DefinitionControls controls = StartUpControls(kNow);
    controls.txtNumofDays = "2";
    controls.txtOccursWeek = "3";
    controls.chkDay[2] = true;
    controls.txtNumofMonths = controls.lstMonthlyEvery = "4";
    controls.lstMonthlyDays = "15";
    controls.clstMonthlyWeek = kLastWeek;
    controls.clstMonthlyWeekDay = kWeekend;
    const std::vector<std::string> names = {"Occurs_DailyNum",
                                            "Occurs_WeeklyNum",
                                            "Monday",
                                            "Occurs_Monthly_Each_Day",
                                            "Occurs_Monthly_Each_Num",
                                            "Occurs_Monthly_Every_Week",
                                            "Occurs_Monthly_Every_WeekDay",
                                            "Occurs_Monthly_Every_Num"};
    const auto values = [&](int occurs, int monthly) {
        controls.optOccurs = occurs;
        controls.optMonthly = monthly;
        std::string all;
        for (const auto& name : names) all += Attribute(controls, name.c_str()) + " ";
        return all;
    };
    EXPECT_EQ(values(kDaily, 0), "2 0 0 0 0 0 0 0 ");
    EXPECT_EQ(values(kWeekly, 0), "0 3 1 0 0 0 0 0 ");
    EXPECT_EQ(values(kMonthly, 0), "0 0 0 15 4 0 0 0 ");
    EXPECT_EQ(values(kMonthly, 1), "0 0 0 0 0 4 9 4 ");
}

// Opening and saving must not mend what a file says, however odd.
TEST(DefinitionControls, WhatNobodyTouchedStaysAsItWas) {
    std::mt19937 random(1);
    const auto number = [&](int most) {
        return std::to_string(std::uniform_int_distribution<int>(-2, most)(random));
    };
    for (int i = 0; i < 2000; ++i) {
        const XmlNode element = WriteScheduleXML(ScheduleRecord{}, kNow);
        for (const char* name :
             {"Occurrence", "Occurs_DailyNum", "Occurs_WeeklyNum", "Sunday", "Saturday",
              "Occurs_MonthlyOption", "Occurs_Monthly_Each_Day", "Occurs_Monthly_Each_Num",
              "Occurs_Monthly_Every_Num", "Occurs_Monthly_Every_Week", "Occurs_Monthly_Every_WeekDay",
              "Freq_Option", "Freq_Once_AMPM", "Freq_Every_Interval_HrMin", "Freq_Every_Startampm",
              "Freq_Every_Endampm", "Duration_End_Option"})
            element.SetAttribute(name, number(12));
        for (const char* name :
             {"Freq_Once_Hr", "Freq_Once_Min", "Freq_Every_Interval", "Freq_Every_StartHr",
              "Freq_Every_StartMin", "Freq_Every_EndHr", "Freq_Every_EndMin", "Duration_Start_Month",
              "Duration_Start_Day", "Duration_End_Month", "Duration_End_Day"})
            element.SetAttribute(name, number(70));
        element.SetAttribute("Duration_Start_Year", "2026");
        element.SetAttribute("Duration_End_Year", "26");
        ScheduleRecord record = ReadScheduleXML(element, kNow);
        const std::string before = WriteScheduleXML(record, kNow).Text();
        GatherDefinition(ShowDefinition(record), record);
        ASSERT_EQ(WriteScheduleXML(record, kNow).Text(), before);
    }
}

TEST(DefinitionControls, WhatSomebodyChangedIsGathered) {
    const XmlNode element = LoadXML(
        R"(<schedule Occurrence="7" Occurs_DailyNum="3" Freq_Once_Hr="12" Freq_Once_AMPM="1" Freq_Every_StartHr="9"
            Duration_Start_Year="2026" Duration_Start_Month="2" Duration_Start_Day="30" Duration_End_Option="7"/>)");
    ScheduleRecord record = ReadScheduleXML(element, kNow);
    DefinitionControls controls = ShowDefinition(record);
    EXPECT_EQ(controls.optOccurs, kNothingChosen);
    EXPECT_EQ(GeneralDateText(controls.dtpFreqTime), "12:00:00 AM");
    EXPECT_EQ(GeneralDateText(controls.dtpDurationStart), "3/2/2026");
    EXPECT_EQ(controls.opDurationEnd, 1);

    controls.optOccurs = kDaily;
    controls.txtNumofDays = "5";
    controls.optFreq = 1;
    controls.dtpFreqIntervalStart = ToDateTime({1899, 12, 30, 9, 0, 0});
    controls.lstFreqEvery = "4";
    controls.clstFreqInterval = 1;
    controls.dtpDurationStart = ToDateTime({2026, 3, 3, 10, 11, 12});
    controls.opDurationEnd = 0;
    GatherDefinition(controls, record);
    EXPECT_EQ(record.Occurrence, kDaily);
    EXPECT_EQ(record.Occurs_DailyNum, 5);
    EXPECT_EQ(record.Freq_Option, 1);
    EXPECT_EQ(record.Freq_Once_Hr, 12);
    EXPECT_EQ(record.Freq_Every_StartHr, 9);
    EXPECT_EQ(record.Freq_Every_Interval, 4);
    EXPECT_EQ(record.Freq_Every_Interval_HrMin, 1);
    EXPECT_EQ(record.Duration_Start_Day, 3);
    EXPECT_EQ(GeneralDateText(record.Duration_Start), "3/3/2026");
    EXPECT_EQ(record.Duration_End_Option, 0);

    controls.optFreq = 0;  // its picker shows midnight, and midnight is what is chosen now
    controls.dtpFreqTime = 0;
    GatherDefinition(controls, record);
    EXPECT_EQ(record.Freq_Once_Hr, 0);
    EXPECT_EQ(record.Freq_Once_AMPM, 0);
}

TEST(DefinitionControls, ATextTooWideForItsFieldIsRefused) {
    DefinitionControls controls = StartUpControls(kNow);
    controls.txtNumofDays = "32768";
    EXPECT_THROW(Saved(controls), RuntimeFailure);
}

}  // namespace
}  // namespace norvelis
