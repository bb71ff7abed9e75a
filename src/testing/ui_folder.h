#pragma once

#include <filesystem>
#include <string>

#include "store/connection.h"
#include "testing/temporary_folder.h"

namespace norvelis::ui {

/// A copy of the delivered application folder with an empty store.
class UiFolder {
  public:
    UiFolder() {
        namespace fs = std::filesystem;
        for (const char* part : {"INI", "Skins", "Bitmaps", "reportfiles", "help"}) {
            if (fs::exists(fs::path(NORVELIS_APP) / part))
                fs::copy(fs::path(NORVELIS_APP) / part, folder_.Path(part), fs::copy_options::recursive);
        }
        fs::remove(folder_.Path("INI/ProcessLog.Txt"));
        fs::copy_file(NORVELIS_SOURCE "/app/INI/Local.Ini", folder_.Path("INI/Local.Ini"),
                      fs::copy_options::overwrite_existing);
        fs::create_directory_symlink(fs::path(NORVELIS_APP) / "Stencils", folder_.Path("Stencils"));
        fs::create_directories(folder_.Path("Database"));
        fs::create_directories(folder_.Path("visio files"));
        Connection::CreateStore(folder_.Path("Database/records.mdb"));
    }
    std::string Path(const std::string& name = {}) const { return folder_.Path(name); }

  private:
    TemporaryFolder folder_;
};

}  // namespace norvelis::ui
