#pragma once

#include <QMainWindow>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <map>
#include <memory>

#include "commands/start_up.h"
#include "core/app_state.h"
#include "engine/drawing_engine.h"
#include "ui/controls/drawing_picture.h"
#include "ui/frame/qt_host.h"
#include "ui/skins/skin.h"

class QLabel;
class QPrinter;

namespace norvelis::ui {

class ChildArea;
class Form;
class fbTrayIcon;
class frmbackground;

/// The main frame: menu, status bar, and the area in which all other screens stand.
class mdiMainMenu : public QMainWindow, public MainFrame, public HostDisplay {
    Q_OBJECT

  public:
    /// `fail` ends the program after a run-time failure that no handler took.
    using Fail = std::function<void(const std::exception&)>;

    mdiMainMenu(AppState& app, Fail fail);
    ~mdiMainMenu() override;

    AppState& App() { return app_; }
    ChildArea& Area() { return *area_; }
    /// How screens show drawing files; empty where nothing is wired.
    const OpenDrawing& Drawings() const { return drawings_; }
    void SetDrawings(OpenDrawing open) { drawings_ = std::move(open); }
    /// What draws; it must outlive the frame's screens.
    engine::DrawingEngine& Engine() { return *engine_; }
    void SetEngine(engine::DrawingEngine& engine) { engine_ = &engine; }
    const Skin& GetSkin() const { return skin_; }
    void SetSkin(const Skin& skin);

    /// The screen if it has been made, else null.
    Form* Find(Screen screen) const;

    /// Runs a command; a RuntimeFailure that comes out of it ends the program.
    void Run(const std::function<void()>& command);
    /// The same for a long command: until it ends no other long one can be started, and closing the frame
    /// waits for it.
    void RunLong(const std::function<void()>& command);
    bool Busy() const { return busy_; }
    void DisableWhileBusy(QWidget* control);

    // The settings screen has changed something that the next tick of Timer1 brings to every open screen.
    void ColorsChanged();
    void SkinChanged();

    /// Asks where to print; null when the person cancels. The frame keeps the printer.
    QPrinter* ChoosePrinter();

    // Commands of the menu.
    void mnuColors();
    void mnuPrinterSetup();
    void mnuExit();
    void mnu_View_IDMS_Report_File();
    void mnu_Classic_Extract_Report();
    void mnuTreeview();
    void mnuListview();
    void mnu_Draw_Fancy_Single();
    void mnu_Draw_Fancy_Separate();
    void mnu_Scheduler();
    void mnu_sql();
    void mnu_help();
    void mnu_about();

    // MainFrame
    void LoadColors() override;
    void ShowVersion() override;
    void ApplySkinAndShow() override;
    void LoadProgressForm() override;
    void LoadScreen(Screen screen) override;
    void loadtreeform() override;
    void changerptfile() override;
    void changevisiolocation() override;

    // HostDisplay
    QWidget* Window() override { return this; }
    void ShowStatus(const QString& text) override;
    void ShowProgress(Bar bar, const ProgressBar& state) override;
    void OpenScreen(Screen screen, bool modal) override;

  signals:
    void BusyChanged(bool busy);
    void Unloaded();  ///< Closed: the program ends.

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void DrawAll(bool singlePage);
    void BuildMenu();
    void FillWindowMenu();
    void UpdateMinimized();
    void Timer1_Timer();
    bool CloseForms();

    AppState& app_;
    Fail fail_;
    OpenDrawing drawings_;
    engine::DrawingEngine* engine_ = nullptr;
    Skin skin_;
    ChildArea* area_;
    fbTrayIcon* tray_;
    QMenu* mnuWindow_ = nullptr;
    QTimer Timer1_;
    bool gColorFlag_ = false, gSkinFlag_ = false;
    std::map<Screen, QPointer<Form>> screens_;
    QPointer<Form> about_;
    std::unique_ptr<frmbackground> progressForm_;
    QPrinter& Printer();
    std::unique_ptr<QPrinter> printer_;
    bool busy_ = false, closeWhenDone_ = false;
};

}  // namespace norvelis::ui
