#include "platform/linux/desktop/PkexecUninstaller.h"

#include <utility>

#include "platform/ApplicationIdentifier.h"
#include "platform/linux/desktop/XdgLoginItem.h"

namespace corvane {

namespace {

constexpr const char* removalScript = "uninstall";
/// The application's name, which Qt keeps views under that it had to compile.
constexpr const char* nameForQt = "Corvane";

/// Empty when the environment names no home.
std::filesystem::path cacheFolder(const EnvironmentLookup& environment) {
    const auto absolute = [&](const char* name) {
        const char* const value = environment(name);
        return std::filesystem::path(value != nullptr && *value == '/' ? value : "");
    };
    if (auto cache = absolute("XDG_CACHE_HOME"); !cache.empty()) {
        return cache;
    }
    const auto home = absolute("HOME");
    return home.empty() ? home : home / ".cache";
}

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
    std::vector<std::filesystem::path> traces;
    // One that the user has switched off in the desktop's settings counts as off, and is still there.
    if (auto file = autostartFile(environment); !file.empty()) {
        traces.push_back(std::move(file));
    }
    if (const auto caches = cacheFolder(environment); !caches.empty()) {
        traces.push_back(caches / applicationIdentifier);
        traces.push_back(caches / nameForQt);
    }
    return traces;
}

}  // namespace corvane
