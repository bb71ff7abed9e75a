#include "ui/frame/mdi_main_menu.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QLabel>
#include <QMenuBar>
#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QScreen>
#include <QShortcut>
#include <QStatusBar>
#include <QToolButton>
#include <QUrl>
#include <algorithm>
#include <utility>

#include "base/failure.h"
#include "base/ini.h"
#include "base/paths.h"
#include "base/text.h"
#include "commands/frame_commands.h"
#include "core/log.h"
#include "core/places.h"
#include "store/connection.h"
#include "ui/controls/fb_tray_icon.h"
#include "ui/forms/form.h"
#include "ui/forms/skins_and_colors.h"
#include "ui/forms/window_settings.h"
#include "ui/frame/child_area.h"
#include "ui/frame/frame_menu.h"
#include "ui/frame/screens.h"
#include "ui/screens/about/frm_about.h"
#include "ui/screens/browse/frm_treeview.h"
#include "ui/screens/progress/frm_background.h"
#include "ui/screens/settings/frm_colors.h"
#include "ui/skins/skin_style.h"

namespace norvelis::ui {

namespace {

constexpr QSize kFirstSize(1100, 720);
constexpr auto kMinimizedButton = "minimized";

void SayNotThere(AppState& app, const std::string& caption) {
    app.host.MessageBox(
        {"\"" + caption + "\" is not there yet.", {}, Buttons::Ok, Icon::Information, Answer::Ok});
}

}  // namespace

mdiMainMenu::mdiMainMenu(AppState& app, Fail fail)
    : app_(app),
      fail_(std::move(fail)),
      skin_(PlainSkin()),
      area_(new ChildArea(this)),
      tray_(new fbTrayIcon(this)) {
    setObjectName("mdiMainMenu");
    setWindowTitle(QApplication::applicationDisplayName());
    setCentralWidget(area_);
    BuildMenu();
    statusBar()->setObjectName("StatusBar1");
    statusBar()->setSizeGripEnabled(false);
    Timer1_.setSingleShot(true);
    connect(&Timer1_, &QTimer::timeout, this, &mdiMainMenu::Timer1_Timer);
    connect(area_, &ChildArea::FormsChanged, this, &mdiMainMenu::UpdateMinimized);
    tray_->SetTrayIconTip(QApplication::applicationDisplayName());
    connect(tray_, &fbTrayIcon::Clicked, this, [this] {
        setWindowState(windowState() & ~Qt::WindowMinimized);
        raise();
        activateWindow();
    });
    const std::pair<Qt::KeyboardModifiers, int> rounds[] = {{Qt::ControlModifier, 1},
                                                            {Qt::ControlModifier | Qt::ShiftModifier, -1}};
    for (const auto& [modifiers, step] : rounds) {
        auto* shortcut = new QShortcut(QKeyCombination(modifiers, Qt::Key_Tab), this);
        connect(shortcut, &QShortcut::activated, area_, [this, step = step] { area_->ActivateNext(step); });
    }
}

mdiMainMenu::~mdiMainMenu() = default;

void mdiMainMenu::BuildMenu() {
    for (const MenuColumn& column : FrameMenu()) {
        QMenu* menu = menuBar()->addMenu(column.caption);
        menu->setObjectName(column.name);
        for (const MenuEntry& entry : column.entries) {
            if (!entry.name) {
                menu->addSeparator();
                continue;
            }
            QAction* action = menu->addAction(entry.caption);
            action->setObjectName(entry.name);
            action->setShortcut(QKeySequence(entry.keys));
            connect(action, &QAction::triggered, this,
                    [this, command = entry.command] { Run([this, command] { (this->*command)(); }); });
            if (!entry.whileBusy) connect(this, &mdiMainMenu::BusyChanged, action, &QAction::setDisabled);
        }
        if (column.entries.empty()) mnuWindow_ = menu;
    }
    connect(mnuWindow_, &QMenu::aboutToShow, this, &mdiMainMenu::FillWindowMenu);
}

void mdiMainMenu::FillWindowMenu() {
    mnuWindow_->clear();
    int number = 0;
    for (Form* form : area_->OpenForms()) {
        QAction* action = mnuWindow_->addAction(QString("&%1 %2").arg(++number).arg(form->windowTitle()));
        action->setCheckable(true);
        action->setChecked(form == area_->Active());
        connect(action, &QAction::triggered, area_, [this, form] { area_->Activate(form); });
    }
    if (number == 0) mnuWindow_->addAction("No open screens")->setEnabled(false);
}

// Minimised screens wait as buttons in the status bar.
void mdiMainMenu::UpdateMinimized() {
    for (auto* button : statusBar()->findChildren<QToolButton*>(kMinimizedButton)) button->deleteLater();
    for (Form* form : area_->OpenForms()) {
        if (!area_->IsMinimized(form)) continue;
        auto* button = new QToolButton(statusBar());
        button->setObjectName(kMinimizedButton);
        button->setText(form->windowTitle());
        button->setToolTip("Bring this screen back");
        connect(button, &QToolButton::clicked, area_, [this, form] { area_->Activate(form); });
        statusBar()->addWidget(button);
    }
}

void mdiMainMenu::SetSkin(const Skin& skin) {
    skin_ = skin;
    SetStyleSkin(skin_);
    area_->SetBackground(skin_.frame);
}

void mdiMainMenu::Run(const std::function<void()>& command) {
    try {
        command();
    } catch (const std::exception& failure) {
        fail_(failure);
    }
}

void mdiMainMenu::RunLong(const std::function<void()>& command) {
    if (busy_) return;
    busy_ = true;
    emit BusyChanged(true);
    Run(command);
    busy_ = false;
    emit BusyChanged(false);
    if (!std::exchange(closeWhenDone_, false)) return;
    statusBar()->clearMessage();
    QTimer::singleShot(0, this, &QWidget::close);
}

void mdiMainMenu::DisableWhileBusy(QWidget* control) {
    control->setDisabled(busy_);
    connect(this, &mdiMainMenu::BusyChanged, control, &QWidget::setDisabled);
}

void mdiMainMenu::ColorsChanged() {
    gColorFlag_ = true;
    Timer1_.start(0);
}

void mdiMainMenu::SkinChanged() {
    gSkinFlag_ = true;
    Timer1_.start(0);
}

void mdiMainMenu::Timer1_Timer() {
    if (gColorFlag_) {
        gColorFlag_ = false;
        LoadColors();
        SetSkin(skin_);
        for (Form* form : area_->Forms()) form->ApplyColors();
    }
    if (gSkinFlag_) {
        gSkinFlag_ = false;
        LoadSkins(*this);
        for (Form* form : area_->Forms()) form->ApplySkin();
    }
}

void mdiMainMenu::LoadColors() {
    const bool fromSkin = app_.gUseSkins && FileExists(SkinIni(app_));
    skin_.colors = fromSkin ? ui::LoadColors(app_) : PlainSkin().colors;
}

void mdiMainMenu::ShowVersion() {
    auto* version = new QLabel("Norvelis - Version " + QApplication::applicationVersion());
    version->setObjectName("version");
    version->setContentsMargins(0, 0, 10, 0);
    statusBar()->addPermanentWidget(version);
}

void mdiMainMenu::ApplySkinAndShow() {
    resize(kFirstSize.boundedTo(screen()->availableSize()));
    RestoreGeometry(*this, app_.gLocalIni);
    if (!LoadSkins(*this)) {
        RevertSkin(*this, {}, false);  // Nothing was in force before: the plain look.
        LoadSkins(*this);
    }
    show();
    tray_->AddTrayIcon(windowIcon());
}

void mdiMainMenu::LoadProgressForm() {
    progressForm_ = std::make_unique<frmbackground>();
}

Form* mdiMainMenu::Find(Screen screen) const {
    const auto found = screens_.find(screen);
    return found == screens_.end() ? nullptr : found->second.data();
}

void mdiMainMenu::LoadScreen(Screen screen) {
    const ScreenEntry& entry = EntryOf(screen);
    if (!entry.make || Find(screen)) return;
    Form* form = entry.make(*this);
    area_->Add(form, entry.kept);
    screens_[screen] = form;
    if (!entry.kept) connect(form, &Form::Closed, this, [this, screen] { screens_.erase(screen); });
    form->Load();
}

void mdiMainMenu::OpenScreen(Screen screen, bool modal) {
    LoadScreen(screen);
    Form* form = Find(screen);
    if (!form) {
        SayNotThere(app_, EntryOf(screen).caption);
    } else if (modal) {
        form->ShowAndWait();
    } else {
        area_->Activate(form);
    }
}

void mdiMainMenu::loadtreeform() {
    RunLong([this] {
        if (auto* tree = qobject_cast<frm_Treeview*>(Find(Screen::Treeview))) tree->loadtreeform();
    });
}

void mdiMainMenu::changerptfile() {
    if (auto* settings = qobject_cast<frmColors*>(Find(Screen::Settings))) settings->changerptfile();
}

void mdiMainMenu::changevisiolocation() {
    if (auto* settings = qobject_cast<frmColors*>(Find(Screen::Settings))) settings->changevisiolocation();
}

void mdiMainMenu::ShowStatus(const QString& text) {
    if (auto* tree = qobject_cast<frm_Treeview*>(Find(Screen::Treeview))) tree->ShowStatus(text);
}

void mdiMainMenu::ShowProgress(Bar bar, const ProgressBar& state) {
    if (bar == Bar::BackgroundText || bar == Bar::BackgroundValue) {
        if (progressForm_) progressForm_->ShowProgress(bar, state);
    } else if (auto* tree = qobject_cast<frm_Treeview*>(Find(Screen::Treeview))) {
        tree->ShowProgress(bar, state);
    }
}

void mdiMainMenu::mnuColors() {
    app_.host.OpenScreen(Screen::Settings, false);
}

void mdiMainMenu::mnuPrinterSetup() {
    QPageSetupDialog(&Printer(), this).exec();
}

QPrinter& mdiMainMenu::Printer() {
    if (!printer_) printer_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
    return *printer_;
}

QPrinter* mdiMainMenu::ChoosePrinter() {
    app_.host.WaitCursor(false);
    const bool chosen = QPrintDialog(&Printer(), this).exec() == QDialog::Accepted;
    app_.host.WaitCursor(true);
    return chosen ? printer_.get() : nullptr;
}

void mdiMainMenu::mnuExit() {
    if (AskToExit(app_)) close();
}

void mdiMainMenu::mnu_View_IDMS_Report_File() {
    ui::mnu_View_IDMS_Report_File(app_);
}

void mdiMainMenu::mnu_Classic_Extract_Report() {
    RunLong([this] {
        ui::mnu_Classic_Extract_Report(app_, [this] {
            if (auto* tree = qobject_cast<frm_Treeview*>(Find(Screen::Treeview))) tree->process_Refresh();
        });
    });
}

void mdiMainMenu::mnuTreeview() {
    app_.host.OpenScreen(Screen::Treeview, false);
    loadtreeform();
}

void mdiMainMenu::mnuListview() {
    app_.host.OpenScreen(Screen::Listview, false);
}

void mdiMainMenu::mnu_Draw_Fancy_Single() {
    RunLong([this] { ui::mnu_Draw_Fancy_Single(app_, [this](bool single) { DrawAll(single); }); });
}

void mdiMainMenu::mnu_Draw_Fancy_Separate() {
    RunLong([this] { ui::mnu_Draw_Fancy_Separate(app_, [this](bool single) { DrawAll(single); }); });
}

// The tree screen draws; one that was not open stays behind the others with an empty tree.
void mdiMainMenu::DrawAll(bool singlePage) {
    LoadScreen(Screen::Treeview);
    qobject_cast<frm_Treeview*>(Find(Screen::Treeview))->DrawAll(singlePage);
}

void mdiMainMenu::mnu_Scheduler() {
    app_.host.OpenScreen(Screen::Scheduler, false);
}

void mdiMainMenu::mnu_sql() {
    app_.host.OpenScreen(Screen::ConvertSql, false);
}

void mdiMainMenu::mnu_help() {
    const std::string page = app_.AppPath(places::kHelp);
    if (!FileExists(page)) {
        app_.host.MessageBox("The help pages are missing:" + std::string(kLineBreak) + page);
        return;
    }
    app_.host.MessageBox("Help is found online only: its pages open in your browser.");
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(page))))
        app_.host.MessageBox("No browser could be started for the help pages:" + std::string(kLineBreak) +
                             page);
}

void mdiMainMenu::mnu_about() {
    if (!about_) {
        about_ = new frmAbout(*this);
        area_->Add(about_, false);
        connect(about_, &Form::Closed, this, [this] { about_.clear(); });
        about_->Load();
    }
    area_->Activate(about_);
}

// All are asked before one goes.
bool mdiMainMenu::CloseForms() {
    const auto forms = area_->OpenForms();
    if (!std::all_of(forms.begin(), forms.end(), [](Form* form) { return form->QueryUnload(); }))
        return false;
    for (Form* form : forms) form->Unload();
    return true;
}

void mdiMainMenu::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (busy_) {
        closeWhenDone_ = true;
        statusBar()->showMessage("The window closes when the running command has ended.");
        return;
    }
    if (!CloseForms()) return;
    SaveGeometry(*this, app_.gLocalIni);
    if (app_.gConnection) {
        try {
            app_.gConnection->Close();
        } catch (const RuntimeFailure&) {
            // The store is left either way.
        }
        app_.gConnection.reset();
    }
    tray_->RemoveTrayIcon();
    event->accept();
    emit Unloaded();
}

}  // namespace norvelis::ui
