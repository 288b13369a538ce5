// The application's models without a window, for system tests: does what it reads on standard input, a
// command a line, and prints what changes on standard output, "PROPERTY VALUE" a line. Ends with its input.

#include <QCoreApplication>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <variant>
#include <vector>

#include <unistd.h>

#include "app/application/Application.h"
#include "platform/linux/desktop/QtDescriptor.h"
#include "platform/select/selectAppPlatform.h"
#include "tests/system/PropertyPrinter.h"

namespace corvane {
namespace {

using Arguments = std::vector<std::string>;

SleepAssertions::Kinds kindsOf(const std::string& names) {
    SleepAssertions::Kinds kinds;
    std::istringstream words(names);
    for (std::string name; std::getline(words, name, ',');) {
        if (const auto kind = SleepAssertions::kindFromRawValue(name)) {
            kinds.insert(*kind);
        }
    }
    return kinds;
}

/// The models, and the commands there are for them. Arguments that are missing end the program.
class Driver {
public:
    Driver(Application& application, SerialQueue& mainLoop)
        : manager_(application.manager()), mainLoop_(mainLoop) {}

    void obey(const std::string& line) {
        std::istringstream words(line);
        std::string command;
        words >> command;
        const Arguments arguments{std::istream_iterator<std::string>(words), {}};
        const auto known = commands_.find(command);
        if (known == commands_.end()) {
            std::fprintf(stderr, "ModelDriver: no such command: %s\n", line.c_str());
            return;
        }
        known->second(arguments);
    }

private:
    static bool isOn(const Arguments& arguments) { return arguments.at(0) == "on"; }

    /// KINDS ("system,display", "-" for none) "open" or SECONDS
    void keepAwake(const Arguments& arguments) {
        const std::string& until = arguments.at(1);
        manager_.apply(kindsOf(arguments.at(0)),
                       until == "open"
                           ? std::nullopt
                           : std::optional(mainLoop_.wallTime() + std::chrono::seconds(std::stoi(until))));
    }

    void listDrives() {
        for (const DriveItem& drive : manager_.drives().availableDrives()) {
            std::cout << "available " << drive.path.toStdString() << ' ' << drive.name.toStdString()
                      << std::endl;
        }
    }

    SleepManager& manager_;
    SerialQueue& mainLoop_;
    FanController& fan_ = manager_.fan();
    std::map<std::string, std::function<void(const Arguments&)>> commands_{
        {"mode",
         [this](const Arguments& to) { fan_.setCoolingMode(coolingModeFromRawValue(to.at(0)).value()); }},
        {"fans", [this](const Arguments& to) { fan_.setFansEnabled(isOn(to)); }},
        {"slider", [this](const Arguments& to) { fan_.setManualFloor(std::stod(to.at(0))); }},
        {"profile",
         [this](const Arguments& to) {
             fan_.setCoolingProfile(CoolingProfile::fromRawValue(to.at(0)).value());
         }},
        {"request",
         [this](const Arguments& to) {
             fan_.requestCooling(CoolingProfile::fromRawValue(to.at(0)), TriggerManager::coolingSource);
         }},
        {"install", [this](const Arguments&) { fan_.installHelper(); }},
        {"awake", [this](const Arguments& to) { keepAwake(to); }},
        {"toggle",
         [this](const Arguments& to) {
             manager_.toggle(SleepAssertions::kindFromRawValue(to.at(0)).value());
         }},
        {"reset", [this](const Arguments&) { manager_.resetAll(); }},
        // The helper's lock alone, without the mode that goes with it.
        {"lid-lock", [this](const Arguments& to) { fan_.setLidStayAwake(isOn(to)); }},
        {"lid", [this](const Arguments& to) { manager_.lid().setEnabled(isOn(to)); }},
        {"automation", [this](const Arguments& to) { manager_.triggers().setAutomationEnabled(isOn(to)); }},
        // ID NAME
        {"app",
         [this](const Arguments& to) {
             manager_.triggers().addApp({.bundleID = QString::fromStdString(to.at(0)),
                                         .name = QString::fromStdString(to.at(1)),
                                         .cooling = std::nullopt});
         }},
        // PATH NAME
        {"drive",
         [this](const Arguments& to) {
             manager_.drives().add(
                 {.path = QString::fromStdString(to.at(0)), .name = QString::fromStdString(to.at(1))});
         }},
        {"drives", [this](const Arguments& to) { manager_.drives().setEnabled(isOn(to)); }},
        {"interval",
         [this](const Arguments& to) { manager_.drives().setIntervalSeconds(std::stoi(to.at(0))); }},
        {"list-drives", [this](const Arguments&) { listDrives(); }},
    };
};

int drive(const PlatformOptions& options) {
    const auto platform = selectAppPlatform(options);
    Application application(*platform);
    SleepManager& manager = application.manager();
    const PropertyPrinter session("session", manager);
    const PropertyPrinter fan("fan", manager.fan());
    const PropertyPrinter automation("automation", manager.triggers());
    const PropertyPrinter lid("lid", manager.lid());
    const PropertyPrinter drives("drives", manager.drives());
    Driver driver(application, platform->mainQueue());
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
            driver.obey(unread.substr(0, end));
        }
    });
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
