// The program's path as the loader of a Mac tells it: as it was started, links and all.

#include <cstring>
#include <string>

#include <mach-o/dyld.h>

#include "tests/platform/macos/fakes/mach-o/FakeLoader.h"

namespace corvane {

namespace {

std::string& theFakeExecutable() {
    static std::string path;
    return path;
}

}  // namespace

void setFakeExecutable(std::string path) {
    theFakeExecutable() = std::move(path);
}

}  // namespace corvane

int _NSGetExecutablePath(char* path, uint32_t* size) {
    const std::string& executable = corvane::theFakeExecutable();
    const auto needed = static_cast<uint32_t>(executable.size() + 1);
    if (*size < needed) {
        *size = needed;
        return -1;
    }
    std::memcpy(path, executable.c_str(), needed);
    return 0;
}
