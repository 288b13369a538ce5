#pragma once

#include <string>
#include <vector>

#include "platform/InstalledApplications.h"

namespace corvane {

/// The applications in `folders`, and in the folders within, as far down as makers put them: each identifier
/// once, the first one found. Takes as long as the disk does; any thread.
[[nodiscard]] InstalledApplications::List applicationsIn(const std::vector<std::string>& folders);

/// Where a Mac has its applications: the user's, everybody's, the system's.
[[nodiscard]] std::vector<std::string> applicationFolders();

}  // namespace corvane
