#include "ui/screens/scheduler/ou_schedule.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTest>
#include <QTimeEdit>

#include "scheduler/schedule_xml.h"
#include "testing/test_store.h"

namespace norvelis::ui {
namespace {

class OuScheduleTest : public ::testing::Test {
  protected:
    StillClock clock;
    ouSchedule editor{clock, nullptr};

    template <typename T>
    T& Control(const char* name) const {
        return *editor.findChild<T*>(name);
    }
    void Click(const char* name) const { Control<QAbstractButton>(name).click(); }
    bool IsEnabled(const char* name) const { return Control<QWidget>(name).isEnabled(); }
    void Choose(const char* list, const char* entry) const {
        auto& box = Control<QComboBox>(list);
        box.setCurrentIndex(box.findText(entry));
        emit box.activated(box.currentIndex());
    }
    std::string Attribute(const char* name) { return GetAttribute(editor.ScheduleXML_Save(), name, "none"); }
};

TEST_F(OuScheduleTest, StartsWithADailyScheduleFromTodayWithoutEnd) {
    for (const char* option : {"optOccurs0", "optFreq0", "opDurationEnd1", "optMonthly0"})
        EXPECT_TRUE(Control<QAbstractButton>(option).isChecked()) << option;
    const struct {
        const char* list;
        int entries;
    } lists[] = {{"lstMonthlyDays", 28},  {"clstMonthlyWeek", 5},  {"clstMonthlyWeekDay", 10},
                 {"lstMonthlyEvery", 12}, {"clstFreqInterval", 2}, {"lstFreqEvery", 12}};
    for (const auto& c : lists) {
        EXPECT_EQ(Control<QComboBox>(c.list).count(), c.entries) << c.list;
        EXPECT_EQ(Control<QComboBox>(c.list).currentText(), "") << c.list;
    }
    EXPECT_EQ(Control<QDateEdit>("dtpDurationStart").date(), QDate(2026, 11, 24));
    EXPECT_EQ(Control<QDateEdit>("dtpDurationEnd").date(), QDate(2026, 11, 25));
    EXPECT_EQ(Attribute("NextActionDateTime"), "11/24/2026");
}

TEST_F(OuScheduleTest, OptionsEnableTheirControlsAndBringTheirFrameForward) {
    const struct {
        const char* option;
        std::vector<const char*> enabled, disabled;
    } cases[] = {
        {"optFreq1",
         {"lstFreqEvery", "clstFreqInterval", "dtpFreqIntervalStart", "dtpFreqIntervalEnd"},
         {"dtpFreqTime"}},
        {"optFreq0",
         {"dtpFreqTime"},
         {"lstFreqEvery", "clstFreqInterval", "dtpFreqIntervalStart", "dtpFreqIntervalEnd"}},
        {"optMonthly1", {"clstMonthlyWeek", "clstMonthlyWeekDay", "lstMonthlyEvery"}, {"lstMonthlyDays"}},
        {"optMonthly0", {"lstMonthlyDays"}, {"clstMonthlyWeek", "clstMonthlyWeekDay", "lstMonthlyEvery"}},
        {"opDurationEnd0", {"dtpDurationEnd"}, {}},
        {"opDurationEnd1", {}, {"dtpDurationEnd"}}};
    for (const auto& c : cases) {
        Click(c.option);
        for (const char* name : c.enabled) EXPECT_TRUE(IsEnabled(name)) << c.option << " " << name;
        for (const char* name : c.disabled) EXPECT_FALSE(IsEnabled(name)) << c.option << " " << name;
    }
    for (const char* index : {"2", "1", "0"}) {
        Click((std::string("optOccurs") + index).c_str());
        EXPECT_EQ(
            Control<QWidget>("optOccurs0").parentWidget()->findChild<QStackedWidget*>()->currentWidget(),
            &Control<QWidget>((std::string("frameOccurs") + index).c_str()));
    }
}

TEST_F(OuScheduleTest, CountsTakeDigitsAndEditingKeys) {
    for (const char* name : {"txtNumofDays", "txtOccursWeek", "txtNumofMonths"}) {
        auto& count = Control<QLineEdit>(name);
        QTest::keyClicks(&count, "1a 2-3.");
        EXPECT_EQ(count.text(), "123") << name;
        QTest::keyClick(&count, Qt::Key_Backspace);
        QTest::keyClick(&count, Qt::Key_Home);
        QTest::keyClick(&count, Qt::Key_Delete);
        EXPECT_EQ(count.text(), "2") << name;
    }
}

TEST_F(OuScheduleTest, ChoosingAUnitAppendsItsIntervals) {
    Choose("clstFreqInterval", "Min");
    Choose("clstFreqInterval", "Hour");
    auto& list = Control<QComboBox>("lstFreqEvery");
    EXPECT_EQ(list.count(), 12 + 61 + 13);
    EXPECT_EQ(list.itemText(12), "0");
    EXPECT_EQ(list.itemText(85), "12");
    EXPECT_EQ(list.currentText(), "") << "nothing is chosen by that";
}

TEST_F(OuScheduleTest, WhatIsPickedIsSaved) {
    const QSignalSpy changes(&editor, &ouSchedule::Changed);
    Click("optOccurs2");
    Click("optMonthly1");
    Choose("clstMonthlyWeek", "2nd");
    Choose("clstMonthlyWeekDay", "Tuesday");
    Choose("lstMonthlyEvery", "3");
    Click("optFreq1");
    Choose("clstFreqInterval", "Min");
    Control<QComboBox>("lstFreqEvery").setEditText("90");
    Control<QTimeEdit>("dtpFreqIntervalStart").setTime({13, 15});
    Control<QTimeEdit>("dtpFreqIntervalEnd").setTime({17, 0});
    Click("opDurationEnd0");
    Control<QDateEdit>("dtpDurationEnd").setDate({2027, 1, 31});
    const std::pair<const char*, const char*> attributes[] = {{"Occurrence", "2"},
                                                              {"Occurs_MonthlyOption", "1"},
                                                              {"Occurs_Monthly_Every_Week", "1"},
                                                              {"Occurs_Monthly_Every_WeekDay", "2"},
                                                              {"Occurs_Monthly_Every_Num", "3"},
                                                              {"Freq_Option", "1"},
                                                              {"Freq_Every_Interval", "90"},
                                                              {"Freq_Every_Interval_HrMin", "1"},
                                                              {"Freq_Every_StartHr", "1"},
                                                              {"Freq_Every_StartMin", "15"},
                                                              {"Freq_Every_Startampm", "1"},
                                                              {"Freq_Every_EndHr", "5"},
                                                              {"Duration_End_Option", "0"},
                                                              {"Duration_End_Year", "2027"},
                                                              {"Duration_End_Month", "1"}};
    for (const auto& [name, value] : attributes) EXPECT_EQ(Attribute(name), value) << name;
    EXPECT_GE(changes.count(), 10);
}

// Values that no control offers survive, too.
TEST_F(OuScheduleTest, OpenedAndSavedAgainItIsTheSame) {
    const char* const definitions[] = {
        "<schedule/>",
        R"(<schedule Occurrence="1" Occurs_WeeklyNum="2" Monday="1" Friday="1" Sunday="3" Freq_Once_Hr="6"/>)",
        R"(<schedule Occurrence="7" Occurs_MonthlyOption="5" Occurs_Monthly_Every_Week="9" )"
        R"(Occurs_Monthly_Every_WeekDay="44" Occurs_Monthly_Each_Day="31" Freq_Option="3"/>)",
        R"(<schedule Freq_Option="1" Freq_Every_Interval="77" Freq_Every_Interval_HrMin="8" Freq_Every_StartHr="12" )"
        R"(Freq_Every_Startampm="1" Freq_Every_EndHr="40" Freq_Every_EndMin="75"/>)",
        R"(<schedule Occurrence="2" Occurs_Monthly_Each_Num="-3" Freq_Once_Hr="-1" Duration_Start_Year="2026" )"
        R"(Duration_Start_Month="14" Duration_Start_Day="40" Duration_End_Option="1"/>)"};
    for (const char* text : definitions) {
        const XmlNode wanted = WriteScheduleXML(ReadScheduleXML(LoadXML(text), clock.now), clock.now);
        editor.ScheduleXML_Open(LoadXML(text));
        EXPECT_EQ(editor.ScheduleXML_Save().Text(), wanted.Text()) << text;
    }
    EXPECT_ANY_THROW(editor.ScheduleXML_Open(LoadXML(R"(<schedule Freq_Option="99999999999"/>)")));
    EXPECT_EQ(Attribute("Occurs_Monthly_Each_Num"), "-3") << "what can not be opened changes nothing";
}

TEST_F(OuScheduleTest, ANumberThatIsTooLargeIsRefusedAndNothingIsLost) {
    Control<QLineEdit>("txtNumofDays").setText("40000");
    EXPECT_ANY_THROW(editor.ScheduleXML_Save());
    Control<QLineEdit>("txtNumofDays").setText("4");
    EXPECT_EQ(Attribute("Occurs_DailyNum"), "4");
}

}  // namespace
}  // namespace norvelis::ui
