#pragma once

#include "core/host.h"

namespace norvelis::ui {

class Form;
struct ScreenContext;

/// One screen of the program: how it is made and what closing does to it.
struct ScreenEntry {
    Screen screen;
    Form* (*make)(const ScreenContext& context);
    bool kept;  ///< Closing hides it; otherwise it is made again next time.
};

}  // namespace norvelis::ui
