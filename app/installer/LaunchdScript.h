#pragma once

#include <filesystem>
#include <string>

#include "app/installer/LaunchdLocations.h"

namespace corvane {

/// The shell script that root runs to install the helper: it copies both files to their places and registers
/// the service. A copy that fails ends it; a step of launchctl never does, so that an update that has come
/// this far is not left unregistered.
[[nodiscard]] std::string launchdScript(const std::filesystem::path& helper,
                                        const std::filesystem::path& propertyList,
                                        const LaunchdLocations& installed);

}  // namespace corvane
