#pragma once

namespace norvelis::ui {

class ChildArea;
struct ScreenContext;

/// What the entries of the main frame's menu do, under their names.
class MenuCommands {
  public:
    MenuCommands(const ScreenContext& context, ChildArea& area) : context_(context), area_(area) {}

    void mnuColors();
    void mnuPrinterSetup();
    void mnuExit();
    void mnu_View_IDMS_Report_File();
    void mnu_Classic_Extract_Report();
    void mnuTreeview();
    void mnuListview();
    void mnu_Find();
    void mnu_Draw_Fancy_Single();
    void mnu_Draw_Fancy_Separate();
    void mnu_Scheduler();
    void mnu_sql();
    void mnu_TableProcedures();
    void mnu_Compare();
    void mnu_Publish();
    void mnu_help();
    void mnu_about();

    // Of the window menu, below the open screens; what is about one screen is about the active one.
    void mnuTile();
    void mnuCascade();
    void mnuMaximize();
    void mnuOriginalSize();
    void mnuMinimize();
    void mnuNext();
    void mnuPrevious();
    void mnuClose();

  private:
    const ScreenContext& context_;
    ChildArea& area_;
};

}  // namespace norvelis::ui
