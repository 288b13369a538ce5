#include "app/installer/LaunchdScript.h"

#include <string_view>

#include <fmt/format.h>

#include "app/installer/ShellQuoting.h"
#include "platform/FanHelperProtocol.h"

namespace corvane {

namespace {

constexpr std::string_view scriptForm = R"(set -e
mkdir -p /Library/PrivilegedHelperTools
cp {helper} {installedHelper}
chown root:wheel {installedHelper}
chmod 755 {installedHelper}
cp {list} {installedList}
chown root:wheel {installedList}
chmod 644 {installedList}
# Reload the launchd service. `bootout` is ASYNC: bootstrapping too soon
# races the still-tearing-down old job and fails — and under `set -e`
# (with no `|| true`) that used to abort the script right here, leaving the
# on-demand daemon UNREGISTERED so it never respawned after an update.
# Fix: wait for teardown, never let a transient launchctl error abort,
# verify it actually registered (retry once), then kickstart so the new
# binary is live immediately.
launchctl bootout system/{label} 2>/dev/null || true
sleep 1
launchctl bootstrap system {installedList} 2>/dev/null || true
launchctl enable system/{label} 2>/dev/null || true
if ! launchctl print system/{label} >/dev/null 2>&1; then
    sleep 1
    launchctl bootstrap system {installedList} 2>/dev/null || true
fi
launchctl kickstart system/{label} 2>/dev/null || true)";

}  // namespace

std::string launchdScript(const std::filesystem::path& helper, const std::filesystem::path& propertyList,
                          const LaunchdLocations& installed) {
    return fmt::format(scriptForm, fmt::arg("helper", shellQuoted(helper)),
                       fmt::arg("installedHelper", shellQuoted(installed.helper)),
                       fmt::arg("list", shellQuoted(propertyList)),
                       fmt::arg("installedList", shellQuoted(installed.propertyList)),
                       fmt::arg("label", FanHelperProtocol::serviceName));
}

}  // namespace corvane
