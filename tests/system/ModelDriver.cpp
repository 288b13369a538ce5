// The application's models without a window, for system tests: does what it reads on standard input, a
// command a line, and prints what changes on standard output, "PROPERTY VALUE" a line. Ends with its input.

#include <QCoreApplication>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>
#include <variant>

#include <unistd.h>

#include "app/application/Application.h"
#include "platform/linux/desktop/QtDescriptor.h"
#include "platform/select/selectAppPlatform.h"
#include "tests/system/PropertyPrinter.h"

namespace corvane {
namespace {

void obey(FanController& fan, const std::string& line) {
    std::istringstream words(line);
    std::string command;
    std::string word;
    words >> command >> word;
    const bool on = word == "on";
    if (command == "mode") {
        fan.setCoolingMode(coolingModeFromRawValue(word).value());
    } else if (command == "fans") {
        fan.setFansEnabled(on);
    } else if (command == "slider") {
        fan.setManualFloor(std::stod(word));
    } else if (command == "profile") {
        fan.setCoolingProfile(CoolingProfile::fromRawValue(word).value());
    } else if (command == "request") {
        fan.requestCooling(CoolingProfile::fromRawValue(word), "apps");
    } else if (command == "lid") {
        fan.setLidStayAwake(on);
    } else if (command == "install") {
        fan.installHelper();
    } else {
        std::fprintf(stderr, "ModelDriver: no such command: %s\n", line.c_str());
    }
}

int drive(const PlatformOptions& options) {
    const auto platform = selectAppPlatform(options);
    Application application(*platform);
    const PropertyPrinter printer("fan", application.fan());
    std::string unread;
    const QtDescriptor input(dup(STDIN_FILENO), [&] {
        std::array<char, 256> text{};
        const ssize_t length = read(STDIN_FILENO, text.data(), text.size());
        if (length <= 0) {
            platform->mainLoop().exit(EXIT_SUCCESS);
            return;
        }
        unread.append(text.data(), static_cast<std::size_t>(length));
        for (std::size_t end = 0; (end = unread.find('\n')) != std::string::npos; unread.erase(0, end + 1)) {
            obey(application.fan(), unread.substr(0, end));
        }
    });
    application.start();
    return platform->mainLoop().run();
}

}  // namespace
}  // namespace corvane

int main(int argc, char** argv) {
    using namespace corvane;
    const auto options = PlatformOptions::fromEnvironment([](const char* name) { return std::getenv(name); });
    if (const auto* mistake = std::get_if<std::string>(&options)) {
        std::fprintf(stderr, "ModelDriver: %s\n", mistake->c_str());
        return EXIT_FAILURE;
    }
    const QCoreApplication application(argc, argv);
    return drive(std::get<PlatformOptions>(options));
}
