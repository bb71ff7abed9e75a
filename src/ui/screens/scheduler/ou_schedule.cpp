#include "ui/screens/scheduler/ou_schedule.h"

#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QStackedWidget>
#include <QTimeEdit>
#include <QVBoxLayout>
#include <algorithm>

#include "scheduler/schedule_xml.h"
#include "ui/controls/worded_mark.h"

namespace norvelis::ui {

namespace {

constexpr int kGap = 5;
constexpr auto kDateForm = "M/d/yyyy", kTimeForm = "h:mm AP";

/// A text box for a count: keys that are no digits are dropped, those that edit are not.
class CountEdit : public QLineEdit {
  public:
    using QLineEdit::QLineEdit;

  protected:
    void keyPressEvent(QKeyEvent* event) override {
        const QString typed = event->text();
        const bool dropped = std::any_of(typed.begin(), typed.end(),
                                         [](QChar c) { return c.isPrint() && (c < '0' || c > '9'); });
        if (!dropped) QLineEdit::keyPressEvent(event);
    }
};

template <typename T>
T* Named(T* control, const char* name, const char* spoken) {
    control->setObjectName(name);
    control->setAccessibleName(spoken);
    return control;
}

QLineEdit* MakeCount(const char* name, const char* spoken, QWidget* parent) {
    auto* edit = Named(new CountEdit(parent), name, spoken);
    edit->setInputMethodHints(Qt::ImhDigitsOnly);
    edit->setFixedWidth(edit->fontMetrics().horizontalAdvance("00000") + 14);
    return edit;
}

/// A drop-down for a number, which shows any text.
QComboBox* MakeNumberList(const char* name, const char* spoken, QWidget* parent) {
    auto* list = Named(new QComboBox(parent), name, spoken);
    list->setEditable(true);
    list->setCompleter(nullptr);
    list->setInsertPolicy(QComboBox::NoInsert);
    list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    list->setMinimumContentsLength(2);
    return list;
}

QComboBox* MakeChoice(const char* name, const char* spoken, const QStringList& entries, QWidget* parent) {
    auto* list = Named(new QComboBox(parent), name, spoken);
    list->addItems(entries);
    list->setCurrentIndex(kNothingChosen);
    return list;
}

QTimeEdit* MakeTimePicker(const char* name, const char* spoken, QWidget* parent) {
    auto* picker = Named(new QTimeEdit(parent), name, spoken);
    picker->setDisplayFormat(kTimeForm);
    return picker;
}

QDateEdit* MakeDatePicker(const char* name, const char* spoken, QWidget* parent) {
    auto* picker = Named(new QDateEdit(parent), name, spoken);
    picker->setDateRange(QDate(100, 1, 1), QDate(9999, 12, 31));
    picker->setDisplayFormat(kDateForm);
    picker->setCalendarPopup(true);
    return picker;
}

void AddNumbers(QComboBox* list, int first, int last) {
    const QString before = list->currentText();
    for (int number = first; number <= last; ++number) list->addItem(QString::number(number));
    list->setEditText(before);
}

template <typename... Parts>
QHBoxLayout* Row(Parts... parts) {
    auto* row = new QHBoxLayout;
    row->setSpacing(kGap);
    const auto add = [row](auto* part) {
        if constexpr (std::is_base_of_v<QLayout, std::remove_pointer_t<decltype(part)>>) {
            row->addLayout(part);
        } else {
            row->addWidget(part);
        }
    };
    (add(parts), ...);
    row->addStretch();
    return row;
}

QVBoxLayout* Column(QWidget* frame) {
    auto* column = new QVBoxLayout(frame);
    column->setContentsMargins(9, 6, 9, 7);
    column->setSpacing(kGap);
    return column;
}

QGroupBox* MakeFrame(const char* name, const char* caption, QWidget* parent) {
    auto* frame = new QGroupBox(caption, parent);
    frame->setObjectName(name);
    return frame;
}

QTime ToQTime(DateTime moment) {
    const CalendarTime calendar = ToCalendar(moment);
    return {calendar.hour, calendar.minute};
}
QDate ToQDate(DateTime moment) {
    const CalendarTime calendar = ToCalendar(moment);
    return {calendar.year, calendar.month, calendar.day};
}
DateTime FromPicker(const QTimeEdit& picker) {
    CalendarTime time;
    time.hour = picker.time().hour();
    time.minute = picker.time().minute();
    return ToDateTime(time);
}
DateTime FromPicker(const QDateEdit& picker) {
    const QDate date = picker.date();
    return ToDateTime({date.year(), date.month(), date.day(), 0, 0, 0});
}

/// An index that the group does not have leaves nothing checked, which an exclusive group does not allow.
void Check(QButtonGroup& options, int index) {
    if (QAbstractButton* option = options.button(index)) {
        option->setChecked(true);
    } else if (QAbstractButton* checked = options.checkedButton()) {
        options.setExclusive(false);
        checked->setChecked(false);
        options.setExclusive(true);
    }
}

}  // namespace

ouSchedule::ouSchedule(Clock& clock, QWidget* parent) : QWidget(parent), clock_(clock) {
    setObjectName("ouSchedule");
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    row->addWidget(Occurrence(), 1);
    row->addWidget(DailyFrequency());
    row->addWidget(Duration());
    FillLists();
    Show(StartUpControls(clock_.Now()));
    EnableBranches();
    TellChanges();
}

QWidget* ouSchedule::Occurrence() {
    auto* part = new QWidget(this);
    auto* column = new QVBoxLayout(part);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(kGap);
    auto* options = new QHBoxLayout;
    const char* const captions[] = {"&Daily", "&Weekly", "&Monthly"};
    for (int i = 0; i < 3; ++i) {
        auto* option = new WordedRadio(QString("optOccurs%1").arg(i), captions[i], part);
        optOccurs_.addButton(option->Button(), i);
        options->addLayout(option);
    }
    column->addLayout(options);
    frameOccurs_ = new QStackedWidget(part);
    for (QWidget* page : {DailyPage(), WeeklyPage(), MonthlyPage()}) frameOccurs_->addWidget(page);
    column->addWidget(frameOccurs_, 1);
    return part;
}

QWidget* ouSchedule::DailyPage() {
    auto* page = MakeFrame("frameOccurs0", "Daily", this);
    txtNumofDays_ = MakeCount("txtNumofDays", "Every so many days", page);
    auto* column = Column(page);
    column->addLayout(Row(new QLabel("Every", page), txtNumofDays_, new QLabel("Day(s)", page)));
    column->addStretch();
    return page;
}

QWidget* ouSchedule::WeeklyPage() {
    auto* page = MakeFrame("frameOccurs1", "Weekly", this);
    txtOccursWeek_ = MakeCount("txtOccursWeek", "Every so many weeks", page);
    auto* days = new QGridLayout;
    const char* const captions[] = {"Sun", "Mon", "Tue", "Wed", "Thur", "Fri", "Sat"};
    for (int day = 1; day <= 7; ++day) {
        auto* check = new WordedCheck(QString("chkDay%1").arg(day), captions[day - 1], page);
        chkDay_[static_cast<std::size_t>(day)] = check->Button();
        days->addLayout(check, (day - 1) / 4, (day - 1) % 4);
    }
    auto* column = Column(page);
    column->addLayout(Row(new QLabel("Every", page), txtOccursWeek_, new QLabel("Week(s) on:", page)));
    column->addLayout(days);
    column->addStretch();
    return page;
}

QWidget* ouSchedule::MonthlyPage() {
    auto* page = MakeFrame("frameOccurs2", "Monthly", this);
    auto* each = new WordedRadio("optMonthly0", "Each", page);
    auto* the = new WordedRadio("optMonthly1", "The", page);
    optMonthly_.addButton(each->Button(), 0);
    optMonthly_.addButton(the->Button(), 1);
    lstMonthlyDays_ = MakeNumberList("lstMonthlyDays", "Day of the month", page);
    txtNumofMonths_ = MakeCount("txtNumofMonths", "Every so many months", page);
    clstMonthlyWeek_ =
        MakeChoice("clstMonthlyWeek", "Which of the month", {"1st", "2nd", "3rd", "4th", "Last"}, page);
    clstMonthlyWeekDay_ = MakeChoice("clstMonthlyWeekDay", "Day of the week",
                                     {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday",
                                      "Saturday", "Day", "Weekday", "Weekend"},
                                     page);
    lstMonthlyEvery_ = MakeNumberList("lstMonthlyEvery", "Of every so many months", page);
    auto* column = Column(page);
    column->addLayout(Row(each, lstMonthlyDays_, new QLabel("Day Of", page), txtNumofMonths_,
                          new QLabel("Month(s)", page)));
    column->addLayout(Row(the, clstMonthlyWeek_, clstMonthlyWeekDay_));
    column->addLayout(Row(new QLabel("of Every", page), lstMonthlyEvery_, new QLabel("Month(s)", page)));
    column->addStretch();
    return page;
}

QWidget* ouSchedule::DailyFrequency() {
    auto* frame = MakeFrame("frameDailyFrequency", "Daily Frequency", this);
    auto* once = new WordedRadio("optFreq0", "Occures Once at:", frame);
    auto* every = new WordedRadio("optFreq1", "Occures Every:", frame);
    optFreq_.addButton(once->Button(), 0);
    optFreq_.addButton(every->Button(), 1);
    dtpFreqTime_ = MakeTimePicker("dtpFreqTime", "Occures Once at", frame);
    lstFreqEvery_ = MakeNumberList("lstFreqEvery", "Occures Every", frame);
    clstFreqInterval_ = MakeChoice("clstFreqInterval", "Unit of the interval", {"Hour", "Min"}, frame);
    dtpFreqIntervalStart_ = MakeTimePicker("dtpFreqIntervalStart", "Starting at", frame);
    dtpFreqIntervalEnd_ = MakeTimePicker("dtpFreqIntervalEnd", "Ending at", frame);
    auto* grid = new QGridLayout;
    grid->setSpacing(kGap);
    grid->addLayout(once, 0, 0);
    grid->addWidget(dtpFreqTime_, 0, 1, 1, 2);
    grid->addLayout(every, 1, 0);
    grid->addWidget(lstFreqEvery_, 1, 1);
    grid->addWidget(clstFreqInterval_, 1, 2);
    grid->addWidget(new QLabel("Starting at:", frame), 2, 0, Qt::AlignRight);
    grid->addWidget(dtpFreqIntervalStart_, 2, 1, 1, 2);
    grid->addWidget(new QLabel("Ending at:", frame), 3, 0, Qt::AlignRight);
    grid->addWidget(dtpFreqIntervalEnd_, 3, 1, 1, 2);
    auto* column = Column(frame);
    column->addLayout(grid);
    column->addStretch();
    return frame;
}

QWidget* ouSchedule::Duration() {
    auto* frame = MakeFrame("frameDuration", "Duration", this);
    auto* end = new WordedRadio("opDurationEnd0", "&End Date:", frame);
    auto* noEnd = new WordedRadio("opDurationEnd1", "No End D&ate:", frame);
    opDurationEnd_.addButton(end->Button(), 0);
    opDurationEnd_.addButton(noEnd->Button(), 1);
    dtpDurationStart_ = MakeDatePicker("dtpDurationStart", "Start Date", frame);
    dtpDurationEnd_ = MakeDatePicker("dtpDurationEnd", "End Date", frame);
    auto* startWords = new QLabel("&Start Date:", frame);
    startWords->setBuddy(dtpDurationStart_);
    auto* grid = new QGridLayout;
    grid->setSpacing(kGap);
    grid->addWidget(startWords, 0, 0);
    grid->addWidget(dtpDurationStart_, 0, 1);
    grid->addLayout(end, 1, 0);
    grid->addWidget(dtpDurationEnd_, 1, 1);
    grid->addLayout(noEnd, 2, 0, 1, 2);
    auto* column = Column(frame);
    column->addLayout(grid);
    column->addStretch();
    return frame;
}

void ouSchedule::FillLists() {
    AddNumbers(lstMonthlyDays_, 1, 28);
    AddNumbers(lstMonthlyEvery_, 1, 12);
    AddNumbers(lstFreqEvery_, 1, 12);
}

void ouSchedule::AddIntervals() {
    AddNumbers(lstFreqEvery_, 0, clstFreqInterval_->currentText() == "Hour" ? 12 : 60);
}

void ouSchedule::EnableBranches() {
    frameOccurs_->setCurrentIndex(std::max(0, optOccurs_.checkedId()));
    const bool once = optFreq_.checkedId() == 0;
    dtpFreqTime_->setEnabled(once);
    for (QWidget* control :
         {static_cast<QWidget*>(lstFreqEvery_), static_cast<QWidget*>(clstFreqInterval_),
          static_cast<QWidget*>(dtpFreqIntervalStart_), static_cast<QWidget*>(dtpFreqIntervalEnd_)})
        control->setEnabled(!once);
    const bool each = optMonthly_.checkedId() == 0;
    lstMonthlyDays_->setEnabled(each);
    for (QWidget* control : {clstMonthlyWeek_, clstMonthlyWeekDay_, lstMonthlyEvery_})
        control->setEnabled(!each);
    dtpDurationEnd_->setEnabled(opDurationEnd_.checkedId() == 0);
}

void ouSchedule::TellChanges() {
    for (QButtonGroup* options : {&optOccurs_, &optMonthly_, &optFreq_, &opDurationEnd_}) {
        connect(options, &QButtonGroup::buttonToggled, this, &ouSchedule::EnableBranches);
        connect(options, &QButtonGroup::idClicked, this, &ouSchedule::Changed);
    }
    for (QAbstractButton* day : chkDay_) {
        if (day) connect(day, &QAbstractButton::clicked, this, &ouSchedule::Changed);
    }
    for (QLineEdit* count : {txtNumofDays_, txtOccursWeek_, txtNumofMonths_})
        connect(count, &QLineEdit::textEdited, this, &ouSchedule::Changed);
    connect(clstFreqInterval_, &QComboBox::activated, this, &ouSchedule::AddIntervals);
    for (QComboBox* list : {lstMonthlyDays_, clstMonthlyWeek_, clstMonthlyWeekDay_, lstMonthlyEvery_,
                            lstFreqEvery_, clstFreqInterval_}) {
        connect(list, &QComboBox::activated, this, &ouSchedule::Changed);
        if (list->isEditable()) connect(list->lineEdit(), &QLineEdit::textEdited, this, &ouSchedule::Changed);
    }
    for (QDateTimeEdit* picker :
         {static_cast<QDateTimeEdit*>(dtpFreqTime_), static_cast<QDateTimeEdit*>(dtpFreqIntervalStart_),
          static_cast<QDateTimeEdit*>(dtpFreqIntervalEnd_), static_cast<QDateTimeEdit*>(dtpDurationStart_),
          static_cast<QDateTimeEdit*>(dtpDurationEnd_)})
        connect(picker, &QDateTimeEdit::dateTimeChanged, this, &ouSchedule::Changed);
}

void ouSchedule::Show(const DefinitionControls& controls) {
    Check(optOccurs_, controls.optOccurs);
    txtNumofDays_->setText(QString::fromStdString(controls.txtNumofDays));
    txtOccursWeek_->setText(QString::fromStdString(controls.txtOccursWeek));
    for (std::size_t day = 1; day < chkDay_.size(); ++day) chkDay_[day]->setChecked(controls.chkDay[day]);
    Check(optMonthly_, controls.optMonthly);
    lstMonthlyDays_->setEditText(QString::fromStdString(controls.lstMonthlyDays));
    txtNumofMonths_->setText(QString::fromStdString(controls.txtNumofMonths));
    clstMonthlyWeek_->setCurrentIndex(controls.clstMonthlyWeek);
    clstMonthlyWeekDay_->setCurrentIndex(controls.clstMonthlyWeekDay);
    lstMonthlyEvery_->setEditText(QString::fromStdString(controls.lstMonthlyEvery));
    Check(optFreq_, controls.optFreq);
    dtpFreqTime_->setTime(ToQTime(controls.dtpFreqTime));
    lstFreqEvery_->setEditText(QString::fromStdString(controls.lstFreqEvery));
    clstFreqInterval_->setCurrentIndex(controls.clstFreqInterval);
    dtpFreqIntervalStart_->setTime(ToQTime(controls.dtpFreqIntervalStart));
    dtpFreqIntervalEnd_->setTime(ToQTime(controls.dtpFreqIntervalEnd));
    dtpDurationStart_->setDate(ToQDate(controls.dtpDurationStart));
    dtpDurationEnd_->setDate(ToQDate(controls.dtpDurationEnd));
    Check(opDurationEnd_, controls.opDurationEnd);
}

DefinitionControls ouSchedule::Shown() const {
    DefinitionControls controls;
    controls.optOccurs = optOccurs_.checkedId();
    controls.txtNumofDays = txtNumofDays_->text().toStdString();
    controls.txtOccursWeek = txtOccursWeek_->text().toStdString();
    for (std::size_t day = 1; day < chkDay_.size(); ++day) controls.chkDay[day] = chkDay_[day]->isChecked();
    controls.optMonthly = optMonthly_.checkedId();
    controls.lstMonthlyDays = lstMonthlyDays_->currentText().toStdString();
    controls.txtNumofMonths = txtNumofMonths_->text().toStdString();
    controls.clstMonthlyWeek = clstMonthlyWeek_->currentIndex();
    controls.clstMonthlyWeekDay = clstMonthlyWeekDay_->currentIndex();
    controls.lstMonthlyEvery = lstMonthlyEvery_->currentText().toStdString();
    controls.optFreq = optFreq_.checkedId();
    controls.dtpFreqTime = FromPicker(*dtpFreqTime_);
    controls.lstFreqEvery = lstFreqEvery_->currentText().toStdString();
    controls.clstFreqInterval = clstFreqInterval_->currentIndex();
    controls.dtpFreqIntervalStart = FromPicker(*dtpFreqIntervalStart_);
    controls.dtpFreqIntervalEnd = FromPicker(*dtpFreqIntervalEnd_);
    controls.dtpDurationStart = FromPicker(*dtpDurationStart_);
    controls.dtpDurationEnd = FromPicker(*dtpDurationEnd_);
    controls.opDurationEnd = opDurationEnd_.checkedId();
    return controls;
}

void ouSchedule::ScheduleXML_Open(const XmlNode& element) {
    record_ = ReadScheduleXML(element, clock_.Now());
    Show(ShowDefinition(record_));
    emit Changed();
}

XmlNode ouSchedule::ScheduleXML_Save() {
    ScheduleRecord gathered = record_;
    GatherDefinition(Shown(), gathered);
    XmlNode element = WriteScheduleXML(gathered, clock_.Now());
    record_ = gathered;
    return element;
}

}  // namespace norvelis::ui
