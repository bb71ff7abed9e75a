#pragma once

#include <QMainWindow>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <map>
#include <memory>
#include <span>

#include "commands/start_up.h"
#include "sqlconv/sql_state.h"
#include "ui/forms/focus_return.h"
#include "ui/forms/screen_context.h"
#include "ui/forms/screen_entry.h"
#include "ui/frame/menu_commands.h"
#include "ui/frame/qt_host.h"

class QToolButton;

namespace norvelis::ui {

class ChildArea;
class Form;
class ProgressView;
class fbTrayIcon;
class frmbackground;

/// What the frame works with. All but the function objects must outlive it.
struct FrameParts {
    AppState& app;
    engine::DrawingEngine& engine;
    OpenDrawing openDrawing;
    commands::Exporter exportDrawing;
    commands::DrawingAsSvg drawingAsSvg;
    SheetPrinting printing;
    PrinterChoice& printer;
    std::span<const ScreenEntry> screens;  ///< One for each Screen.
    LongCommands::Fail fail;
};

/// The main frame: menu, status bar, and the area in which all other screens are.
class mdiMainMenu : public QMainWindow, public commands::MainFrame, public HostDisplay {
    Q_OBJECT

  public:
    explicit mdiMainMenu(const FrameParts& parts);
    ~mdiMainMenu() override;

    const ScreenContext& Context() const { return context_; }
    ChildArea& Area() { return *area_; }
    Form* Find(Screen screen) const;  ///< The screen if it has been made, else null.

    /// Runs a command; a failure that comes out of it ends the program.
    void Run(const std::function<void()>& command);

    // MainFrame
    void LoadColors() override;
    void ShowVersion() override;
    void ApplySkinAndShow() override;
    void LoadProgressForm() override;
    void LoadScreen(Screen screen) override;
    void loadtreeform() override;
    void changerptfile() override;
    void changevisiolocation() override;

  signals:
    void Unloaded();  ///< Closed: the program ends.

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    // HostDisplay
    QWidget* Window() override { return this; }
    void ShowStatus(const QString& text) override;
    void ShowProgress(Bar bar, const ProgressBar& state) override;
    void OpenScreen(Screen screen, bool modal) override;

    const ScreenEntry& EntryOf(Screen screen) const;
    void Request(const ScreenRequest& request);
    void ShowHelpOfScreen();
    ProgressView* View() const;  ///< Of the present or last long command; null when it is not open.
    void BuildMenu();
    void FillWindowMenu();
    void UpdateMinimized();
    void UpdateWarnings();
    void Timer1_Timer();
    bool CloseForms();
    void ClearProgress();
    void CloseWhenDone(bool busy);

    LongCommands::Fail fail_;
    std::span<const ScreenEntry> entries_;
    SqlState sql_;
    LongCommands commands_;
    FocusReturn focusReturn_;
    CurrentSkin skin_;
    ChildArea* area_;
    ScreenContext context_;
    MenuCommands menu_;
    fbTrayIcon* tray_;
    QMenu* mnuWindow_ = nullptr;
    QAction* belowScreens_ = nullptr;  ///< The first of mnuWindow behind the open screens.
    QToolButton* warnings_;            ///< In the status bar: their number.
    QTimer Timer1_;
    bool gColorFlag_ = false, gSkinFlag_ = false;
    std::map<Screen, QPointer<Form>> screens_;
    std::unique_ptr<frmbackground> progressForm_;
    bool closeWhenDone_ = false;
};

}  // namespace norvelis::ui
