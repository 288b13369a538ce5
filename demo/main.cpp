// corvane-demo PICTURES: shows Corvane at work on the simulated Mac that the environment names, whose helper
// serves already, and leaves pictures of its panel in that folder. Needs an X display.

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <variant>

#include "app/windows/QtApplication.h"
#include "demo/PanelDemo.h"
#include "platform/select/selectAppPlatform.h"

int main(int argc, char** argv) {
    using namespace corvane;
    const auto options = PlatformOptions::fromEnvironment([](const char* name) { return std::getenv(name); });
    const auto* chosen = std::get_if<PlatformOptions>(&options);
    if (argc != 2 || chosen == nullptr || chosen->scenarioPath.empty()) {
        std::fputs("usage: corvane-demo PICTURES, with CORVANE_SMC=simulated and CORVANE_SIMULATION\n",
                   stderr);
        return EXIT_FAILURE;
    }
    const QtApplication application({argv, argv + argc}, "xcb");
    try {
        const auto platform = selectAppPlatform(*chosen);
        return PanelDemo(*platform, {chosen->scenarioPath, argv[1]}).run() ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "corvane-demo: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
