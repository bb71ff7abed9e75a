#include "core/settings.h"

#include "base/paths.h"
#include "base/text.h"
#include "core/log.h"
#include "store/connection.h"

namespace norvelis {

namespace {

constexpr std::string_view kByName = "Select * FROM ApplicationSetting where settingname  =  ?";
constexpr std::string_view kReport = "ReportLocation";
constexpr std::string_view kDrawings = "visiolocation";
constexpr std::string_view kBackground = "visiobackground";
constexpr std::string_view kDiagramColor = "DiagramColor";
constexpr std::string_view kStartUpForm = "startupform";

Setting SettingOf(const Recordset& row) {
    return {std::string(Trim(row.Text("settingvalue"))), std::string(Trim(row.Text("settingvalue2")))};
}

std::string ValueOr(AppState& app, std::string_view name, std::string_view missing) {
    const auto setting = ReadSetting(app, name);
    return setting ? setting->value : std::string(missing);
}

}  // namespace

const std::array<std::string_view, 18> kBackgroundNames = {
    "Background steel",      "Background high-tech", "Background stripes",   "Background web",
    "Background rain",       "Background leaf",      "Background orbit",     "Background horizon",
    "Background world",      "Background compass",   "Background clouds",    "Background city",
    "Background mountains",  "Background none",      "Background geometric", "Background cosmic",
    "Background expedition", "Background tranquil"};

std::optional<Setting> ReadSetting(AppState& app, std::string_view name) {
    const Recordset row = app.gConnection->Select(kByName, {name});
    if (row.Eof()) return std::nullopt;
    return SettingOf(row);
}

void WriteSetting(AppState& app, std::string_view name, std::string_view value,
                  std::optional<std::string_view> value2) {
    Recordset row = app.gConnection->Select(kByName, {name});
    if (row.Eof()) {
        row.AddNew();
        row.Set("settingname", name);
    }
    row.Set("settingvalue", value);
    if (value2) row.Set("settingvalue2", *value2);
    row.Update();
}

std::string getreportlocation(AppState& app) {
    return ValueOr(app, kReport, "");
}
void setreportlocation(AppState& app, std::string_view path) {
    WriteSetting(app, kReport, path);
}

std::string getvisiolocation(AppState& app) {
    WriteToProcessLog(app, "Common module", "getvisiolocation", "Now in the function.....getvisiolocation");
    const std::string folder = DrawingFolder(app);
    WriteToProcessLog(app, "Common module", "getvisiolocation", "visio location....." + folder);
    return folder;
}

std::string DrawingFolder(AppState& app) {
    const std::string folder = ValueOr(app, kDrawings, "");
    return FolderExists(folder) ? folder : std::string();
}

void setvisiolocation(AppState& app, std::string_view folder) {
    if (!folder.empty()) WriteSetting(app, kDrawings, folder);
}

std::string getvisiobackground(AppState& app) {
    const auto setting = ReadSetting(app, kBackground);
    return setting ? setting->value2 : std::string("Background none");
}

void setvisiobackground(AppState& app, int index) {
    if (index < 0 || index >= static_cast<int>(kBackgroundNames.size())) return;
    WriteSetting(app, kBackground, std::to_string(index), kBackgroundNames[static_cast<std::size_t>(index)]);
}

std::string getdiagramcolor(AppState& app) {
    return ValueOr(app, kDiagramColor, "False");
}
void setdiagramcolor(AppState& app, std::string_view value) {
    WriteSetting(app, kDiagramColor, value);
}

std::string getstartupform(AppState& app) {
    return ValueOr(app, kStartUpForm, "");
}
void setstartupform(AppState& app, std::string_view name) {
    WriteSetting(app, kStartUpForm, name);
}

}  // namespace norvelis
