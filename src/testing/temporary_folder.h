#pragma once

#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <string>

namespace norvelis {

/// A folder of its own for one test, removed at the end.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        static std::atomic<int> counter{0};
        path_ = std::filesystem::temp_directory_path() /
                ("norvelis-test-" + std::to_string(getpid()) + "-" + std::to_string(counter++));
        std::filesystem::create_directories(path_);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string Path(const std::string& name = {}) const {
        return name.empty() ? path_.string() : (path_ / name).string();
    }

  private:
    std::filesystem::path path_;
};

}  // namespace norvelis
