#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/app_state.h"
#include "paper/footer.h"

// Printing, as far as screens and command line share it.
namespace norvelis::commands {

/// True when there is such a drawing; else the screen's words for that are shown.
bool HasDrawing(Host& host, const std::string& file, const std::string& nothingToPrint);

/// The drawing's name, today, and the version and date of its report when it is in the folder of a schema of
/// the dictionary.
paper::Footer FooterOf(AppState& app, const std::string& drawing);

/// These sheets, or all when none is named. RuntimeFailure 9 when there are not as many.
std::vector<int> ChosenSheets(const std::vector<int>& only, int count);

/// "Are you sure you want to print 51 sheets?"
std::string PrintQuestion(std::size_t sheets);
/// Asks when there are very many sheets; true when they may be printed.
bool MayPrint(Host& host, std::size_t sheets);

/// Whether two paths lead to one file that is there.
bool IsSameFile(const std::string& path, const std::string& other);

/// RuntimeFailure 75 when the path is the drawing's own, or can not be written.
void WritePdf(const std::string& drawing, const std::string& path, std::string_view pdf);

}  // namespace norvelis::commands
