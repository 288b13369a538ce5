#include "platform/linux/desktop/XdgFolder.h"

#include <pwd.h>
#include <unistd.h>

namespace corvane {

namespace {

/// Empty when the variable names no absolute path.
std::filesystem::path absolutePath(const EnvironmentLookup& environment, const char* variable) {
    const char* const value = environment(variable);
    return value != nullptr && *value == '/' ? value : "";
}

std::filesystem::path homeFolder(const EnvironmentLookup& environment) {
    if (auto home = absolutePath(environment, "HOME"); !home.empty()) {
        return home;
    }
    const passwd* const user = getpwuid(getuid());
    return user == nullptr ? "/" : user->pw_dir;
}

}  // namespace

std::filesystem::path xdgFolder(const EnvironmentLookup& environment, const char* variable,
                                const char* belowHome) {
    auto folder = absolutePath(environment, variable);
    return folder.empty() ? homeFolder(environment) / belowHome : folder;
}

}  // namespace corvane
