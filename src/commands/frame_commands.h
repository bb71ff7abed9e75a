#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "core/app_state.h"
#include "extract/report_file.h"

// The commands of the main frame's menu that do more than open a screen, free of screens themselves: each
// checks what it needs, says in words what is missing, and calls the module that does the work.
namespace norvelis::commands {

/// Draws what the dictionary holds: all on one page, or a file for each parent.
using DrawAll = std::function<void(bool singlePage)>;

/// `refresh` shows the new dictionary. Gives how many warnings the extraction had. A failure of it goes
/// through.
std::size_t mnu_Classic_Extract_Report(AppState& app, const std::function<void()>& refresh);

/// The same for a report that was checked already, without asking whether it is to be extracted.
std::size_t ExtractReport(AppState& app, ReportFile report, const std::function<void()>& refresh);

/// Opens the viewer, which shows gReportFile; false after words about what is wrong with the report.
bool mnu_View_IDMS_Report_File(AppState& app);
/// The .vsd file that the person picks to be shown; nothing after words about why there is none.
std::optional<std::string> mnu_viewvisio(Host& host);
/// A draw button: all on one page.
void DrawSinglePage(AppState& app, const DrawAll& draw);
void mnu_Draw_Fancy_Single(AppState& app, const DrawAll& draw);
void mnu_Draw_Fancy_Separate(AppState& app, const DrawAll& draw);

/// True when the person wants to leave.
bool AskToExit(AppState& app);

}  // namespace norvelis::commands
