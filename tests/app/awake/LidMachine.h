#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "app/awake/LidManager.h"
#include "app/awake/LowBatteryAutoStop.h"
#include "platform/simulated/SimulatedPowerAssertions.h"
#include "platform/simulated/SimulatedPowerSources.h"
#include "tests/app/awake/Battery.h"
#include "tests/app/fan/FanMachine.h"

namespace corvane {

/// A fan machine with the closed-lid mode, at a temperature that asks for no cooling.
class LidMachine : public FanMachine {
public:
    LidMachine() { openAt(50); }

    /// Joins the mode with the fan controller.
    void openLid() {
        lid.emplace(LidManagerServices{mainLoop, power, powerSources, thermal, defaults, notifier, lang});
        lid->setFan(*fan);
    }

    void switchOn() {
        lid->setEnabled(true);
        settle();
    }
    void switchOff() {
        lid->setEnabled(false);
        settle();
    }

    /// The lid requests that reached the helper since requests were last taken: "lid on" or "lid off".
    [[nodiscard]] std::vector<std::string> takeLidRequests() {
        std::vector<std::string> texts = takeRequests();
        std::erase_if(texts, [](const std::string& text) { return !text.starts_with("lid"); });
        return texts;
    }

    [[nodiscard]] bool isSleepDisabled() const { return helper.sleepSetting.isSleepDisabled(); }
    [[nodiscard]] std::string lastAutoOff() const { return lid->lastAutoOff().toStdString(); }

    /// What was posted for the closed-lid mode: its bodies, oldest first.
    [[nodiscard]] std::vector<std::string> postedUnder(const std::string& title) const {
        std::vector<std::string> bodies;
        for (const UserNotification& notification : center.posted()) {
            if (notification.title == title) {
                bodies.push_back(notification.body);
            }
        }
        return bodies;
    }

    SimulatedPowerAssertions power;
    SimulatedPowerSources powerSources;
    std::optional<LidManager> lid;
};

}  // namespace corvane
