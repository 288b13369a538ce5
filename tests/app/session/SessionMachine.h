#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "app/awake/LowBatteryAutoStop.h"
#include "app/session/SleepManager.h"
#include "platform/simulated/RecordingUrlOpener.h"
#include "platform/simulated/SimulatedDisplays.h"
#include "platform/simulated/SimulatedHttpsClient.h"
#include "platform/simulated/SimulatedPowerAssertions.h"
#include "platform/simulated/SimulatedPowerSources.h"
#include "platform/simulated/SimulatedRunningApplications.h"
#include "platform/simulated/SimulatedVolumes.h"
#include "tests/app/awake/Battery.h"
#include "tests/app/fan/FanMachine.h"

namespace corvane {

/// The application's root model with all that it owns, and the real fan helper on a simulated Mac. Set up
/// what it shall find, then `start` it. Its fan controller is the manager's; the machine's own is not made.
class SessionMachine : public FanMachine {
public:
    using Kind = SleepAssertions::Kind;
    using Kinds = SleepAssertions::Kinds;

    /// Starts the application, at a temperature that asks for no cooling by itself.
    void start(float celsius = 50) {
        helper.mac.holdSensorsAt(celsius);
        manager.emplace(servicesWith(host, notifier),
                        UpdateCheckerConfiguration{"https://example.org/feed", "", "1.0"});
        settle();
    }

    /// Starts the application where no helper is installed. Days pass quickly then.
    void startWithoutHelper() {
        installer.setInstalled(false);
        host.setInstalled(false);
        start();
    }

    /// The machine's services, with other ways to the helper and to the user.
    [[nodiscard]] SleepManagerServices servicesWith(HelperConnector& otherConnector,
                                                    Notifier& otherNotifier) {
        return {.mainLoop = mainLoop,
                .connector = otherConnector,
                .installer = installer,
                .thermalMonitor = thermal,
                .powerSources = powerSources,
                .power = power,
                .displays = displays,
                .applications = applications,
                .volumes = volumes,
                .client = client,
                .opener = opener,
                .defaults = defaults,
                .locale = locale,
                .notifier = otherNotifier,
                .lang = lang,
                .log = log};
    }

    [[nodiscard]] WallTime wallTime() const { return mainLoop.wallTime(); }
    void setClock(WallTime time) {
        helper.time.setWallTime(time);
        settle();
    }

    /// A rule of an application that runs, with the strongest cooling, switched on.
    void automate() {
        applications.start("render");
        manager->triggers().addApp({"render", "Render", CoolingProfile::Kind::max});
        manager->triggers().setAutomationEnabled(true);
    }

    [[nodiscard]] bool isIdle() const {
        return manager->activeKinds().empty() && manager->assertions().ids().empty() && !manager->expiresAt();
    }
    [[nodiscard]] std::size_t posted(const std::string& title) const {
        return static_cast<std::size_t>(std::ranges::count(postedTitles(), title));
    }

    SimulatedPowerSources powerSources;
    SimulatedPowerAssertions power;
    SimulatedDisplays displays;
    SimulatedRunningApplications applications;
    SimulatedVolumes volumes{mainLoop};
    SimulatedHttpsClient client{mainLoop};
    RecordingUrlOpener opener;
    std::optional<SleepManager> manager;
};

/// A started machine, without a helper unless the test is about the fans or the lid.
class SessionTest : public testing::Test {
protected:
    using Kind = SleepAssertions::Kind;
    using Kinds = SleepAssertions::Kinds;

    static constexpr const char* finished = "Keep-awake finished";
    static constexpr const char* batteryLow = "🪫 Battery low";

    SessionTest() { machine.startWithoutHelper(); }
    explicit SessionTest(float celsius) { machine.start(celsius); }

    SleepManager& manager() { return *machine.manager; }
    WallTime in(Duration duration) {
        return machine.wallTime() + std::chrono::duration_cast<WallTime::duration>(duration);
    }

    SessionMachine machine;
};

}  // namespace corvane
