#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/fan/FanController.h"
#include "app/shell/Lang.h"
#include "app/shell/Notifier.h"
#include "platform/simulated/MemoryUserDefaults.h"
#include "platform/simulated/RecordingLog.h"
#include "platform/simulated/RecordingNotificationCenter.h"
#include "platform/simulated/SimulatedHelperHost.h"
#include "platform/simulated/SimulatedInstaller.h"
#include "platform/simulated/SimulatedLocale.h"
#include "platform/simulated/SimulatedThermalState.h"
#include "tests/app/fan/NotedHelper.h"
#include "tests/helper/HelperMachine.h"

namespace corvane {

/// The application's fan controller and the real fan helper on a simulated Mac, on one virtual time. Set up
/// what the controller shall find, then `open` it.
class FanMachine {
public:
    explicit FanMachine(MacModel model = tinyMac()) : helper(std::move(model)) {}

    /// Makes the controller, with the application's services as they are now, and lets its first status come
    /// in.
    void open() {
        fan.emplace(FanControllerServices{mainLoop, host, installer, thermal, defaults, notifier, lang, log});
        settle();
    }

    /// Every sensor reads `celsius`, and the medians on both sides have seen nothing else for long.
    void openAt(float celsius) {
        helper.mac.holdSensorsAt(celsius);
        open();
        advance(20s);
    }

    void advance(Duration duration) { helper.advance(duration); }
    void settle() { helper.advance(Duration::zero()); }

    /// The helper's process ends, without a word to the fans.
    void killHelper() {
        helper.service.reset();
        host.kill();
    }

    /// From now on the application gets these records in place of what the helper reports.
    void report(std::function<StatusRecord()> record) {
        host.filterStatus([record = std::move(record)](const StatusRecord&) { return record(); });
    }
    void reportAsIs() { host.filterStatus(nullptr); }

    [[nodiscard]] std::vector<std::string> postedTitles() const {
        std::vector<std::string> titles;
        for (const UserNotification& notification : center.posted()) {
            titles.push_back(notification.title);
        }
        return titles;
    }

    /// The requests that reached the helper since this was last called, oldest first; status and pings left
    /// out.
    [[nodiscard]] std::vector<std::string> takeRequests() { return std::exchange(requests.texts, {}); }

    /// The floor that the helper holds; 0 when it holds none.
    [[nodiscard]] double heldFloor() { return *helper.status().get<double>(StatusKey::floorPercent); }

    HelperMachine helper;
    HelperRequests requests;
    VirtualQueue mainLoop{helper.time};
    SimulatedHelperHost host{mainLoop, [this] {
                                 helper.start();
                                 return std::make_shared<NotedHelper>(helper.service, requests);
                             }};
    SimulatedInstaller installer;
    SimulatedThermalState thermal;
    MemoryUserDefaults defaults;
    SimulatedLocale locale;
    Lang lang{defaults, locale};
    RecordingNotificationCenter center{mainLoop};
    Notifier notifier{center};
    RecordingLog log;
    std::optional<FanController> fan;
};

}  // namespace corvane
