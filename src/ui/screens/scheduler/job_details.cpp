#include "ui/screens/scheduler/job_details.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

#include "ui/controls/elided_label.h"
#include "ui/controls/worded_mark.h"

namespace norvelis::ui {

namespace {

constexpr int kGap = 5;
constexpr int kYes = 0, kNo = 1;  ///< Of ProcessedOption.
constexpr auto kRowTitle = "Schedule Details", kNewTitle = "New Schedule";

/// Any text that the store holds fits in.
QLineEdit* MakeText(const char* name, const char* spoken, QWidget* parent) {
    constexpr int kNoLimit = 1 << 24;
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(name);
    edit->setAccessibleName(spoken);
    edit->setMaxLength(kNoLimit);
    return edit;
}

void SetText(QLineEdit& edit, const std::string& text) {
    edit.setText(QString::fromStdString(text));
    edit.setCursorPosition(0);
}

}  // namespace

JobDetails::JobDetails(QWidget* parent)
    : QGroupBox(kNewTitle, parent),
      lblElement_(new QLabel(this)),
      lblFax_(new ElidedLabel("lblFax", {}, this)),
      txtName_(MakeText("txtName", "Name", this)),
      txtAddress_(MakeText("txtAddress", "Address", this)),
      txtTel_(MakeText("txtTel", "Tel", this)),
      txtEmail_(MakeText("txtEmail", "Email", this)),
      txtNextSchedule2_(MakeText("txtNextSchedule2", "Next Schedule", this)),
      FilenameRec_(MakeText("FilenameRec", "IDMS Report", this)),
      VisioFile_(MakeText("VisioFile", "Visio File", this)) {
    setObjectName("Frame4");
    lblElement_->setObjectName("lblElement");
    FilenameRec_->setReadOnly(true);
    FilenameRec_->setPlaceholderText("Change picks the report");
    connect(FilenameRec_, &QLineEdit::textChanged, this, &JobDetails::ReportChanged);
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(9, 6, 9, 7);
    grid->setHorizontalSpacing(kGap);
    grid->setVerticalSpacing(kGap);
    FillGrid(*grid);
    Clear();
}

void JobDetails::FillGrid(QGridLayout& grid) {
    const auto words = [&grid, this](int row, int column, const char* text) {
        grid.addWidget(new QLabel(text, this), row, column);
    };
    words(0, 0, "ID ");
    grid.addWidget(lblElement_, 0, 1);
    words(0, 2, "Processed");
    auto* options = new QHBoxLayout;
    for (const int option : {kYes, kNo}) {
        auto* radio =
            new WordedRadio(QString("ProcessedOption%1").arg(option), option == kYes ? "YES" : "NO", this);
        ProcessedOption_.addButton(radio->Button(), option);
        options->addLayout(radio);
    }
    grid.addLayout(options, 0, 3);
    words(1, 0, "Name");
    grid.addWidget(txtName_, 1, 1, 1, 3);
    words(2, 0, "Address");
    grid.addWidget(txtAddress_, 2, 1, 1, 3);
    words(3, 0, "Tel");
    grid.addWidget(txtTel_, 3, 1);
    words(3, 2, "Fax");
    grid.addWidget(lblFax_, 3, 3);
    words(4, 0, "Email");
    grid.addWidget(txtEmail_, 4, 1, 1, 3);
    words(5, 0, "Next");
    grid.addWidget(txtNextSchedule2_, 5, 1, 1, 3);
    words(6, 0, "Report");
    auto* report = new QHBoxLayout;
    report->setSpacing(kGap);
    report->addWidget(FilenameRec_, 1);
    report->addWidget(
        MakeButton("chooseFile", "Change", "Pick the schema report", &JobDetails::ReportWanted));
    report->addWidget(MakeButton("cmdViewReport", "View", "Show the report", &JobDetails::ShowReportWanted));
    grid.addLayout(report, 6, 1, 1, 3);
    words(7, 0, "Visio File");
    auto* drawing = new QHBoxLayout;
    drawing->setSpacing(kGap);
    drawing->addWidget(VisioFile_, 1);
    drawing->addWidget(MakeButton("cmdViewVisio", "View Visio File", "Show the file that is named here",
                                  &JobDetails::ShowDrawingWanted));
    grid.addLayout(drawing, 7, 1, 1, 3);
    grid.setColumnStretch(1, 1);
    grid.setColumnStretch(3, 1);
    grid.setRowStretch(8, 1);
}

SkinButton* JobDetails::MakeButton(const QString& name, const QString& caption, const QString& toolTip,
                                   void (JobDetails::*wanted)()) {
    auto* button = new SkinButton(name, caption, this);
    button->setToolTip(toolTip);
    connect(button, &QPushButton::clicked, this, wanted);
    return button;
}

void JobDetails::Fill(const Job& job) {
    SetText(*txtName_, job.name);
    SetText(*txtAddress_, job.address.value_or(""));
    SetText(*txtTel_, job.tel.value_or(""));
    SetText(*txtEmail_, job.email.value_or(""));
    SetText(*FilenameRec_, job.idmsreport);
}

void JobDetails::Clear() {
    CopyFrom({});
    SetNextDate("");
}

void JobDetails::CopyFrom(const Job& job) {
    row_.reset();
    setTitle(kNewTitle);
    lblElement_->clear();
    lblFax_->clear();
    Fill(job);
    VisioFile_->clear();
    ProcessedOption_.button(kNo)->setChecked(true);
}

void JobDetails::ShowRow(const Job& job) {
    row_ = job;
    setTitle(kRowTitle);
    lblElement_->setText(QString::number(job.scheduleid));
    lblFax_->setText(QString::fromStdString(job.fax.value_or("")));
    Fill(job);
    SetNextDate(DueText(job));
    SetText(*VisioFile_, job.visiofile.value_or(" "));
    ProcessedOption_.button(job.processed ? kYes : kNo)->setChecked(true);
}

Job JobDetails::Entered() const {
    Job job;
    if (row_) job.scheduleid = row_->scheduleid;
    job.name = txtName_->text().toStdString();
    job.address = txtAddress_->text().toStdString();
    job.tel = txtTel_->text().toStdString();
    job.email = txtEmail_->text().toStdString();
    job.idmsreport = FilenameRec_->text().toStdString();
    job.processed = ProcessedOption_.checkedId() == kYes;
    job.visiofile = VisioFile_->text().toStdString();
    return job;
}

std::string JobDetails::NextDate() const {
    return txtNextSchedule2_->text().toStdString();
}

void JobDetails::SetNextDate(const std::string& date) {
    SetText(*txtNextSchedule2_, date);
}

void JobDetails::SetReport(const std::string& path) {
    SetText(*FilenameRec_, path);
}

void JobDetails::FocusOn(JobField field) {
    QLineEdit* const edits[] = {txtName_, FilenameRec_, txtTel_, txtNextSchedule2_};
    edits[static_cast<std::size_t>(field)]->setFocus();
}

}  // namespace norvelis::ui
