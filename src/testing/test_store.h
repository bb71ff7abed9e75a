#pragma once

#include <memory>

#include "core/app_state.h"
#include "store/connection.h"
#include "testing/scripted_host.h"
#include "testing/temporary_folder.h"

namespace norvelis {

class StillClock : public Clock {
  public:
    DateTime now = ToDateTime({2026, 11, 24, 8, 30, 0});
    DateTime Now() override { return now; }
};

/// A temporary application folder with an empty store, open as gConnection.
struct TestApp {
    TemporaryFolder folder;
    ScriptedHost host;
    StillClock clock;
    AppState app{folder.Path(), host, clock, Random(1)};

    TestApp() {
        std::filesystem::create_directories(folder.Path("Database"));
        std::filesystem::create_directories(folder.Path("INI"));
        Connection::CreateStore(StorePath());
        app.gConnection = Connection::Open(ConnectionString(StorePath()));
    }
    std::string StorePath() const { return folder.Path("Database/records.mdb"); }
};

}  // namespace norvelis
