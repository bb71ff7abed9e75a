#include "ui/frame/mdi_main_menu.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QScreen>
#include <QShortcut>
#include <QStatusBar>
#include <QToolButton>
#include <algorithm>
#include <utility>

#include "base/failure.h"
#include "browse/findings_list.h"
#include "store/connection.h"
#include "ui/controls/fb_tray_icon.h"
#include "ui/forms/form.h"
#include "ui/forms/progress_view.h"
#include "ui/forms/window_settings.h"
#include "ui/frame/child_area.h"
#include "ui/frame/frame_menu.h"
#include "ui/frame/frm_background.h"

namespace norvelis::ui {

namespace {

constexpr QSize kFirstSize(1100, 720);
constexpr auto kMinimizedButton = "minimized";

}  // namespace

mdiMainMenu::mdiMainMenu(const FrameParts& parts)
    : fail_(parts.fail),
      entries_(parts.screens),
      sql_(parts.app),
      commands_(parts.app.host, parts.fail),
      focusReturn_(commands_),
      skin_(parts.app),
      area_(new ChildArea(this)),
      context_{parts.app,
               parts.engine,
               parts.openDrawing,
               parts.exportDrawing,
               parts.drawingAsSvg,
               parts.printing,
               parts.printer,
               sql_,
               commands_,
               skin_,
               *area_,
               [this](const ScreenRequest& request) { Request(request); },
               [this](const char* name) { return findChild<QAction*>(name); },
               [this](const QString& words) { tray_->Notify(words); }},
      menu_(context_, *area_),
      tray_(new fbTrayIcon(this)),
      warnings_(new QToolButton) {
    setObjectName("mdiMainMenu");
    setWindowTitle(QApplication::applicationDisplayName());
    setCentralWidget(area_);
    parts.printer.SetWindow(this);
    BuildMenu();
    statusBar()->setObjectName("StatusBar1");
    statusBar()->setSizeGripEnabled(false);
    warnings_->setObjectName("warnings");
    warnings_->setToolTip("What reading the dictionary's reports lost");
    warnings_->setMaximumHeight(warnings_->fontMetrics().height());  // The bar keeps its height with it.
    warnings_->hide();
    statusBar()->addPermanentWidget(warnings_);
    connect(warnings_, &QToolButton::clicked, this, [this] { Request(ShowFindings{}); });
    Timer1_.setSingleShot(true);
    connect(&Timer1_, &QTimer::timeout, this, &mdiMainMenu::Timer1_Timer);
    connect(&skin_, &CurrentSkin::Applied, this, [this] { area_->SetBackground(skin_.Get().frame); });
    connect(&skin_, &CurrentSkin::ColorsChanged, this, [this] {
        gColorFlag_ = true;
        Timer1_.start(0);
    });
    connect(&skin_, &CurrentSkin::SkinChanged, this, [this] {
        gSkinFlag_ = true;
        Timer1_.start(0);
    });
    connect(&commands_, &LongCommands::BusyChanged, this, [this](bool busy) {
        busy ? ClearProgress() : UpdateWarnings();
        CloseWhenDone(busy);
    });
    connect(area_, &ChildArea::FormsChanged, this, &mdiMainMenu::UpdateMinimized);
    tray_->SetTrayIconTip(QApplication::applicationDisplayName());
    connect(tray_, &fbTrayIcon::Clicked, this, [this] {
        setWindowState(windowState() & ~Qt::WindowMinimized);
        raise();
        activateWindow();
    });
    connect(new QShortcut(Qt::Key_F1, this), &QShortcut::activated, this, &mdiMainMenu::ShowHelpOfScreen);
    auto* cancel = new QShortcut(Qt::Key_Escape, this);
    cancel->setEnabled(false);
    connect(cancel, &QShortcut::activated, &commands_, &LongCommands::Cancel);
    connect(&commands_, &LongCommands::BusyChanged, cancel, &QShortcut::setEnabled);
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
            if (*entry.keys) action->setShortcuts(QKeySequence::listFromString(entry.keys));
            connect(action, &QAction::triggered, this,
                    [this, command = entry.command] { Run([this, command] { (menu_.*command)(); }); });
            if (!entry.whileBusy)
                connect(&commands_, &LongCommands::BusyChanged, action, &QAction::setDisabled);
        }
    }
    mnuWindow_ = menuBar()->findChild<QMenu*>("mnuWindow");
    belowScreens_ = mnuWindow_->actions().front();
    connect(mnuWindow_, &QMenu::aboutToShow, this, &mdiMainMenu::FillWindowMenu);
}

