#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>

#include "core/app_state.h"

// Writing a drawing in another form.
namespace norvelis::commands {

struct ExportForm {
    const char* ending;  ///< Without the dot.
    const char* name;
    bool hasAllPages;  ///< Otherwise it holds one.
};
/// The forms that a drawing can be written in.
std::span<const ExportForm> ExportForms();

/// A drawing file with the page that is on show, counted from 1; its name is empty when there is no other.
struct ShownDrawing {
    std::string file;
    int page = 1;
    std::string pageName{};
};

/// Writes a drawing file, or that page of it, in the form that the ending of `out` says; RuntimeFailure with
/// the reason. Touches no state.
using Exporter = std::function<void(const std::string& drawing, const std::string& out, int page)>;

/// Where the person wants the export of a drawing; nothing after words when there is no such drawing or its
/// own file was chosen.
std::optional<std::string> ChooseExport(Host& host, const ShownDrawing& drawing, const ExportForm& form);

/// Writes it in the background; the status line says where it is, a box why it could not be written.
void ExportDrawing(Host& host, const ShownDrawing& drawing, const std::string& out, const Exporter& exporter);

}  // namespace norvelis::commands
