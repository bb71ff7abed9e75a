#pragma once

#include <QButtonGroup>
#include <QWidget>
#include <array>

#include "scheduler/definition_controls.h"
#include "scheduler/xml.h"

class QAbstractButton;
class QBoxLayout;
class QComboBox;
class QDateEdit;
class QLineEdit;
class QStackedWidget;
class QTimeEdit;

namespace norvelis::ui {

/// The editor of a schedule definition: on which days, at which times of a day, between which dates. It
/// checks nothing: a blank count is 0.
class ouSchedule : public QWidget {
    Q_OBJECT

  public:
    ouSchedule(Clock& clock, QWidget* parent);

    /// Shows the definition of this element. Fails as ReadScheduleXML does; the controls are then as they
    /// were.
    void ScheduleXML_Open(const XmlNode& element);
    /// The element of what the controls show. RuntimeFailure 6 for a number that is too large for its field
    /// or a next run beyond the calendar.
    XmlNode ScheduleXML_Save();

  signals:
    void Changed();  ///< What the controls show.

  private:
    QWidget* Occurrence();
    QWidget* DailyPage();
    QWidget* WeeklyPage();
    QWidget* MonthlyPage();
    QWidget* DailyFrequency();
    QWidget* Duration();
    void FillLists();
    void AddIntervals();  ///< Those of the unit that was chosen, behind the ones that are there.
    void EnableBranches();
    void TellChanges();

    void Show(const DefinitionControls& controls);
    DefinitionControls Shown() const;

    Clock& clock_;
    ScheduleRecord record_;

    QButtonGroup optOccurs_, optMonthly_, optFreq_, opDurationEnd_;
    QStackedWidget* frameOccurs_;
    QLineEdit *txtNumofDays_, *txtOccursWeek_, *txtNumofMonths_;
    std::array<QAbstractButton*, 8> chkDay_{};  ///< 1 Sunday to 7 Saturday.
    QComboBox *lstMonthlyDays_, *clstMonthlyWeek_, *clstMonthlyWeekDay_, *lstMonthlyEvery_;
    QTimeEdit *dtpFreqTime_, *dtpFreqIntervalStart_, *dtpFreqIntervalEnd_;
    QComboBox *lstFreqEvery_, *clstFreqInterval_;
    QDateEdit *dtpDurationStart_, *dtpDurationEnd_;
};

}  // namespace norvelis::ui
