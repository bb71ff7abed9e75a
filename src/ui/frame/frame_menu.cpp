#include "ui/frame/frame_menu.h"

#include "ui/frame/mdi_main_menu.h"

namespace norvelis::ui {

std::span<const MenuColumn> FrameMenu() {
    using Frame = mdiMainMenu;
    static constexpr MenuEntry kLine{nullptr};
    static constexpr bool kNotWhileBusy = false;
    static constexpr std::array<MenuEntry, 5> kSystem = {
        {{"mnuColors", "Setting", &Frame::mnuColors},
         kLine,
         {"mnuPrinterSetup", "Printer Setup...", &Frame::mnuPrinterSetup},
         kLine,
         {"mnuExit", "E&xit", &Frame::mnuExit, kNotWhileBusy}}};
    static constexpr std::array<MenuEntry, 4> kReport = {
        {kLine,
         {"mnu_View_IDMS_Report_File", "View IDMS Report File", &Frame::mnu_View_IDMS_Report_File},
         kLine,
         {"mnu_Classic_Extract_Report", "Extract IDMS Report", &Frame::mnu_Classic_Extract_Report,
          kNotWhileBusy}}};
    static constexpr std::array<MenuEntry, 8> kDraw = {
        {kLine,
         {"mnuTreeview", "Record &Treeview", &Frame::mnuTreeview, kNotWhileBusy},
         kLine,
         {"mnuListview", "Record &Listview", &Frame::mnuListview},
         kLine,
         {"mnu_Draw_Fancy_Single", "Draw All in Single Page", &Frame::mnu_Draw_Fancy_Single, kNotWhileBusy},
         kLine,
         {"mnu_Draw_Fancy_Separate", "Draw in Separate Pages", &Frame::mnu_Draw_Fancy_Separate,
          kNotWhileBusy}}};
    static constexpr std::array<MenuEntry, 3> kUtilities = {
        {{"mnu_Scheduler", "Scheduler", &Frame::mnu_Scheduler},
         kLine,
         {"mnu_sql", "IDMS to SQL", &Frame::mnu_sql}}};
    static constexpr std::array<MenuEntry, 3> kHelp = {{{"mnu_help", "Help", &Frame::mnu_help, true, "F1"},
                                                        kLine,
                                                        {"mnu_about", "About", &Frame::mnu_about}}};
    static constexpr std::array<MenuColumn, 6> kMenu = {{{"mnuOptions", "&System", kSystem},
                                                         {"mnu_sys_task", "IDMS &Report", kReport},
                                                         {"ppm_extract", "&View /  Draw", kDraw},
                                                         {"mnu_util", "&Utilities", kUtilities},
                                                         {"mnuWindow", "&Window", {}},
                                                         {"mnuHelp", "&Help", kHelp}}};
    return kMenu;
}

}  // namespace norvelis::ui
