#include "ui/frame/menu_commands.h"

#include <QDesktopServices>
#include <QUrl>
#include <QWidget>

#include "base/paths.h"
#include "base/text.h"
#include "commands/frame_commands.h"
#include "commands/publish_commands.h"
#include "commands/report_repair.h"
#include "core/places.h"
#include "ui/forms/form.h"
#include "ui/frame/child_area.h"

namespace norvelis::ui {

namespace {

/// Opens a file in the person's browser; false when there is none.
bool OpenInBrowser(const std::string& page) {
    return QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(page)));
}

}  // namespace

void MenuCommands::mnuColors() {
    context_.app.host.OpenScreen(Screen::Settings, false);
}

void MenuCommands::mnuPrinterSetup() {
    context_.printer.SetUp();
}

void MenuCommands::mnuExit() {
    if (commands::AskToExit(context_.app)) context_.area.window()->close();
}

void MenuCommands::mnu_View_IDMS_Report_File() {
    context_.request(ShowReport{});
}

void MenuCommands::mnu_Classic_Extract_Report() {
    context_.commands.Run({"Extract IDMS Report", Screen::Treeview}, [this] {
        AppState& app = context_.app;
        const auto refresh = [this] { context_.request(RefreshTree{}); };
        const std::size_t warnings = commands::mnu_Classic_Extract_Report(app, refresh);
        if (warnings == 0) return;
        context_.request(ShowFindings{});
        if (!commands::OfferRepairForWarnings(app, warnings)) return;
        commands::ExtractReport(app, ValidateReportFile(app.gReportFile), refresh);
        context_.request(ShowFindings{});
    });
}

void MenuCommands::mnuTreeview() {
    context_.app.host.OpenScreen(Screen::Treeview, false);
    context_.request(LoadTree{});
}

void MenuCommands::mnuListview() {
    context_.app.host.OpenScreen(Screen::Listview, false);
}

void MenuCommands::mnu_Find() {
    context_.request(FindAnything{});
}

void MenuCommands::mnu_Draw_Fancy_Single() {
    context_.commands.Run({"Draw All in Single Page", Screen::Treeview}, [this] {
        commands::mnu_Draw_Fancy_Single(
            context_.app, [this](bool singlePage) { context_.request(DrawDictionary{singlePage}); });
    });
}

void MenuCommands::mnu_Draw_Fancy_Separate() {
    context_.commands.Run({"Draw in Separate Pages", Screen::Treeview}, [this] {
        commands::mnu_Draw_Fancy_Separate(
            context_.app, [this](bool singlePage) { context_.request(DrawDictionary{singlePage}); });
    });
}

void MenuCommands::mnu_Scheduler() {
    context_.app.host.OpenScreen(Screen::Scheduler, false);
}

void MenuCommands::mnu_sql() {
    context_.app.host.OpenScreen(Screen::ConvertSql, false);
}

void MenuCommands::mnu_TableProcedures() {
    context_.app.host.OpenScreen(Screen::TableProcedures, false);
}

void MenuCommands::mnu_Compare() {
    context_.app.host.OpenScreen(Screen::Compare, false);
}

void MenuCommands::mnu_Publish() {
    context_.commands.Run({"Publish Schema", Screen::Treeview}, [this] {
        const auto page = commands::mnu_Publish(context_.app, {context_.engine, context_.drawingAsSvg});
        if (page && !OpenInBrowser(*page))
            context_.app.host.MessageBox(
                "No browser could be started for the page:" + std::string(kLineBreak) + *page);
    });
}

void MenuCommands::mnu_help() {
    Host& host = context_.app.host;
    const std::string page = context_.app.AppPath(places::kHelp);
    if (!FileExists(page)) {
        host.MessageBox("The help pages are missing:" + std::string(kLineBreak) + page);
        return;
    }
    host.MessageBox("Help is found online only: its pages open in your browser.");
    if (!OpenInBrowser(page))
        host.MessageBox("No browser could be started for the help pages:" + std::string(kLineBreak) + page);
}

void MenuCommands::mnu_about() {
    context_.app.host.OpenScreen(Screen::About, false);
}

void MenuCommands::mnuTile() {
    area_.Tile();
}

void MenuCommands::mnuCascade() {
    area_.Cascade();
}

void MenuCommands::mnuMaximize() {
    if (Form* form = area_.Active()) form->ToggleMaximized();
}

void MenuCommands::mnuOriginalSize() {
    if (Form* form = area_.Active()) form->BackToOriginalSize();
}

void MenuCommands::mnuMinimize() {
    if (Form* form = area_.Active()) emit form->Minimized();
}

void MenuCommands::mnuNext() {
    area_.ActivateNext(1);
}

void MenuCommands::mnuPrevious() {
    area_.ActivateNext(-1);
}

void MenuCommands::mnuClose() {
    if (Form* form = area_.Active()) form->close();
}

}  // namespace norvelis::ui
