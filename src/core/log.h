#pragma once

#include <string_view>

#include "core/app_state.h"

// The two append-only logs under INI: what the program did, and which failures a handler took. A log that
// cannot be written stops nobody.
namespace norvelis {

/// One line: now + ": " + module + " ---- " + procedure + " ---- " + message.
void WriteToProcessLog(AppState& app, std::string_view module, std::string_view procedure,
                       std::string_view message);

/// A line of the process log about booked jobs and their runs, where nobody may be there to see a box.
void WriteToScheduleLog(AppState& app, std::string_view message);

/// Logs to both files and always shows a box titled "Error...": the message when there is one, else the
/// description and number in the standard words. showMessage comes back true; an icon of None becomes
/// Critical.
void WriteToErrorLog(AppState& app, std::string_view module, std::string_view procedure,
                     std::string_view description, int number, bool& showMessage, std::string_view message,
                     Icon& icon);

/// The form that every handler uses: the failure's own words and number, no message of its own.
void WriteToErrorLog(AppState& app, std::string_view module, std::string_view procedure,
                     std::string_view description, int number);

}  // namespace norvelis
