#pragma once

#include <cstdlib>
#include <string>

namespace corvane {

/// Where fans that are not with their firmware are remembered: in the folder the service manager made for the
/// helper, which a restart of the machine empties.
inline std::string fanJournalPath() {
    const char* folder = std::getenv("RUNTIME_DIRECTORY");
    return std::string(folder != nullptr ? folder : "/run/corvane") + "/fans";
}

}  // namespace corvane
