#pragma once

#include <QList>
#include <chrono>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <string_view>

#include "app/automation/TriggerManager.h"
#include "platform/simulated/MemoryUserDefaults.h"
#include "platform/simulated/SimulatedDisplays.h"
#include "platform/simulated/SimulatedLocale.h"
#include "platform/simulated/SimulatedPowerAssertions.h"
#include "platform/simulated/SimulatedPowerSources.h"
#include "platform/simulated/SimulatedRunningApplications.h"
#include "platform/simulated/VirtualTime.h"
#include "tests/support/StoredBytes.h"

namespace corvane {

using namespace std::chrono_literals;

inline std::ostream& operator<<(std::ostream& out, const TriggerApp& app) {
    return out << app.bundleID.toStdString() << " (" << app.name.toStdString() << ", "
               << app.coolingText().toStdString() << ")";
}

inline TriggerApp rule(const char* name, std::optional<CoolingProfile::Kind> cooling = std::nullopt) {
    return {.bundleID = QStringLiteral("org.example.%1").arg(name), .name = name, .cooling = cooling};
}
inline std::string identifierOf(const TriggerApp& app) {
    return app.bundleID.toStdString();
}

/// The automation on virtual time, of a computer without a battery. Set up what it shall find, then `open`
/// it.
class TriggerMachine {
public:
    void open() {
        manager.emplace(
            TriggerManagerServices{mainLoop, power, powerSources, displays, applications, defaults, lang});
    }
    /// Opened and switched on.
    void openOn() {
        defaults.set(TriggerManager::enabledSetting, true);
        open();
    }

    /// Silently: the automation finds it out by itself.
    void runOnBattery(std::optional<int> percent) {
        powerSources.set({PowerSourceDescription{
            .currentCapacity = percent, .maxCapacity = 100, .state = "Battery Power", .isCharging = false}});
    }
    void runOnAC(int percent) {
        powerSources.set({PowerSourceDescription{
            .currentCapacity = percent, .maxCapacity = 100, .state = "AC Power", .isCharging = true}});
    }

    /// The types of what is held.
    [[nodiscard]] std::multiset<std::string> held() const {
        std::multiset<std::string> types;
        for (const auto& [id, assertion] : power.held()) {
            types.insert(assertion.type);
        }
        return types;
    }
    [[nodiscard]] std::string reason() const { return manager->activeReason().toStdString(); }
    [[nodiscard]] std::optional<std::string> storedApps() const {
        return storedText(defaults, TriggerManager::appsSetting);
    }

    VirtualTime time;
    VirtualQueue mainLoop{time};
    SimulatedPowerAssertions power;
    SimulatedPowerSources powerSources;
    SimulatedDisplays displays;
    SimulatedRunningApplications applications;
    MemoryUserDefaults defaults;
    SimulatedLocale locale;
    Lang lang{defaults, locale};
    std::optional<TriggerManager> manager;
};

/// What an automation that keeps the computer awake holds, and nothing else.
inline const std::multiset<std::string> awake{PowerAssertions::preventUserIdleSystemSleep,
                                              PowerAssertions::preventUserIdleDisplaySleep};
inline const std::multiset<std::string> nothing;

}  // namespace corvane
