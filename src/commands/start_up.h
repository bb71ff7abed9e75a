#pragma once

#include "core/app_state.h"

// The start of the program, free of screens: in which order things are read, shown and checked, and what is
// said when one of them is missing.
namespace norvelis::commands {

/// What the start needs of the main frame and its screens.
class MainFrame {
  public:
    virtual ~MainFrame() = default;

    virtual void LoadColors() = 0;
    virtual void ShowVersion() = 0;
    virtual void ApplySkinAndShow() = 0;
    virtual void LoadProgressForm() = 0;
    virtual void LoadScreen(Screen screen) = 0;  ///< Makes it, without showing it.
    virtual void loadtreeform() = 0;
    virtual void changerptfile() = 0;  ///< On the settings screen, which is open.
    virtual void changevisiolocation() = 0;
};

/// The whole start: log, Local.Ini, skin, colours, store, main frame with its first screen, then the checks
/// of the report and the drawing folder. A Local.Ini without UseSkins, and a store that cannot be opened, are
/// a RuntimeFailure; the frame is then not shown.
void SubMain(AppState& app, MainFrame& frame);

}  // namespace norvelis::commands
