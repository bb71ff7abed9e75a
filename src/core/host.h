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
    Findings,
    Help,
    PrintPreview,
    TableProcedures,
    Find,
    Compare
};

/// The bars that show progress: a pair (a line of text, a value) on the tree screen and one on the progress
/// form.
enum class Bar { TreeviewText, TreeviewValue, BackgroundText, BackgroundValue };

inline constexpr Bar kAllBars[] = {Bar::TreeviewText, Bar::TreeviewValue, Bar::BackgroundText,
                                   Bar::BackgroundValue};
inline constexpr Bar kTreeBars[] = {Bar::TreeviewText, Bar::TreeviewValue};

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

/// What ends a command that the person has canceled: thrown by Host::Yield, taken by Host::RunCancelable. It
/// is no std::exception, so that handlers of failures let it through; what a scope has begun, its destructors
/// take back.
struct Canceled {};

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
    /// Where to write a file; the person has agreed when there is one already. `proposed` is a file to begin
    /// with ("EMPSCHM.pdf") or an ending alone ("csv"); its ending is added to a name that has none.
    virtual std::optional<std::string> SaveFileDialog(const std::string& title, const std::string& filter,
                                                      const std::string& proposed) = 0;
    virtual std::optional<std::string> FolderDialog(const std::string& title) = 0;

    virtual void Status(const std::string& text) = 0;
    virtual void ProgressChanged(Bar bar, const ProgressBar& state) = 0;
    virtual void WaitCursor(bool on) = 0;

    /// A turn of the event loop. Called at every row and line, so it costs next to nothing. In a cancelable
    /// command it throws Canceled once the person has canceled; in what an event starts meanwhile it does
    /// not.
    void Yield();

    /// Shows a screen; modal waits until the person closes it.
    virtual void OpenScreen(Screen screen, bool modal) = 0;

    /// Runs the work and returns when it has ended; what it throws goes through. A host with an event loop
    /// gives it turns meanwhile; one without simply does the work.
    virtual void RunInBackground(const BackgroundWork& work) { work(Cancellation()); }

    /// Runs a command that the person may cancel, one at a time; false when it was canceled.
    bool RunCancelable(const std::function<void()>& command);

    /// The person's wish that the running command ends, stated in the Host's own thread. Work in the
    /// background is handed the token, which belongs to that command.
    void Cancel() { cancellation_.request_stop(); }
    std::stop_token Cancellation() const { return cancellation_.get_token(); }

    /// What the person reads when the command is canceled from here on: what then is as it was before, and
    /// what is done. Each stage of a command replaces the words of the one before; at first all is as before.
    void SetAfterCancel(const std::string& words) { afterCancel_ = words; }
    const std::string& AfterCancel() const { return afterCancel_; }

  protected:
    /// While it lives, events may start something that is not part of the running command.
    class EventsMeanwhile {
      public:
        explicit EventsMeanwhile(Host& host) : host_(host) { ++host_.depth_; }
        ~EventsMeanwhile() { --host_.depth_; }
        EventsMeanwhile(const EventsMeanwhile&) = delete;
        EventsMeanwhile& operator=(const EventsMeanwhile&) = delete;

      private:
        Host& host_;
    };

    /// Gives the event loop its turn; does real work at most about every 20 ms.
    virtual void Turn() = 0;
    /// A turn that does not end the command.
    void TakeTurn() {
        const EventsMeanwhile events(*this);
        Turn();
    }

  private:
    std::stop_source cancellation_;
    std::string afterCancel_;
    int depth_ = 0;                    ///< Of events that are being handled.
    std::optional<int> cancelableAt_;  ///< Depth at which the cancelable command runs.
};

/// The wait cursor for the length of a command, whichever way it is left.
class clsHourglass {
  public:
    /// What is thrown behind the call of the other constructor finds an object to destroy.
    explicit clsHourglass(Host& host) : clsHourglass(host, true) { host_.Yield(); }
    ~clsHourglass() { host_.WaitCursor(false); }
    clsHourglass(const clsHourglass&) = delete;
    clsHourglass& operator=(const clsHourglass&) = delete;

  private:
    clsHourglass(Host& host, bool on) : host_(host) { host_.WaitCursor(on); }
    Host& host_;
};

}  // namespace norvelis
