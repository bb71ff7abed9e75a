#pragma once

#include "core/host.h"

namespace norvelis::ui {

class Form;
struct ScreenContext;

/// One screen of the program: how it is called in words and how it is made.
struct ScreenEntry {
    Screen screen;
    const char* caption;
    Form* (*make)(const ScreenContext& context);  ///< Null: it is not there yet.
    bool kept;                                    ///< Closing hides it; otherwise it is made again next time.
};

}  // namespace norvelis::ui
