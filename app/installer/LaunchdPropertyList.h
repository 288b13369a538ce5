#pragma once

#include <string>

#include "app/installer/LaunchdLocations.h"

namespace corvane {

/// The property list that registers the installed helper with launchd, UTF-8. The service is started by the
/// first client that connects: it has no key that starts it earlier or keeps it alive.
[[nodiscard]] std::string makePlist(const LaunchdLocations& installed);

}  // namespace corvane
