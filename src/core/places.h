#pragma once

#include <string>
#include <string_view>

// The fixed places of the application folder, as AppState::AppPath takes them.
namespace norvelis::places {

inline constexpr std::string_view kStore = "\\Database\\records.mdb";
inline constexpr std::string_view kLocalIni = "\\INI\\Local.Ini";
inline constexpr std::string_view kProcessLog = "\\INI\\ProcessLog.Txt";
inline constexpr std::string_view kErrorLog = "\\INI\\ErrorLog.Txt";
inline constexpr std::string_view kReports = "\\reportfiles";
inline constexpr std::string_view kSampleReport = "\\reportfiles\\empschm.text";
inline constexpr std::string_view kDrawings = "\\visio files\\";  ///< Where no setting names another folder.
inline constexpr std::string_view kSnapshots = "\\Temp";          ///< Of a drawing that is being made.
inline constexpr std::string_view kStencils = "\\Stencils";
inline constexpr std::string_view kBatchJobs = "\\batchjobs";           ///< A folder for each scheduled job.
inline constexpr std::string_view kJobLocks = "\\Database\\jobs.lock";  ///< Who runs which of them.
inline constexpr std::string_view kAuditLog = "\\AuditLogs\\Logfile.txt";
inline constexpr std::string_view kFormerAuditLog = "\\AuditLogs\\Logfile.former.txt";
inline constexpr std::string_view kBitmaps = "\\Bitmaps";
inline constexpr std::string_view kSkinList = "\\Skins\\Skins.INI";
inline constexpr std::string_view kHelp = "\\help\\index.html";

/// The folder of one skin.
inline std::string Skin(const std::string& name) {
    return "\\Skins\\" + name;
}

}  // namespace norvelis::places
