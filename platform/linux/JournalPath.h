#pragma once

#include <cstdlib>
#include <string>

namespace corvane {

/// Where fans that are not with their firmware are remembered: in the folder the service manager made for the
/// helper, which a restart of the machine empties. A tree that stands in for `/sys` has a folder beside it,
/// so that its fans are never taken for the machine's.
inline std::string fanJournalPath(const std::string& sysfsRoot) {
    const char* folder = std::getenv("RUNTIME_DIRECTORY");
    const std::string fallback = sysfsRoot == "/sys" ? "/run/corvane" : sysfsRoot + ".corvane";
    return (folder != nullptr ? folder : fallback) + "/fans";
}

}  // namespace corvane
