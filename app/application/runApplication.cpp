#include "app/application/runApplication.h"

#include <cstdlib>

#include "app/application/Application.h"

namespace corvane {

int runApplication(AppPlatform& platform) {
    MainLoop& mainLoop = platform.mainLoop();
    mainLoop.holdTerminationSignals();
    Application application(platform);
    mainLoop.onTerminationSignal([&mainLoop] { mainLoop.exit(EXIT_SUCCESS); });
    application.start();
    return mainLoop.run();
}

}  // namespace corvane
