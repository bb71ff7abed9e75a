#include "ui/frame/frame_menu.h"

#include "ui/frame/menu_commands.h"

namespace norvelis::ui {

std::span<const MenuColumn> FrameMenu() {
    using Do = MenuCommands;
    static constexpr MenuEntry kLine{nullptr};
    static constexpr bool kNotWhileBusy = false;
    static constexpr std::array<MenuEntry, 5> kSystem = {
        {{"mnuColors", "Setting", &Do::mnuColors, true, "Ctrl+,"},
         kLine,
         {"mnuPrinterSetup", "Printer Setup...", &Do::mnuPrinterSetup, true, "Ctrl+Shift+P"},
         kLine,
         {"mnuExit", "E&xit", &Do::mnuExit, true, "Ctrl+Q"}}};
    static constexpr std::array<MenuEntry, 4> kReport = {
        {kLine,
         {"mnu_View_IDMS_Report_File", "View IDMS Report File", &Do::mnu_View_IDMS_Report_File, true,
          "Ctrl+Shift+R"},
         kLine,
         {"mnu_Classic_Extract_Report", "Extract IDMS Report", &Do::mnu_Classic_Extract_Report, kNotWhileBusy,
          "Ctrl+Shift+E"}}};
    static constexpr std::array<MenuEntry, 10> kDraw = {
        {kLine,
         {"mnuTreeview", "Record &Treeview", &Do::mnuTreeview, kNotWhileBusy, "Ctrl+T"},
         kLine,
         {"mnuListview", "Record &Listview", &Do::mnuListview, true, "Ctrl+L"},
         kLine,
         {"mnu_Draw_Fancy_Single", "Draw All in Single Page", &Do::mnu_Draw_Fancy_Single, kNotWhileBusy,
          "Ctrl+Shift+D"},
         kLine,
         {"mnu_Draw_Fancy_Separate", "Draw in Separate Pages", &Do::mnu_Draw_Fancy_Separate, kNotWhileBusy,
          "Ctrl+Shift+S"},
         kLine,
         {"mnu_Find", "&Find Anything", &Do::mnu_Find, true, "Ctrl+K"}}};
    static constexpr std::array<MenuEntry, 9> kUtilities = {
        {{"mnu_Scheduler", "Scheduler", &Do::mnu_Scheduler, true, "Ctrl+J"},
         kLine,
         {"mnu_sql", "IDMS to SQL", &Do::mnu_sql, true, "Ctrl+Shift+Q"},
         kLine,
         {"mnu_TableProcedures", "Table Procedures", &Do::mnu_TableProcedures, true, "Ctrl+Shift+T"},
         kLine,
         {"mnu_Compare", "What Changed", &Do::mnu_Compare, true, "Ctrl+Shift+W"},
         kLine,
         {"mnu_Publish", "Publish Schema...", &Do::mnu_Publish, kNotWhileBusy, "Ctrl+Shift+B"}}};
    static constexpr std::array<MenuEntry, 9> kWindow = {
        {kLine,
         {"mnuTile", "&Tile", &Do::mnuTile, true, "Shift+F4"},
         {"mnuCascade", "&Cascade", &Do::mnuCascade, true, "Shift+F5"},
         {"mnuMaximize", "Ma&ximize or restore", &Do::mnuMaximize, true, "Ctrl+F10; Ctrl+Shift+M"},
         {"mnuOriginalSize", "&Original size", &Do::mnuOriginalSize, true, "Ctrl+F5"},
         {"mnuMinimize", "M&inimize", &Do::mnuMinimize, true, "Ctrl+M; Ctrl+F9"},
         {"mnuNext", "&Next screen", &Do::mnuNext, true, "Ctrl+Tab; Ctrl+F6"},
         {"mnuPrevious", "&Previous screen", &Do::mnuPrevious, true, "Ctrl+Shift+Tab; Ctrl+Shift+F6"},
         {"mnuClose", "C&lose", &Do::mnuClose, true, "Ctrl+W; Ctrl+F4"}}};
    static constexpr std::array<MenuEntry, 3> kHelp = {
        {{"mnu_help", "Help", &Do::mnu_help},
         kLine,
         {"mnu_about", "About", &Do::mnu_about, true, "Shift+F1"}}};
    static constexpr std::array<MenuColumn, 6> kMenu = {{{"mnuOptions", "&System", kSystem},
                                                         {"mnu_sys_task", "IDMS &Report", kReport},
                                                         {"ppm_extract", "&View /  Draw", kDraw},
                                                         {"mnu_util", "&Utilities", kUtilities},
                                                         {"mnuWindow", "&Window", kWindow},
                                                         {"mnuHelp", "&Help", kHelp}}};
    return kMenu;
}

}  // namespace norvelis::ui
