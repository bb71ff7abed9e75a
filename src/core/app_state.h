#pragma once

#include <memory>
#include <string>

#include "base/dates.h"
#include "base/random.h"
#include "core/host.h"
#include "core/progress.h"

namespace norvelis {

class Connection;  // store/connection.h

/// What one running program shares among its parts: owned by main(), handed down by reference. A scheduled
/// run and a test have a state of their own.
struct AppState {
    AppState(std::string applicationFolder, Host& host, Clock& clock, Random random);

    /// Folder of the program, native separators, none at the end. Every fixed path hangs from it.
    std::string ApplicationFolder;
    Host& host;
    Clock& clock;
    Random random;
    Progress progress;

    std::string gLocalIni;                    ///< Path of Local.Ini; empty when it does not exist.
    bool gUseSkins = false;                   ///< A skin is in force.
    std::string gSkinScheme;                  ///< Its name.
    std::shared_ptr<Connection> gConnection;  ///< The dictionary store, open from start to exit.

    std::string gReportFile;  ///< The schema report of the command that runs.
    std::string gSchemaName;  ///< The schema being extracted, or of the tree node last touched.

    /// ApplicationFolder + a classic literal such as "\\INI\\Local.Ini", native separators.
    std::string AppPath(std::string_view literal) const;
};

}  // namespace norvelis
