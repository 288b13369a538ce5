// The application's fan controller and the real fan helper, each at its end of XPC, on a simulated Mac.

#include <memory>
#include <optional>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/fan/FanController.h"
#include "app/shell/Lang.h"
#include "app/shell/Notifier.h"
#include "helper/FanHelperService.h"
#include "helper/ListenerDelegate.h"
#include "platform/macos/DispatchSerialQueue.h"
#include "platform/macos/IoKitSmc.h"
#include "platform/macos/XpcHelperListener.h"
#include "platform/macos/desktop/XpcHelperConnector.h"
#include "platform/simulated/MemoryUserDefaults.h"
#include "platform/simulated/RecordingLog.h"
#include "platform/simulated/RecordingNotificationCenter.h"
#include "platform/simulated/SimulatedInstaller.h"
#include "platform/simulated/SimulatedLocale.h"
#include "platform/simulated/SimulatedSleepSetting.h"
#include "platform/simulated/SimulatedThermalState.h"
#include "smc/csmc.h"
#include "tests/platform/macos/fakes/Foundation/XPC/FakeXpc.h"
#include "tests/platform/macos/fakes/IOKit/FakeSmcService.h"
#include "tests/platform/macos/fakes/dispatch/FakeDispatch.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;

/// The helper's process, as far as its fans go. Its end is a sudden one: nothing is handed back.
class HelperProcess {
public:
    HelperProcess() {
        csmc_use_connection(&smc_);
        service_ = FanHelperService::create(queue_, sleepSetting_, log_);
        delegate_.emplace(service_);
        EXPECT_EQ(listener_->resume(*delegate_), std::nullopt);
    }
    HelperProcess(const HelperProcess&) = delete;
    HelperProcess& operator=(const HelperProcess&) = delete;
    ~HelperProcess() {
        listener_.reset();
        queue_.syncAhead([this] {
            delegate_.reset();
            service_.reset();
        });
        csmc_use_connection(nullptr);
    }

private:
    DispatchSerialQueue queue_{"helper"};
    IoKitSmc smc_;
    SimulatedSleepSetting sleepSetting_;
    RecordingLog log_;
    std::shared_ptr<FanHelperService> service_;
    std::optional<ListenerDelegate> delegate_;
    std::unique_ptr<XpcHelperListener> listener_ = std::make_unique<XpcHelperListener>();
};

class FansOverXpcTest : public testing::Test {
protected:
    FansOverXpcTest() {
        mac.holdSensorsAt(60.0F);
        xpc.install(service, [this] {
            helper.emplace();
            ++launches;
        });
    }

    void open() {
        fan.emplace(
            FanControllerServices{mainLoop, connector, installer, thermal, defaults, notifier, lang, log});
        time.advance(2s);
    }

    void killHelper() {
        xpc.kill(service);
        helper.reset();
    }

    void boost() {
        fan->setCoolingMode(CoolingMode::manual);
        fan->setFansEnabled(true);
        fan->setManualFloor(60.0);
        time.advance(2s);
    }

    const std::string service{FanHelperProtocol::serviceName};
    VirtualTime time;
    FakeDispatch dispatch{time};
    FakeXpc xpc;
    SimulatedMac mac{{.model = tinyMac()}, [this] { return time.bootTime(); }};
    FakeSmcService smc{mac};
    std::optional<HelperProcess> helper;
    int launches = 0;

    DispatchSerialQueue mainLoop{DispatchSerialQueue::OfMainThread{}};
    XpcHelperConnector connector{mainLoop};
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

TEST_F(FansOverXpcTest, HoldsAFloorAndShowsWhatTheFansDo) {
    open();
    boost();
    EXPECT_TRUE(mac.isFanForced(0));
    EXPECT_TRUE(fan->isBoosted());
    EXPECT_EQ(fan->fans().size(), 1);
    time.advance(1min);
    EXPECT_TRUE(mac.isFanForced(0)) << "the status poll keeps it alive";
    fan->setFansEnabled(false);
    time.advance(2s);
    EXPECT_FALSE(mac.isAnyFanForced());
    EXPECT_FALSE(fan->isBoosted());
    EXPECT_EQ(launches, 1);
}

TEST_F(FansOverXpcTest, StartsAnotherHelperAfterOneThatWasKilledWhoseFansThatOneHandsBack) {
    open();
    boost();
    killHelper();
    EXPECT_TRUE(mac.isAnyFanForced()) << "nobody handed them back yet";
    time.settle();
    EXPECT_EQ(fan->statusMessage(), "Helper unterbrochen — verbinde neu");
    time.advance(2s);
    EXPECT_EQ(launches, 2);
    EXPECT_FALSE(mac.isAnyFanForced());
    EXPECT_FALSE(fan->isBoosted());
}

TEST_F(FansOverXpcTest, SaysThatTheServiceIsMissing) {
    xpc.remove(service);
    open();
    EXPECT_EQ(fan->statusMessage(), "Helper-Verbindung verloren");
    EXPECT_EQ(launches, 0);
}

TEST_F(FansOverXpcTest, SaysThatTheHelperDoesNotAnswer) {
    open();
    xpc.setHung(true);
    time.advance(10s);
    EXPECT_EQ(fan->statusMessage(), "XPC-Fehler: The helper did not answer in time.");
}

}  // namespace
}  // namespace corvane
