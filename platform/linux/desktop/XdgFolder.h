#pragma once

#include <filesystem>

#include "platform/linux/desktop/EnvironmentLookup.h"

namespace corvane {

/// One of the folders that a desktop keeps for each of its users: what `variable` names if that is an
/// absolute path, as in "XDG_CONFIG_HOME", else `belowHome` in the user's home folder, as in ".config". Home
/// is what $HOME names if that is an absolute path, else what the system knows of the user, else "/". So it
/// is always absolute; it need not exist.
[[nodiscard]] std::filesystem::path xdgFolder(const EnvironmentLookup& environment, const char* variable,
                                              const char* belowHome);

}  // namespace corvane
