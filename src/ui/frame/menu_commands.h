#pragma once

namespace norvelis::ui {

struct ScreenContext;

/// What the entries of the main frame's menu do, under their names.
class MenuCommands {
  public:
    explicit MenuCommands(const ScreenContext& context) : context_(context) {}

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

  private:
    const ScreenContext& context_;
};

}  // namespace norvelis::ui
