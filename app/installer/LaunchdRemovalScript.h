#pragma once

#include <filesystem>
#include <string>

#include "app/installer/LaunchdLocations.h"

namespace corvane {

/// The shell script that root runs to remove the helper and the application's bundle. Every step may fail, as
/// where something was never installed or is gone already; the script always succeeds.
[[nodiscard]] std::string launchdRemovalScript(const std::filesystem::path& bundle,
                                               const LaunchdLocations& installed);

}  // namespace corvane
