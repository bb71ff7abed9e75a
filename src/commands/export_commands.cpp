#include "commands/export_commands.h"

#include <algorithm>
#include <filesystem>

#include "base/failure.h"
#include "base/paths.h"
#include "commands/print_commands.h"

namespace norvelis::commands {

namespace {

constexpr ExportForm kForms[] = {{"svg", "SVG picture", false},
                                 {"png", "PNG picture", false},
                                 {"pdf", "PDF", true},
                                 {"vsdx", "Visio drawing", true}};

/// Beside the drawing; pictures of its pages do not replace each other.
std::string ProposedFile(const ShownDrawing& drawing, const ExportForm& form) {
    std::filesystem::path path = Resolve(drawing.file);
    std::string name = path.stem().string();
    if (!form.hasAllPages && !drawing.pageName.empty()) name += ' ' + drawing.pageName;
    std::ranges::replace(name, '/', '-');
    return path.replace_filename(name + '.' + form.ending).string();
}

}  // namespace

std::span<const ExportForm> ExportForms() {
    return kForms;
}

std::optional<std::string> ChooseExport(Host& host, const ShownDrawing& drawing, const ExportForm& form) {
    if (!HasDrawing(host, drawing.file, "There are no visio drawing to view")) return std::nullopt;
    const std::string ending = std::string(".") + form.ending;
    auto out = host.SaveFileDialog("Export the drawing", std::string(form.name) + " (*" + ending + ")",
                                   ProposedFile(drawing, form));
    if (!out || out->empty()) return std::nullopt;
    if (IsSameFile(*out, drawing.file)) {
        host.MessageBox(*out + ": the export would replace the drawing");
        return std::nullopt;
    }
    return out;
}

void ExportDrawing(Host& host, const ShownDrawing& drawing, const std::string& out,
                   const Exporter& exporter) {
    try {
        host.RunInBackground([&](const std::stop_token&) { exporter(drawing.file, out, drawing.page); });
        host.Status("Exported to " + out);
    } catch (const RuntimeFailure& failure) {
        host.MessageBox(failure.what());
    }
}

}  // namespace norvelis::commands
