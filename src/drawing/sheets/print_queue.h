#pragma once

#include <string>

// The print system: sending a file to a printer, with an answer of what became of it.
namespace norvelis::drawing::sheets {

struct PrintRequest {
    std::string printer;  ///< Empty is the default one.
    std::string title;    ///< Of the job in the printer's list.
    std::string paper;    ///< By its name.
    std::string pdf;
};

/// Sends the file and waits a few seconds for what the printer does with it; the result is the printer's
/// name. RuntimeFailure 57 with the reason when there is no such printer, or when it refuses or stops.
std::string SendToPrinter(const PrintRequest& request);

}  // namespace norvelis::drawing::sheets
