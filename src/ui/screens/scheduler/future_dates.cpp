#include "ui/screens/scheduler/future_dates.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QTextEdit>

#include "scheduler/booking_words.h"

namespace norvelis::ui {

FutureDates::FutureDates(Clock& clock, QWidget* parent)
    : QWidget(parent), clock_(clock), lstFuture_(new QListWidget(this)), words_(new QTextEdit(this)) {
    lstFuture_->setObjectName("lstFuture");
    lstFuture_->setAccessibleName("Dates that are booked");
    lstFuture_->setUniformItemSizes(true);
    words_->setObjectName("bookingWords");
    words_->setAccessibleName("What is booked, in words");
    words_->setReadOnly(true);
    words_->setTabChangesFocus(true);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(lstFuture_, 2);
    row->addWidget(words_, 3);
}

void FutureDates::Show(const XmlNode& scheduleElement, const FutureRuns& runs) {
    element_ = scheduleElement;
    runs_ = runs;
    definitionChanged_ = false;
    QStringList entries;
    for (const std::string& date : runs.lstFuture) entries << QString::fromStdString(date);
    lstFuture_->clear();
    lstFuture_->addItems(entries);
    FillWords();
}

void FutureDates::SetAlsoNext(bool alsoNext) {
    alsoNext_ = alsoNext;
    FillWords();
}

void FutureDates::SetReport(const std::string& path) {
    report_ = path;
    FillWords();
}

void FutureDates::DefinitionChanged() {
    if (definitionChanged_) return;
    definitionChanged_ = true;
    FillWords();
}

std::vector<std::string> FutureDates::DatesToBook() const {
    return norvelis::DatesToBook(runs_, alsoNext_);
}

void FutureDates::FillWords() {
    if (!element_) return;
    QStringList lines;
    if (definitionChanged_)
        lines << "The schedule above has changed since: Calculate Next Date works out its dates.";
    if (const std::string missing = report_.empty() ? "" : MissingReport(report_); !missing.empty())
        lines << QString::fromStdString(missing);
    for (const std::string& line : WordsBeforeBooking(*element_, runs_, alsoNext_, clock_.Now()))
        lines << QString::fromStdString(line);
    words_->setPlainText(lines.join('\n'));
}

}  // namespace norvelis::ui
