#pragma once

#include <array>
#include <span>

// The main frame's menu as a table: what is where, under which name, and what a choice does.
namespace norvelis::ui {

class MenuCommands;

struct MenuEntry {
    const char* name;  ///< Null: a separator.
    const char* caption = "";
    void (MenuCommands::*command)() = nullptr;
    bool whileBusy = true;  ///< May be chosen while a long command runs.
    const char* keys = "";  ///< The first is shown; others, after "; ", do the same.
};

struct MenuColumn {
    const char *name, *caption;
    std::span<const MenuEntry> entries;
};

/// In order. In mnuWindow the open screens come first, as they are at the moment.
std::span<const MenuColumn> FrameMenu();

}  // namespace norvelis::ui
