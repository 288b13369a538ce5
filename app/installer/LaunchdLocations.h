#pragma once

#include <filesystem>

namespace corvane {

/// Where the helper is put for launchd, which looks for its services in fixed places.
struct LaunchdLocations {
    std::filesystem::path helper = "/Library/PrivilegedHelperTools/de.tavrin.corvane";
    std::filesystem::path propertyList = "/Library/LaunchDaemons/de.tavrin.corvane.smchelper.plist";
};

}  // namespace corvane
