#include "ui/frame/frame_menu.h"

#include "ui/frame/menu_commands.h"

namespace norvelis::ui {

std::span<const MenuColumn> FrameMenu() {
    using Do = MenuCommands;
    static constexpr MenuEntry kLine{nullptr};
    static constexpr bool kNotWhileBusy = false;
    static constexpr std::array<MenuEntry, 5> kSystem = {
        {{"mnuColors", "Setting", &Do::mnuColors},
         kLine,
         {"mnuPrinterSetup", "Printer Setup...", &Do::mnuPrinterSetup},
         kLine,
         {"mnuExit", "E&xit", &Do::mnuExit, kNotWhileBusy}}};
    static constexpr std::array<MenuEntry, 4> kReport = {
        {kLine,
         {"mnu_View_IDMS_Report_File", "View IDMS Report File", &Do::mnu_View_IDMS_Report_File},
         kLine,
         {"mnu_Classic_Extract_Report", "Extract IDMS Report", &Do::mnu_Classic_Extract_Report,
          kNotWhileBusy}}};
    static constexpr std::array<MenuEntry, 8> kDraw = {
        {kLine,
         {"mnuTreeview", "Record &Treeview", &Do::mnuTreeview, kNotWhileBusy},
         kLine,
         {"mnuListview", "Record &Listview", &Do::mnuListview},
         kLine,
         {"mnu_Draw_Fancy_Single", "Draw All in Single Page", &Do::mnu_Draw_Fancy_Single, kNotWhileBusy},
         kLine,
         {"mnu_Draw_Fancy_Separate", "Draw in Separate Pages", &Do::mnu_Draw_Fancy_Separate, kNotWhileBusy}}};
    static constexpr std::array<MenuEntry, 3> kUtilities = {
        {{"mnu_Scheduler", "Scheduler", &Do::mnu_Scheduler},
         kLine,
         {"mnu_sql", "IDMS to SQL", &Do::mnu_sql}}};
    static constexpr std::array<MenuEntry, 3> kHelp = {
        {{"mnu_help", "Help", &Do::mnu_help, true, "F1"}, kLine, {"mnu_about", "About", &Do::mnu_about}}};
    static constexpr std::array<MenuColumn, 6> kMenu = {{{"mnuOptions", "&System", kSystem},
                                                         {"mnu_sys_task", "IDMS &Report", kReport},
                                                         {"ppm_extract", "&View /  Draw", kDraw},
                                                         {"mnu_util", "&Utilities", kUtilities},
                                                         {"mnuWindow", "&Window", {}},
                                                         {"mnuHelp", "&Help", kHelp}}};
    return kMenu;
}

}  // namespace norvelis::ui
