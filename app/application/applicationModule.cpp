// The one symbol that the executable looks for in the application's module.

#include "entry/ApplicationModule.h"

#include <QCoreApplication>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <variant>

#include "app/application/runApplication.h"
#include "platform/select/selectAppPlatform.h"

extern "C" [[gnu::visibility("default")]] int corvaneApplicationMain(int argc, char** argv) {
    using namespace corvane;
    const auto options = PlatformOptions::fromEnvironment([](const char* name) { return std::getenv(name); });
    if (const auto* mistake = std::get_if<std::string>(&options)) {
        std::fprintf(stderr, "corvane: %s\n", mistake->c_str());
        return EXIT_FAILURE;
    }
    const QCoreApplication application(argc, argv);
    return runApplication(*selectAppPlatform(std::get<PlatformOptions>(options)));
}
