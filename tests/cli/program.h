#pragma once

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <string>

#include "base/paths.h"
#include "store/connection.h"
#include "testing/temporary_folder.h"

namespace norvelis {

/// Runs norvelis-cli on a copy of the delivered application folder, with an empty dictionary.
class Program {
  public:
    struct Result {
        int status;
        std::string out, error;
    };

    Program() {
        std::filesystem::copy(NORVELIS_APP, folder_.Path("app"), std::filesystem::copy_options::recursive);
        Connection::CreateStore(StorePath());  // Somebody may have worked with the delivered one.
    }

    std::string App() const { return folder_.Path("app"); }
    std::string StorePath() const { return App() + "/Database/records.mdb"; }
    std::string Path(const std::string& name) const { return folder_.Path(name); }

    /// `before` goes before the program in the shell's words: a limit, another program that calls it.
    Result Run(const std::string& arguments, const std::string& before = {}) const {
        const std::string errors = folder_.Path("stderr");
        const std::string command =
            before + App() + "/norvelis-cli " + arguments + " 2>" + errors + " </dev/null";
        Result result{-1, {}, {}};
        std::FILE* pipe = popen(command.c_str(), "r");
        std::array<char, 4096> buffer{};
        while (const auto count = std::fread(buffer.data(), 1, buffer.size(), pipe))
            result.out.append(buffer.data(), count);
        const int status = pclose(pipe);
        result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        result.error = ReadFile(errors);
        return result;
    }

  private:
    TemporaryFolder folder_;
};

}  // namespace norvelis
