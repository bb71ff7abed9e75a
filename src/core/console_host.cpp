#include "core/console_host.h"

#include <unistd.h>

#include <cstdio>

namespace norvelis {

namespace {

constexpr auto kRepaintEvery = std::chrono::milliseconds(50);
constexpr auto kReportEvery = std::chrono::milliseconds(1000);

void Print(const std::string& text) {
    std::fprintf(stderr, "%s\n", text.c_str());
}

}  // namespace

ConsoleHost::ConsoleHost() : terminal_(isatty(STDERR_FILENO) != 0) {}

ConsoleHost::~ConsoleHost() {
    ClearLine();
}

Answer ConsoleHost::MessageBox(const Message& message) {
    ClearLine();
    if (message.buttons == Buttons::Ok) {
        lastText_ = message.text;
        if (printBoxes_) Print(message.text);
        return Answer::Ok;
    }
    Answer answer = message.defaultAnswer == Answer::Ok ? Answer::Yes : message.defaultAnswer;
    if (const auto known = answers_.find(message.text); known != answers_.end()) answer = known->second;
    Print(message.text + (answer == Answer::Yes ? " Yes" : answer == Answer::No ? " No" : " Cancel"));
    return answer;
}

std::optional<std::string> ConsoleHost::InputBox(const std::string&, const std::string&, const std::string&) {
    return std::nullopt;
}
std::optional<std::string> ConsoleHost::OpenFileDialog(const std::string&, const std::string&) {
    return std::nullopt;
}
std::optional<std::string> ConsoleHost::SaveFileDialog(const std::string&, const std::string&,
                                                       const std::string&) {
    return std::nullopt;
}
std::optional<std::string> ConsoleHost::FolderDialog(const std::string&) {
    return std::nullopt;
}

void ConsoleHost::Status(const std::string& text) {
    if (text.empty()) return;  // What is done stays on the line until the next box.
    status_ = text;
    Repaint();
}

// Bars are of interest once a command turns out to be long.
void ConsoleHost::ProgressChanged(Bar, const ProgressBar& state) {
    if (state.Text.empty() || std::chrono::steady_clock::now() < started_ + kReportEvery) return;
    status_ = state.Text;
    Repaint();
}

// On a terminal one line moves; a script's log gets a line now and then instead of thousands.
void ConsoleHost::Repaint() {
    const auto now = std::chrono::steady_clock::now();
    if (now < nextPaint_ || status_ == line_) return;
    nextPaint_ = now + (terminal_ ? kRepaintEvery : kReportEvery);
    line_ = status_;
    if (terminal_) {
        std::fprintf(stderr, "\r\033[K%s", line_.substr(0, 78).c_str());
        std::fflush(stderr);
    } else {
        Print(line_);
    }
}

void ConsoleHost::ClearLine() {
    if (terminal_ && !line_.empty()) {
        std::fprintf(stderr, "\r\033[K");
        line_.clear();
    }
}

}  // namespace norvelis
