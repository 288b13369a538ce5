#include "app/installer/LaunchdRemovalScript.h"

#include <string_view>

#include <fmt/format.h>

#include "app/installer/ShellQuoting.h"
#include "platform/FanHelperProtocol.h"

namespace corvane {

namespace {

constexpr std::string_view removalForm = R"(launchctl bootout system/{label} 2>/dev/null || true
rm -f {helper}
rm -f {list}
rm -f {log}
pkgutil --forget {package} 2>/dev/null || true
rm -rf {bundle} 2>/dev/null || true
exit 0)";

/// As the installer package calls itself in the system's receipts.
constexpr std::string_view installerPackage = "de.tavrin.corvane.pkg";

}  // namespace

std::string launchdRemovalScript(const std::filesystem::path& bundle, const LaunchdLocations& installed) {
    return fmt::format(removalForm, fmt::arg("label", FanHelperProtocol::serviceName),
                       fmt::arg("helper", shellQuoted(installed.helper)),
                       fmt::arg("list", shellQuoted(installed.propertyList)),
                       fmt::arg("log", shellQuoted(installed.log)), fmt::arg("package", installerPackage),
                       fmt::arg("bundle", shellQuoted(bundle)));
}

}  // namespace corvane
