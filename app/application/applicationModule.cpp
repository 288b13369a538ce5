// The one symbol that the executable looks for in the application's module.

#include "entry/ApplicationModule.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <variant>

#include "app/application/runApplication.h"
#include "app/windows/QtApplication.h"
#include "app/windows/quickViews.h"
#include "platform/select/prepareDesktop.h"
#include "platform/select/selectAppPlatform.h"

namespace corvane {

namespace {

int fail(const std::string& problem) {
    std::fprintf(stderr, "corvane: %s\n", problem.c_str());
    return EXIT_FAILURE;
}

int runOnDesktop(int argc, char** argv, const PlatformOptions& options) {
    // Before Qt starts threads, which would take the signals.
    auto desktop = prepareDesktop();
    if (const auto* problem = std::get_if<std::string>(&desktop)) {
        return fail(*problem);
    }
    const QtApplication application({argv, argv + argc}, std::get<QtPlatform>(desktop).name);
    std::get<QtPlatform>(desktop).hold.reset();
    return runApplication(*selectAppPlatform(options), quickViews());
}

}  // namespace

}  // namespace corvane

extern "C" [[gnu::visibility("default")]] int corvaneApplicationMain(int argc, char** argv) {
    using namespace corvane;
    const auto options = PlatformOptions::fromEnvironment([](const char* name) { return std::getenv(name); });
    if (const auto* mistake = std::get_if<std::string>(&options)) {
        return fail(*mistake);
    }
    return runOnDesktop(argc, argv, std::get<PlatformOptions>(options));
}
