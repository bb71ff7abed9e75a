#pragma once

#include "core/host.h"

namespace norvelis::ui {

class Form;
class mdiMainMenu;

/// One screen of the program: how it is called in words and how it is made.
struct ScreenEntry {
    Screen screen;
    const char* caption;
    Form* (*make)(mdiMainMenu& frame);  ///< Null: it is not there yet.
    bool kept;                          ///< Closing hides it; otherwise it is made anew next time.
};

const ScreenEntry& EntryOf(Screen screen);

}  // namespace norvelis::ui
