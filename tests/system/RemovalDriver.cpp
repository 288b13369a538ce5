// Runs the application's real uninstaller on a main loop, with the login item and the settings of the
// environment, and prints what comes of it; then, as the application does, it clears the user's traces if
// there was success.
//
//   removal-driver FOLDER          FOLDER is the application's own folder
//   removal-driver leave-traces    makes a login item and settings

#include <QCoreApplication>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include <fmt/format.h>

#include "platform/linux/StderrLog.h"
#include "platform/linux/desktop/JsonUserDefaults.h"
#include "platform/linux/desktop/PkexecUninstaller.h"
#include "platform/linux/desktop/XdgLoginItem.h"
#include "platform/posix/HeldSignals.h"
#include "platform/posix/PosixFileSystem.h"
#include "tests/system/printResult.h"

namespace corvane {
namespace {

const char* variable(const char* name) {
    return std::getenv(name);
}

int run(int argumentCount, char** arguments) {
    // As the application does.
    blockTerminationSignals();
    QCoreApplication application(argumentCount, arguments);
    if (argumentCount != 2) {
        fmt::print(stderr, "usage: removal-driver FOLDER|leave-traces\n");
        return 64;
    }
    StderrLog log;
    PosixFileSystem files;
    JsonUserDefaults defaults(settingsPath(variable), log);
    XdgLoginItem loginItem(files, log, autostartFile(variable), "/somewhere/corvane");
    if (std::string_view(arguments[1]) == "leave-traces") {
        defaults.set("loginChoiceMade", true);
        loginItem.setEnabled(true);
        return 0;
    }
    PkexecUninstaller uninstaller(loginItem, defaults, files,
                                  {.folder = arguments[1], .traces = userTraces(variable)});
    uninstaller.performPrivilegedRemoval([&](const InstallResult& result) {
        printResult(result);
        if (result == InstallResult::success()) {
            uninstaller.clearUserTraces();
        }
        QMetaObject::invokeMethod(
            &application, [] { QCoreApplication::exit(); }, Qt::QueuedConnection);
    });
    return QCoreApplication::exec();
}

}  // namespace
}  // namespace corvane

int main(int argumentCount, char** arguments) {
    return corvane::run(argumentCount, arguments);
}
