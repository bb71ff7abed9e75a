#pragma once

#include <chrono>
#include <map>
#include <string>

#include "core/host.h"

namespace norvelis {

/// The Host of norvelis-cli: boxes, status and progress go to standard error (a moving bar only on a
/// terminal), questions are answered by what the options said or by their default.
class ConsoleHost : public Host {
  public:
    using Host::MessageBox;

    ConsoleHost();
    ~ConsoleHost() override;

    /// Answers every question whose text is `text`.
    void AnswerTo(const std::string& text, Answer answer) { answers_[text] = answer; }
    /// The last text shown in a box without a question: a command's final word.
    const std::string& LastText() const { return lastText_; }
    /// Off: boxes are kept for LastText and not printed, for commands that print the word themselves.
    void PrintBoxes(bool on) { printBoxes_ = on; }

    Answer MessageBox(const Message& message) override;
    std::optional<std::string> InputBox(const std::string&, const std::string&, const std::string&) override;
    std::optional<std::string> OpenFileDialog(const std::string&, const std::string&) override;
    std::optional<std::string> SaveFileDialog(const std::string&, const std::string&,
                                              const std::string&) override;
    std::optional<std::string> FolderDialog(const std::string&) override;
    void Status(const std::string& text) override;
    void ProgressChanged(Bar bar, const ProgressBar& state) override;
    void WaitCursor(bool) override {}
    void OpenScreen(Screen, bool) override {}

  private:
    void Turn() override {}
    void ClearLine();
    void Repaint();

    std::map<std::string, Answer> answers_;
    std::string lastText_, status_, line_;
    bool printBoxes_ = true;
    bool terminal_;
    std::chrono::steady_clock::time_point started_ = std::chrono::steady_clock::now(), nextPaint_{};
};

}  // namespace norvelis
