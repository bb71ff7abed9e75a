#include "core/log.h"

#include <fstream>
#include <string>

#include "base/paths.h"
#include "base/text.h"
#include "core/places.h"

namespace norvelis {

namespace {

constexpr std::string_view kGap = " ---- ";

void AppendLine(AppState& app, std::string_view file, const std::string& line) {
    std::ofstream out(Resolve(app.AppPath(file)), std::ios::app | std::ios::binary);
    out << GeneralDateText(app.clock.Now()) << ": " << line << kLineBreak;
}

}  // namespace

void WriteToProcessLog(AppState& app, std::string_view module, std::string_view procedure,
                       std::string_view message) {
    AppendLine(app, places::kProcessLog,
               std::string(module) + std::string(kGap) + std::string(procedure) + std::string(kGap) +
                   std::string(message));
}

void WriteToScheduleLog(AppState& app, std::string_view message) {
    WriteToProcessLog(app, "Form Scheduler", "General message", message);
}

void WriteToErrorLog(AppState& app, std::string_view module, std::string_view procedure,
                     std::string_view description, int number, bool& showMessage, std::string_view message,
                     Icon& icon) {
    const std::string numberText = std::to_string(number);
    std::string line(module);
    for (const std::string_view part : {procedure, description, std::string_view(numberText), message}) {
        line += kGap;
        line += part;
    }
    WriteToProcessLog(app, "GlobalFunctions", "WriteToErrorLog sub", "Details:" + line);
    showMessage = true;
    AppendLine(app, places::kErrorLog, line);
    if (icon == Icon::None) icon = Icon::Critical;

    std::string shown(message);
    if (Trim(message).empty()) {
        shown = "The following error has occured in your program: \r\n\r\n" + std::string(description) +
                "\r\n\r\nError Number: " + numberText;
    }
    app.host.MessageBox(Message{shown, "Error...", Buttons::Ok, icon, Answer::Ok});
}

void WriteToErrorLog(AppState& app, std::string_view module, std::string_view procedure,
                     std::string_view description, int number) {
    bool showMessage = true;
    Icon icon = Icon::None;
    WriteToErrorLog(app, module, procedure, description, number, showMessage, {}, icon);
}

}  // namespace norvelis
