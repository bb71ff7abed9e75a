#include "commands/export_commands.h"

#include <filesystem>

#include "base/failure.h"
#include "base/paths.h"
#include "commands/print_commands.h"

namespace norvelis::commands {

namespace {

constexpr ExportForm kForms[] = {
    {"svg", "SVG picture"}, {"png", "PNG picture"}, {"pdf", "PDF"}, {"vsdx", "Visio drawing"}};

}  // namespace

std::span<const ExportForm> ExportForms() {
    return kForms;
}

std::optional<std::string> ChooseExport(Host& host, const std::string& drawing, const ExportForm& form) {
    if (!HasDrawing(host, drawing, "There are no visio drawing to view")) return std::nullopt;
    const std::string ending = std::string(".") + form.ending;
    const std::string proposed = std::filesystem::path(Resolve(drawing)).replace_extension(ending).string();
    auto out =
        host.SaveFileDialog("Export the drawing", std::string(form.name) + " (*" + ending + ")", proposed);
    if (!out || out->empty()) return std::nullopt;
    if (IsSameFile(*out, drawing)) {
        host.MessageBox(*out + ": the export would replace the drawing");
        return std::nullopt;
    }
    return out;
}

void ExportDrawing(Host& host, const std::string& drawing, const std::string& out, const Exporter& exporter) {
    try {
        host.RunInBackground([&](const std::stop_token&) { exporter(drawing, out); });
        host.Status("Exported to " + out);
    } catch (const RuntimeFailure& failure) {
        host.MessageBox(failure.what());
    }
}

}  // namespace norvelis::commands
