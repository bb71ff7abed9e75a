#pragma once

#include <deque>
#include <future>
#include <string>
#include <vector>

#include "core/host.h"

namespace norvelis {

/// The Host of tests: records what was shown and answers from lists; an empty list answers with the default
/// (Ok or Yes to a box, nothing chosen in a dialog).
class ScriptedHost : public Host {
  public:
    using Host::MessageBox;

    struct OpenedScreen {
        Screen screen;
        bool modal;
        bool operator==(const OpenedScreen&) const = default;
    };

    std::deque<Answer> answers;                     ///< For message boxes that ask.
    std::deque<std::optional<std::string>> inputs;  ///< For input boxes and dialogs, in order of asking.
    std::vector<Message> messages;
    std::vector<std::string> statuses;
    std::vector<std::pair<Bar, ProgressBar>> progress;
    std::vector<OpenedScreen> screens;
    int waitCursor = 0;  ///< Times switched on less times switched off.
    long yields = 0;
    long cancelAtYield = 0;  ///< The turn at which the person cancels; 0 is never.

    Answer MessageBox(const Message& message) override {
        messages.push_back(message);
        if (message.buttons == Buttons::Ok) return Answer::Ok;
        if (answers.empty()) return Answer::Yes;
        const Answer answer = answers.front();
        answers.pop_front();
        return answer;
    }
    std::optional<std::string> InputBox(const std::string&, const std::string&, const std::string&) override {
        return NextInput();
    }
    std::optional<std::string> OpenFileDialog(const std::string&, const std::string&) override {
        return NextInput();
    }
    std::optional<std::string> SaveFileDialog(const std::string&, const std::string&,
                                              const std::string&) override {
        return NextInput();
    }
    std::optional<std::string> FolderDialog(const std::string&) override { return NextInput(); }
    void Status(const std::string& text) override { statuses.push_back(text); }
    void ProgressChanged(Bar bar, const ProgressBar& state) override { progress.emplace_back(bar, state); }
    void WaitCursor(bool on) override { waitCursor += on ? 1 : -1; }
    void OpenScreen(Screen screen, bool modal) override { screens.push_back({screen, modal}); }
    /// In a thread of its own, as on the desktop, after the one turn that tests can count on.
    void RunInBackground(const BackgroundWork& work) override {
        TakeTurn();
        std::async(std::launch::async, work, Cancellation()).get();
    }

    std::vector<std::string> Texts() const {
        std::vector<std::string> texts;
        for (const auto& message : messages) texts.push_back(message.text);
        return texts;
    }

  private:
    void Turn() override {
        if (++yields == cancelAtYield) Cancel();
    }
    std::optional<std::string> NextInput() {
        if (inputs.empty()) return std::nullopt;
        auto input = inputs.front();
        inputs.pop_front();
        return input;
    }
};

}  // namespace norvelis
