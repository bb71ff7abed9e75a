#pragma once

#include "core/app_state.h"

namespace norvelis::commands {

/// The Host of a scheduled run: nobody is there. What would be a box goes to the process log, questions have
/// their default, nothing is shown. Turns of the event loop are those of the program's own Host, by which a
/// run can be canceled.
class BatchHost : public Host {
  public:
    explicit BatchHost(AppState& program) : program_(program) {}

    using Host::MessageBox;
    Answer MessageBox(const Message& message) override;
    std::optional<std::string> InputBox(const std::string&, const std::string&, const std::string&) override {
        return std::nullopt;
    }
    std::optional<std::string> OpenFileDialog(const std::string&, const std::string&) override {
        return std::nullopt;
    }
    std::optional<std::string> SaveFileDialog(const std::string&, const std::string&,
                                              const std::string&) override {
        return std::nullopt;
    }
    std::optional<std::string> FolderDialog(const std::string&) override { return std::nullopt; }
    void Status(const std::string&) override {}
    void ProgressChanged(Bar, const ProgressBar&) override {}
    void WaitCursor(bool) override {}
    void OpenScreen(Screen, bool) override {}
    void RunInBackground(const BackgroundWork& work) override { program_.host.RunInBackground(work); }

  private:
    void Turn() override { program_.host.Yield(); }

    AppState& program_;
};

}  // namespace norvelis::commands
