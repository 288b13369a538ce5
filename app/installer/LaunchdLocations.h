#pragma once

#include <filesystem>

namespace corvane {

/// Where the helper is put for launchd, which looks for its services in fixed places.
struct LaunchdLocations {
    std::filesystem::path helper = "/Library/PrivilegedHelperTools/de.tavrin.corvane";
    std::filesystem::path propertyList = "/Library/LaunchDaemons/de.tavrin.corvane.smchelper.plist";
    /// Of what the helper writes to its standard output and error.
    std::filesystem::path log = "/var/log/corvane-smchelper.log";
};

}  // namespace corvane
