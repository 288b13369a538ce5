// The one symbol that the executable looks for in the application's module.

#include "entry/ApplicationModule.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <variant>

#include "app/application/runApplication.h"
#include "app/windows/QtApplication.h"
#include "app/windows/quickViews.h"
#include "platform/linux/HeldSignals.h"
#include "platform/linux/gui/DesktopDisplay.h"
#include "platform/select/selectAppPlatform.h"

namespace corvane {

namespace {

const char* environment(const char* name) {
    return std::getenv(name);
}

int fail(const std::string& problem) {
    std::fprintf(stderr, "corvane: %s\n", problem.c_str());
    return EXIT_FAILURE;
}

int runOnDesktop(int argc, char** argv, const PlatformOptions& options) {
    const auto display = DesktopDisplay::find(environment);
    if (const auto* problem = std::get_if<std::string>(&display)) {
        return fail(*problem);
    }
    // Before Qt starts threads, which would take the signals.
    blockTerminationSignals();
    const QtApplication application({argv, argv + argc}, std::get<DesktopDisplay>(display).qtPlatform);
    return runApplication(*selectAppPlatform(options), quickViews());
}

}  // namespace

}  // namespace corvane

extern "C" [[gnu::visibility("default")]] int corvaneApplicationMain(int argc, char** argv) {
    using namespace corvane;
    const auto options = PlatformOptions::fromEnvironment(environment);
    if (const auto* mistake = std::get_if<std::string>(&options)) {
        return fail(*mistake);
    }
    return runOnDesktop(argc, argv, std::get<PlatformOptions>(options));
}
