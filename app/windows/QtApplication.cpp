#include "app/windows/QtApplication.h"

#include <QQuickWindow>
#include <QtGlobal>
#include <utility>

#include "platform/ApplicationIdentifier.h"

namespace corvane {

namespace {

/// Behind the program's name, so that the user's own wish, which comes later, counts.
std::vector<std::string> withPlatform(std::vector<std::string> arguments, std::string platform) {
    const auto behindName = arguments.begin() + (arguments.empty() ? 0 : 1);
    arguments.insert(behindName, {"-platform", std::move(platform)});
    return arguments;
}

}  // namespace

QtApplication::Arguments::Arguments(std::vector<std::string> given)
    : texts(std::move(given)), count(static_cast<int>(texts.size())) {
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
}

QtApplication::QtApplication(std::vector<std::string> arguments, std::string platform)
    : arguments_(withPlatform(std::move(arguments), std::move(platform))),
      application_(arguments_.count, arguments_.pointers.data()) {
    QGuiApplication::setApplicationName("Corvane");
    QGuiApplication::setDesktopFileName(applicationIdentifier);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    // A small panel is drawn by the processor: that takes less memory and time than to wake the graphics
    // hardware for it. Who wants something else says so in the environment.
    if (!qEnvironmentVariableIsSet("QT_QUICK_BACKEND")) {
        QQuickWindow::setSceneGraphBackend("software");
    }
}

}  // namespace corvane
