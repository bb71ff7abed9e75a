#include "core/app_state.h"

#include <utility>

#include "base/paths.h"

namespace norvelis {

AppState::AppState(std::string applicationFolder, Host& hostPort, Clock& clockPort, Random randomSource)
    : ApplicationFolder(std::move(applicationFolder)),
      host(hostPort),
      clock(clockPort),
      random(randomSource),
      progress(hostPort) {
    ApplicationFolder = NativePath(ApplicationFolder);
    while (ApplicationFolder.size() > 1 && ApplicationFolder.ends_with('/')) ApplicationFolder.pop_back();
}

std::string AppState::AppPath(std::string_view literal) const {
    return NativePath(ApplicationFolder + std::string(literal));
}

}  // namespace norvelis
