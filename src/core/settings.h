#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/app_state.h"

// The settings that belong to the work: rows of ApplicationSetting, one per name. A missing row gives the
// default.
namespace norvelis {

std::string getreportlocation(AppState& app);  ///< Path of the schema report; default empty.
void setreportlocation(AppState& app, std::string_view path);

/// The folder for drawings; empty when there is no row or the folder does not exist.
std::string getvisiolocation(AppState& app);
/// The same without the lines that it writes to the process log.
std::string DrawingFolder(AppState& app);
void setvisiolocation(AppState& app, std::string_view folder);  ///< An empty text leaves the row alone.

std::string getvisiobackground(AppState& app);  ///< Default "Background none".
/// Stores index and name; an index that is none of the eighteen writes nothing.
void setvisiobackground(AppState& app, int index);

std::string getdiagramcolor(AppState& app);  ///< "True" or "False"; default "False".
void setdiagramcolor(AppState& app, std::string_view value);

std::string getstartupform(AppState& app);  ///< Default empty.
void setstartupform(AppState& app, std::string_view name);

/// The eighteen drawing backgrounds in the order of their choice index.
extern const std::array<std::string_view, 18> kBackgroundNames;

/// Any row by name: `settingvalue` and `settingvalue2`, trimmed.
struct Setting {
    std::string value, value2;
};
std::optional<Setting> ReadSetting(AppState& app, std::string_view name);
/// Adds the row when it is missing. Without value2 that column stays as it is.
void WriteSetting(AppState& app, std::string_view name, std::string_view value,
                  std::optional<std::string_view> value2 = std::nullopt);

}  // namespace norvelis
