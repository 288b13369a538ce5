// Runs the application's real installer on a main loop and prints what comes of it.
//
//   installation-driver FOLDER [until-input]
//
// FOLDER is the application's own folder. With "until-input" the installer is destroyed as soon as there is
// something to read on standard input.

#include <QCoreApplication>
#include <QSocketNotifier>
#include <cstdio>
#include <memory>
#include <string_view>

#include <fmt/format.h>
#include <unistd.h>

#include "platform/linux/desktop/PkexecInstaller.h"
#include "platform/posix/HeldSignals.h"
#include "platform/posix/PosixFileSystem.h"
#include "tests/system/printResult.h"

namespace corvane {
namespace {

void printState(const char* when, const PkexecInstaller& installer) {
    fmt::print("{}: installed={} update={}\n", when, installer.isInstalled(), installer.needsUpdate());
}

int run(int argumentCount, char** arguments) {
    // As the application does.
    blockTerminationSignals();
    QCoreApplication application(argumentCount, arguments);
    if (argumentCount < 2) {
        fmt::print(stderr, "usage: installation-driver FOLDER [until-input]\n");
        return 64;
    }
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    const PosixFileSystem files;
    auto installer = std::make_unique<PkexecInstaller>(files, PkexecInstaller::Paths{.folder = arguments[1]});
    printState("before", *installer);

    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    input.setEnabled(argumentCount > 2 && std::string_view(arguments[2]) == "until-input");
    QObject::connect(&input, &QSocketNotifier::activated, [&] {
        installer.reset();
        fmt::print("destroyed\n");
        QCoreApplication::exit();
    });
    installer->install([&](const InstallResult& result) {
        printResult(result);
        printState("after", *installer);
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
