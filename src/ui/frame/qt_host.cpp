#include "ui/frame/qt_host.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <future>

namespace norvelis::ui {

namespace {

constexpr auto kTurnEvery = std::chrono::milliseconds(20);

/// A text of the system on the screen, which breaks lines at LF.
QString Shown(const std::string& text) {
    return QString::fromStdString(text).remove('\r');
}

QString TitleOr(const std::string& title) {
    return title.empty() ? QApplication::applicationDisplayName() : Shown(title);
}

QMessageBox::Icon IconOf(Icon icon) {
    switch (icon) {
        case Icon::Critical:
            return QMessageBox::Critical;
        case Icon::Question:
            return QMessageBox::Question;
        case Icon::Exclamation:
            return QMessageBox::Warning;
        case Icon::Information:
            return QMessageBox::Information;
        case Icon::None:
            break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons ButtonsOf(Buttons buttons) {
    switch (buttons) {
        case Buttons::YesNo:
            return QMessageBox::Yes | QMessageBox::No;
        case Buttons::YesNoCancel:
            return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
        case Buttons::Ok:
            break;
    }
    return QMessageBox::Ok;
}

QMessageBox::StandardButton ButtonOf(Answer answer, Buttons buttons) {
    switch (answer) {
        case Answer::Yes:
            return QMessageBox::Yes;
        case Answer::No:
            return QMessageBox::No;
        case Answer::Cancel:
            return QMessageBox::Cancel;
        case Answer::Ok:
            break;
    }
    return buttons == Buttons::Ok ? QMessageBox::Ok : QMessageBox::Yes;
}

Answer AnswerOf(int button) {
    switch (button) {
        case QMessageBox::Yes:
            return Answer::Yes;
        case QMessageBox::No:
            return Answer::No;
        case QMessageBox::Cancel:
            return Answer::Cancel;
        default:
            return Answer::Ok;
    }
}

/// The ordinary cursor for as long as a person is asked something.
class WithoutWaitCursor {
  public:
    WithoutWaitCursor() : waiting_(QApplication::overrideCursor() != nullptr) {
        if (waiting_) QApplication::restoreOverrideCursor();
    }
    ~WithoutWaitCursor() {
        if (waiting_) QApplication::setOverrideCursor(Qt::WaitCursor);
    }
    WithoutWaitCursor(const WithoutWaitCursor&) = delete;
    WithoutWaitCursor& operator=(const WithoutWaitCursor&) = delete;

  private:
    bool waiting_;
};

std::optional<std::string> Chosen(const QString& path) {
    if (path.isEmpty()) return std::nullopt;
    return path.toStdString();
}

}  // namespace

QtHost::QtHost() {
    flush_.setSingleShot(true);
    connect(&flush_, &QTimer::timeout, this, &QtHost::Flush);
}

QWidget* QtHost::Window() const {
    QWidget* window = display_ ? display_->Window() : nullptr;
    return window && window->isVisible() ? window : nullptr;
}

Answer QtHost::MessageBox(const Message& message) {
    const WithoutWaitCursor ordinary;
    const EventsMeanwhile events(*this);
    QMessageBox box(IconOf(message.icon), TitleOr(message.title), Shown(message.text),
                    ButtonsOf(message.buttons), Window());
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(ButtonOf(message.defaultAnswer, message.buttons));
    return AnswerOf(box.exec());
}

std::optional<std::string> QtHost::InputBox(const std::string& prompt, const std::string& title,
                                            const std::string& initial) {
    const WithoutWaitCursor ordinary;
    const EventsMeanwhile events(*this);
    bool accepted = false;
    const QString text = QInputDialog::getText(Window(), TitleOr(title), Shown(prompt), QLineEdit::Normal,
                                               QString::fromStdString(initial), &accepted);
    if (!accepted) return std::nullopt;
    return text.toStdString();
}

std::optional<std::string> QtHost::OpenFileDialog(const std::string& title, const std::string& filter) {
    const WithoutWaitCursor ordinary;
    const EventsMeanwhile events(*this);
    return Chosen(QFileDialog::getOpenFileName(Window(), TitleOr(title), {}, QString::fromStdString(filter)));
}

std::optional<std::string> QtHost::SaveFileDialog(const std::string& title, const std::string& filter,
                                                  const std::string& proposed) {
    const WithoutWaitCursor ordinary;
    const EventsMeanwhile events(*this);
    QFileDialog dialog(Window(), TitleOr(title), {}, QString::fromStdString(filter));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    const QString file = QString::fromStdString(proposed);
    const auto dot = file.lastIndexOf('.');
    dialog.setDefaultSuffix(file.mid(dot + 1));
    if (dot >= 0) dialog.selectFile(file);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return Chosen(dialog.selectedFiles().value(0));
}

std::optional<std::string> QtHost::FolderDialog(const std::string& title) {
    const WithoutWaitCursor ordinary;
    const EventsMeanwhile events(*this);
    return Chosen(QFileDialog::getExistingDirectory(Window(), TitleOr(title)));
}

void QtHost::Status(const std::string& text) {
    status_ = text;
    if (!flush_.isActive()) flush_.start(0);
}

void QtHost::ProgressChanged(Bar bar, const ProgressBar& state) {
    bars_[static_cast<std::size_t>(bar)] = state;
    if (!flush_.isActive()) flush_.start(0);
}

void QtHost::Flush() {
    if (!display_) return;
    if (status_) display_->ShowStatus(Shown(*status_));
    status_.reset();
    for (std::size_t i = 0; i < bars_.size(); ++i) {
        if (bars_[i]) display_->ShowProgress(static_cast<Bar>(i), *bars_[i]);
        bars_[i].reset();
    }
}

void QtHost::WaitCursor(bool on) {
    if (on && !QApplication::overrideCursor()) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
    } else if (!on && QApplication::overrideCursor()) {
        QApplication::restoreOverrideCursor();
    }
}

void QtHost::Turn() {
    const auto now = std::chrono::steady_clock::now();
    if (now - lastTurn_ < kTurnEvery) return;
    QApplication::processEvents();
    lastTurn_ = std::chrono::steady_clock::now();
}

void QtHost::OpenScreen(Screen screen, bool modal) {
    const EventsMeanwhile events(*this);
    if (display_) display_->OpenScreen(screen, modal);
}

void QtHost::RunInBackground(const BackgroundWork& work) {
    constexpr auto kBetweenTurns = std::chrono::milliseconds(5);
    auto done = std::async(std::launch::async, work, Cancellation());
    do {
        TakeTurn();  // For short works one after the other, too.
    } while (done.wait_for(kBetweenTurns) != std::future_status::ready);
    done.get();
}

}  // namespace norvelis::ui
