#include "platform/linux/desktop/PkexecUninstaller.h"

#include <utility>

#include "platform/ApplicationIdentifier.h"
#include "platform/linux/desktop/XdgFolder.h"
#include "platform/linux/desktop/XdgLoginItem.h"

namespace corvane {

namespace {

constexpr const char* removalScript = "uninstall";
/// The application's name, which Qt keeps views under that it had to compile.
constexpr const char* nameForQt = "Corvane";

}  // namespace

PkexecUninstaller::PkexecUninstaller(LoginItem& loginItem, UserDefaults& defaults, FileSystem& files,
                                     const Paths& paths)
    : loginItem_(loginItem),
      defaults_(defaults),
      files_(files),
      traces_(paths.traces),
      script_({.script = paths.folder / removalScript, .work = "the removal", .pkexec = paths.pkexec}) {}

void PkexecUninstaller::performPrivilegedRemoval(Done done) {
    script_.run(std::move(done));
}

void PkexecUninstaller::clearUserTraces() {
    loginItem_.setEnabled(false);
    defaults_.removeAll();
    for (const std::filesystem::path& trace : traces_) {
        files_.removeTree(trace);
    }
}

std::vector<std::filesystem::path> userTraces(const EnvironmentLookup& environment) {
    const auto caches = xdgFolder(environment, "XDG_CACHE_HOME", ".cache");
    // A login item that the user has switched off in the desktop's settings counts as off, and is still
    // there.
    return {autostartFile(environment), caches / applicationIdentifier, caches / nameForQt};
}

}  // namespace corvane