void mdiMainMenu::FillWindowMenu() {
    while (mnuWindow_->actions().front() != belowScreens_) delete mnuWindow_->actions().front();
    const auto add = [this](const QString& text) {
        auto* action = new QAction(text, mnuWindow_);
        mnuWindow_->insertAction(belowScreens_, action);
        return action;
    };
    int number = 0;
    for (Form* form : area_->OpenForms()) {
        QAction* action = add(QString("&%1 %2").arg(++number).arg(form->windowTitle()));
        action->setCheckable(true);
        action->setChecked(form == area_->Active());
        connect(action, &QAction::triggered, area_, [this, form] { area_->Activate(form); });
    }
    if (number == 0) add("No open screens")->setEnabled(false);
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

// The dictionary may be another one behind a command.
void mdiMainMenu::UpdateWarnings() {
    if (!context_.app.gConnection) return;
    const std::size_t count = CountFoundWarnings(*context_.app.gConnection);
    warnings_->setText(count == 1 ? QString("1 warning") : QString("%1 warnings").arg(count));
    warnings_->setVisible(count > 0);
}

void mdiMainMenu::Run(const std::function<void()>& command) {
    try {
        command();
    } catch (const std::exception& failure) {
        fail_(failure);
    }
}

void mdiMainMenu::Timer1_Timer() {
    if (gColorFlag_) {
        gColorFlag_ = false;
        skin_.LoadColors();
        skin_.Apply();
        for (Form* form : area_->Forms()) form->ApplyColors();
    }
    if (gSkinFlag_) {
        gSkinFlag_ = false;
        skin_.LoadSkins();
        for (Form* form : area_->Forms()) form->ApplySkin();
    }
}

void mdiMainMenu::LoadColors() {
    skin_.LoadColors();
}

void mdiMainMenu::ShowVersion() {
    auto* version = new QLabel("Norvelis - Version " + QApplication::applicationVersion());
    version->setObjectName("version");
    version->setContentsMargins(0, 0, 10, 0);
    statusBar()->addPermanentWidget(version);
    UpdateWarnings();
}

void mdiMainMenu::ApplySkinAndShow() {
    resize(kFirstSize.boundedTo(screen()->availableSize()));
    RestoreGeometry(*this, context_.app.gLocalIni);
    if (!skin_.LoadSkins()) {
        skin_.RevertTo({}, false);  // There was none before: the plain look.
        skin_.LoadSkins();
    }
    show();
    tray_->AddTrayIcon(windowIcon());
}

void mdiMainMenu::LoadProgressForm() {
    progressForm_ = std::make_unique<frmbackground>();
}

const ScreenEntry& mdiMainMenu::EntryOf(Screen screen) const {
    return *std::find_if(entries_.begin(), entries_.end(),
                         [screen](const ScreenEntry& entry) { return entry.screen == screen; });
}

Form* mdiMainMenu::Find(Screen screen) const {
    const auto found = screens_.find(screen);
    return found == screens_.end() ? nullptr : found->second.data();
}

void mdiMainMenu::LoadScreen(Screen screen) {
    const ScreenEntry& entry = EntryOf(screen);
    if (Find(screen)) return;
    Form* form = entry.make(context_);
    area_->Add(form, entry.kept);
    screens_[screen] = form;
    if (!entry.kept) connect(form, &Form::Closed, this, [this, screen] { screens_.erase(screen); });
    form->Load();
    form->RestoreGeometry();
}

void mdiMainMenu::OpenScreen(Screen screen, bool modal) {
    LoadScreen(screen);
    Form* form = Find(screen);
    if (modal) {
        form->ShowAndWait();
    } else {
        area_->Activate(form);
    }
}

void mdiMainMenu::Request(const ScreenRequest& request) {
    const Screen screen = ScreenOf(request);
    LoadScreen(screen);
    Find(screen)->Take(request);
}

void mdiMainMenu::ShowHelpOfScreen() {
    const auto active = std::find_if(screens_.begin(), screens_.end(), [this](const auto& screen) {
        return screen.second && screen.second == area_->Active();
    });
    Request(ShowHelp{active == screens_.end() ? Screen::Help : active->first});
}

void mdiMainMenu::loadtreeform() {
    Request(LoadTree{});
}

void mdiMainMenu::changerptfile() {
    Request(PickReport{});
}

void mdiMainMenu::changevisiolocation() {
    Request(PickDrawingFolder{});
}

ProgressView* mdiMainMenu::View() const {
    Form* form = Find(commands_.ProgressScreen());
    return form ? form->Progress() : nullptr;
}

void mdiMainMenu::ShowStatus(const QString& text) {
    if (ProgressView* view = View()) view->ShowStatus(text);
}

void mdiMainMenu::ShowProgress(Bar bar, const ProgressBar& state) {
    if (bar == Bar::BackgroundText || bar == Bar::BackgroundValue) {
        if (progressForm_) progressForm_->ShowProgress(bar, state);
    } else if (ProgressView* view = View()) {
        view->ShowProgress(bar, state);
    }
}

// All are asked before one goes.
bool mdiMainMenu::CloseForms() {
    const auto forms = area_->OpenForms();
    for (Form* form : forms) {
        if (form->QueryUnload()) continue;
        constexpr auto kOnceLater =
            static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection);
        if (form->ClosesLater()) connect(form, &Form::Closed, this, &QWidget::close, kOnceLater);
        return false;
    }
    for (Form* form : forms) form->Unload();
    return true;
}

// A command starts with empty bars and leaves its last words on them.
void mdiMainMenu::ClearProgress() {
    Progress& progress = context_.app.progress;
    for (const Bar bar : kAllBars) {
        progress.BResetprogressbar(bar, 100);
        progress.SetText(bar, "");
    }
}

void mdiMainMenu::CloseWhenDone(bool busy) {
    if (busy || !std::exchange(closeWhenDone_, false)) return;
    statusBar()->clearMessage();
    QTimer::singleShot(0, this, &QWidget::close);
}

void mdiMainMenu::closeEvent(QCloseEvent* event) {
    event->ignore();
    const bool isScheduledRun = commands_.ProgressScreen() == Screen::Scheduler;  // Its screen asks.
    if (commands_.Busy() && !isScheduledRun) {
        closeWhenDone_ = true;
        statusBar()->showMessage("The window closes when the running command has ended.");
        return;
    }
    if (!CloseForms()) return;
    AppState& app = context_.app;
    SaveGeometry(*this, app.gLocalIni);
    if (app.gConnection) {
        try {
            app.gConnection->Close();
        } catch (const RuntimeFailure&) {
            // The store is left either way.
        }
        app.gConnection.reset();
    }
    tray_->RemoveTrayIcon();
    event->accept();
    emit Unloaded();
}

}  // namespace norvelis::ui
