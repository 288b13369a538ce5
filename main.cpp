// The one executable. Its first argument picks the role; nothing else is decided here.

#include <cstdio>
#include <cstdlib>
#include <string>
#include <variant>
#include <vector>

#include "entry/ApplicationModule.h"
#include "entry/Role.h"
#include "helper/runDaemon.h"
#include "platform/ExecutablePath.h"
#include "platform/select/selectPlatform.h"
#include "smc/diagnostics/diagnostics.h"

namespace {

using namespace corvane;

/// The arguments without the program's name; read again by the diagnostics.
std::vector<std::string> processArguments;

int runApplication(int argc, char** argv) {
    const auto module = ApplicationModule::load(executablePath());
    if (const auto* problem = std::get_if<std::string>(&module)) {
        std::fprintf(stderr, "corvane: %s\n", problem->c_str());
        return EXIT_FAILURE;
    }
    return std::get<ApplicationModule::Main>(module)(argc, argv);
}

int runCommand(Role role, CommandPlatform& platform) {
    switch (role) {
        case Role::smcWrite:
            return runSmcWrite(platform, processArguments);
        case Role::temps:
            return runTemps(platform);
        case Role::diag:
            return runDiag(platform, processArguments);
        case Role::dumpKeys:
            return runDumpKeys(platform);
        case Role::daemon:
        case Role::application:
            break;
    }
    return EXIT_FAILURE;
}

int run(Role role, const PlatformOptions& options) {
    if (role == Role::daemon) {
        return runDaemon(*selectHelperPlatform(options));
    }
    return runCommand(role, *selectCommandPlatform(options));
}

}  // namespace

int main(int argc, char** argv) {
    processArguments.assign(argv + (argc > 0 ? 1 : 0), argv + argc);
    const Role role = roleFor(processArguments);
    if (role == Role::application) {
        return runApplication(argc, argv);
    }
    const auto options = PlatformOptions::fromEnvironment([](const char* name) { return std::getenv(name); });
    if (const auto* mistake = std::get_if<std::string>(&options)) {
        std::fprintf(stderr, "corvane: %s\n", mistake->c_str());
        return EXIT_FAILURE;
    }
    return run(role, std::get<PlatformOptions>(options));
}
