#include "platform/macos/desktop/makeMacRelauncher.h"

#include <string>
#include <vector>

#include <crt_externs.h>

#include "platform/ExecutablePath.h"
#include "platform/macos/desktop/MainBundle.h"
#include "platform/posix/WaitingRelauncher.h"

namespace corvane {

namespace {

std::vector<std::string> restartCommand() {
    if (!MainBundle::identifier()) {
        return {executablePath().string()};
    }
    return {"/usr/bin/open", "-n", MainBundle::path().string()};
}

}  // namespace

std::unique_ptr<Relauncher> makeMacRelauncher(Log& log) {
    return std::make_unique<WaitingRelauncher>(restartCommand(), *_NSGetEnviron(), log);
}

}  // namespace corvane
