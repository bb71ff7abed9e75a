#pragma once

#include <string>

namespace norvelis {

/// A new folder among the system's temporary files, removed at the end of the scope with all that is then in
/// it. RuntimeFailure where that place cannot be written.
class WorkFolder {
  public:
    WorkFolder();
    ~WorkFolder();
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    const std::string& Path() const { return path_; }

  private:
    std::string path_;
};

}  // namespace norvelis
