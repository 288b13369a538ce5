#include "app/application/runApplication.h"

#include <cstdlib>

#include <fmt/format.h>

#include "app/application/Application.h"

namespace corvane {

int runApplication(AppPlatform& platform, const Views& views) {
    MainLoop& mainLoop = platform.mainLoop();
    mainLoop.holdTerminationSignals();
    MenuBar* running = nullptr;
    const auto singleInstance = platform.makeSingleInstance();
    const Start start = singleInstance->claim([&running] {
        if (running != nullptr) {
            running->openPanel();
        }
    });
    if (start.role == StartRole::second) {
        return EXIT_SUCCESS;
    }
    if (start.role == StartRole::unanswered) {
        platform.log().write(fmt::format("Corvane: {}", start.error));
        return EXIT_FAILURE;
    }
    Application application(platform);
    MenuBar menuBar(platform, application, views);
    mainLoop.onTerminationSignal([&mainLoop] { mainLoop.exit(EXIT_SUCCESS); });
    menuBar.start();
    running = &menuBar;
    return mainLoop.run();
}

}  // namespace corvane
