#pragma once

#include <dlfcn.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "base/paths.h"
#include "testing/temporary_folder.h"

namespace norvelis {

/// The driver manager's settings for one test: odbc.ini and odbcinst.ini of the tests' own, and the script
/// and the record of the scripted driver. Programs that the test starts see the same. The driver manager
/// remembers for good where the files are and for a while what it has read: so all tests of a program share
/// the files' folder and the drivers, and each test's sources have names of their own.
class OdbcFolder {
  public:
    OdbcFolder() {
        WriteFile(Settings("odbcinst.ini"),
                  "[SQL Server]\nDriver=" SCRIPTED_DRIVER "\n[Lite]\nDriver=" SQLITE_DRIVER "\n");
        SetSources("");
        // The SQLite driver loads and unloads it; for good, so that the leak check can name it
        // (tests/leaks.supp).
        dlopen("libodbcinst.so.2", RTLD_NOW | RTLD_NODELETE);
        setenv("ODBCSYSINI", Settings("").c_str(), 1);
        setenv("ODBCINI", Settings("odbc.ini").c_str(), 1);
        setenv("SCRIPTED_DRIVER_LOG", Path("calls").c_str(), 1);
        setenv("SCRIPTED_DRIVER_SCRIPT", Path("script").c_str(), 1);
    }

    const std::string own = std::to_string(getpid()) + "x" + std::to_string(NextNumber());
    const std::string mssql = "MSSQL" + own, lite = "LITE" + own, pg = "PG" + own;

    std::string Path(const std::string& name) const { return folder_.Path(name); }

    void Source(const std::string& name, const std::string& driver, const std::string& keys = {}) const {
        std::ofstream(Settings("odbc.ini"), std::ios::app) << "[" << name << "]\nDriver=" << driver << "\n"
                                                           << keys << "\n";
    }
    /// The source of the scripted driver, which answers by the script.
    void ScriptedSource(const std::string& script) const {
        Source(mssql, "SQL Server");
        WriteFile(Path("script"), script);
    }
    /// The source of a new file of the SQLite driver.
    void SqliteSource() const { Source(lite, SQLITE_DRIVER, "Database=" + Path("lite.db")); }

    /// What the scripted driver was asked, those lines alone that begin with one of the words, if any.
    std::vector<std::string> Calls(const std::vector<std::string>& words = {}) const {
        std::ifstream file(Path("calls"));
        std::vector<std::string> calls;
        for (std::string line; std::getline(file, line);) {
            bool wanted = words.empty();
            for (const auto& word : words) wanted = wanted || line.starts_with(word);
            if (wanted) calls.push_back(line);
        }
        return calls;
    }

    /// The whole of odbc.ini.
    void SetSources(const std::string& content) const { WriteFile(Settings("odbc.ini"), content); }

  private:
    static std::string Settings(const std::string& file) {
        static const TemporaryFolder folder;
        return folder.Path(file);
    }
    static int NextNumber() {
        static int number = 0;
        return ++number;
    }

    TemporaryFolder folder_;
};

}  // namespace norvelis
