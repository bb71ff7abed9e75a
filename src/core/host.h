#pragma once

#include <functional>
#include <optional>
#include <stop_token>
#include <string>

// The Host: everything that the logic says to a person or asks of one. Screens, the command line and tests
// each bring their own; logic never includes a widget.
namespace norvelis {

enum class Buttons { Ok, YesNo, YesNoCancel };
enum class Answer { Ok, Cancel, Yes, No };

/// The published numbers of box icons; the error log passes them on.
enum class Icon { None = 0, Critical = 16, Question = 32, Exclamation = 48, Information = 64 };

struct Message {
    std::string text;
    std::string title;  ///< Empty: the program's name.
    Buttons buttons = Buttons::Ok;
    Icon icon = Icon::None;
    Answer defaultAnswer = Answer::Ok;  ///< Ok stands for the first button.
};

/// The screens that logic opens by name.
enum class Screen {
    Treeview,
    TreeviewMax,
    Listview,
    IsolateView,
    Settings,
    ConvertSql,
    Scheduler,
    ReportViewer,
    DrawingViewer,
    About,
    Findings
};

/// The bars that show progress: a pair (a line of text, a value) on the tree screen and one on the progress
/// form.
enum class Bar { TreeviewText, TreeviewValue, BackgroundText, BackgroundValue };

/// A bar's state, changed by BResetprogressbar and BStepprogressbar (core/progress.h).
struct ProgressBar {
    std::string Text;
    double Min = 0, Max = 100, Value = 0;
    double Tag = 0;  ///< Running total; may pass Max, which Value never does.
    bool Visible = false;
    double Percent() const { return Max > Min ? 100.0 * (Value - Min) / (Max - Min) : 0; }
};

/// Work that may run in another thread. It asks the token where it may stop early, calls nothing of the Host,
/// and nobody else touches what it works on meanwhile.
using BackgroundWork = std::function<void(std::stop_token canceled)>;

class Host {
  public:
    virtual ~Host() = default;

    virtual Answer MessageBox(const Message& message) = 0;
    void MessageBox(const std::string& text) {
        MessageBox(Message{text, {}, Buttons::Ok, Icon::None, Answer::Ok});
    }

    /// Nothing when the person cancels.
    virtual std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                                const std::string& initial) = 0;
    virtual std::optional<std::string> OpenFileDialog(const std::string& title,
                                                      const std::string& filter) = 0;
    virtual std::optional<std::string> FolderDialog(const std::string& title) = 0;

    virtual void Status(const std::string& text) = 0;
    virtual void ProgressChanged(Bar bar, const ProgressBar& state) = 0;
    virtual void WaitCursor(bool on) = 0;

    /// A turn of the event loop. Called at every row and line, so it must cost next to nothing: an
    /// implementation does real work at most about every 20 ms.
    virtual void Yield() = 0;

    /// Shows a screen; modal waits until the person closes it.
    virtual void OpenScreen(Screen screen, bool modal) = 0;

    /// Runs the work and returns when it has ended; what it throws goes through. A host with an event loop
    /// gives it turns meanwhile; one without simply does the work.
    virtual void RunInBackground(const BackgroundWork& work) { work(Cancellation()); }

    // The person's wish that the running command ends early, stated in the Host's own thread. A command asks
    // for it where it may stop; work in the background is handed the token.
    std::stop_token Cancellation() const { return cancellation_.get_token(); }
    void Cancel() { cancellation_.request_stop(); }
    void ForgetCancellation() { cancellation_ = {}; }  ///< Before a command starts.

  private:
    std::stop_source cancellation_;
};

/// The wait cursor for the length of a command, whichever way it is left.
class clsHourglass {
  public:
    explicit clsHourglass(Host& host) : host_(host) {
        host_.WaitCursor(true);
        host_.Yield();
    }
    ~clsHourglass() { host_.WaitCursor(false); }
    clsHourglass(const clsHourglass&) = delete;
    clsHourglass& operator=(const clsHourglass&) = delete;

  private:
    Host& host_;
};

}  // namespace norvelis
