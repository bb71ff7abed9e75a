#pragma once

#include <functional>

#include "commands/export_commands.h"
#include "commands/publish_commands.h"
#include "core/app_state.h"
#include "engine/drawing_engine.h"
#include "sqlconv/sql_state.h"
#include "ui/controls/drawing_picture.h"
#include "ui/controls/drawing_sheets.h"
#include "ui/forms/long_commands.h"
#include "ui/forms/printer_choice.h"
#include "ui/forms/screen_request.h"
#include "ui/skins/current_skin.h"

class QAction;
class QWidget;

namespace norvelis::ui {

/// What every screen is made with, in place of the frame. The frame owns it; it outlives the screens.
struct ScreenContext {
    AppState& app;
    engine::DrawingEngine& engine;
    OpenDrawing openDrawing;              ///< How drawing files are shown.
    commands::Exporter exportDrawing;     ///< How they are written in other forms.
    commands::DrawingAsSvg drawingAsSvg;  ///< How they become part of a page for the browser.
    SheetPrinting printing;               ///< How they are printed.
    PrinterChoice& printer;
    SqlState& sql;
    LongCommands& commands;
    CurrentSkin& skin;
    QWidget& area;  ///< In which the forms are; its window is the main frame.
    std::function<void(const ScreenRequest&)> request;
    /// An entry of the main frame's menu by its name, for the context menu of a control; null for none.
    std::function<QAction*(const char* name)> menuEntry;
    std::function<void(const QString& words)> notify;  ///< By the tray icon.
};

}  // namespace norvelis::ui
