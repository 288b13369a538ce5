#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/app/session/SessionMachine.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;
using testing::ElementsAre;
using testing::IsEmpty;

/// Notes what is asked of it as it is asked, and answers nothing.
class SilentHelper final : public FanHelperProtocol {
public:
    explicit SilentHelper(Texts& events) : events_(events) {}
    void pingWithReply(Reply /*reply*/) override {}
    void getStatusWithReply(StatusReply /*reply*/) override { events_.emplace_back("status"); }
    void setFanFloorWithPercentWithReply(double /*percent*/, Reply /*reply*/) override {
        events_.emplace_back("floor");
    }
    void stopBoostWithReply(Reply /*reply*/) override { events_.emplace_back("stop"); }
    void setLidStayAwakeWithReply(bool on, Reply /*reply*/) override {
        events_.emplace_back(on ? "lid on" : "lid off");
    }

private:
    Texts& events_;
};

/// Leads to the silent helper.
class SilentConnector final : public HelperConnector {
public:
    explicit SilentConnector(Texts& events) : helper_(events) {}
    [[nodiscard]] std::unique_ptr<HelperConnection> connect(HelperConnectionHandlers /*handlers*/) override {
        return std::make_unique<Connection>(helper_);
    }

private:
    class Connection final : public HelperConnection {
    public:
        explicit Connection(SilentHelper& helper) : helper_(helper) {}
        FanHelperProtocol& remoteObject() override { return helper_; }

    private:
        SilentHelper& helper_;
    };

    SilentHelper helper_;
};

/// Notes that it is wanted, and says nothing of permissions.
class NotedCenter final : public NotificationCenter {
public:
    explicit NotedCenter(Texts& events) : events_(events) {}
    [[nodiscard]] bool isAvailable() const override { return true; }
    void presentInForeground() override { events_.emplace_back("permission"); }
    void getAuthorization(std::function<void(NotificationAuthorization)> /*reply*/) override {}
    void requestAuthorization() override {}
    void add(const UserNotification& /*notification*/) override {}

private:
    Texts& events_;
};

class SessionStart : public testing::Test {
protected:
    SleepManager& manager() { return *machine.manager; }

    /// A rule that an earlier run stored, of an application that runs.
    void storeRule() {
        machine.applications.start("render");
        machine.defaults.set(TriggerManager::enabledSetting, true);
        machine.defaults.set(TriggerManager::appsSetting,
                             *TriggerList::encode({{"render", "Render", CoolingProfile::Kind::max}}));
    }

    SessionMachine machine;
};

TEST_F(SessionStart, BeginsIdle) {
    machine.startWithoutHelper();
    EXPECT_TRUE(machine.isIdle());
    EXPECT_EQ(manager().now(), machine.wallTime());
    EXPECT_FALSE(manager().anythingActive());
    EXPECT_FALSE(manager().lid().enabled());
    EXPECT_EQ(machine.power.taken(), 0U);
    machine.advance(24h);
    EXPECT_THAT(machine.center.posted(), IsEmpty());
    EXPECT_THAT(machine.client.requests(), IsEmpty()) << "nobody asked for updates";
    EXPECT_THAT(machine.volumes.touched(), IsEmpty());
}

TEST_F(SessionStart, ReleasesWhatAnEarlierRunLeftForced) {
    machine.start(75);
    manager().fan().setFansEnabled(true);
    manager().lid().setEnabled(true);
    machine.advance(20s);
    ASSERT_TRUE(machine.helper.mac.isAnyFanForced());
    ASSERT_TRUE(machine.helper.sleepSetting.isSleepDisabled());
    machine.manager.reset();
    machine.start(75);
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
    EXPECT_FALSE(machine.helper.sleepSetting.isSleepDisabled());
}

TEST_F(SessionStart, ReleasesBeforeItLooksAtTheRules) {
    storeRule();
    Texts events;
    SilentConnector connector(events);
    NotedCenter center(events);
    Notifier notifier(center);
    const SleepManager started(machine.servicesWith(connector, notifier), {});
    // That cooling is asked for shows in the wish to post about it.
    EXPECT_THAT(events, ElementsAre("status", "stop", "lid off", "permission"));
    EXPECT_EQ(machine.power.held().size(), 2U);
}

TEST_F(SessionStart, LetsStoredRulesTakeEffectAtOnce) {
    storeRule();
    machine.start(75);
    EXPECT_TRUE(manager().triggers().active());
    EXPECT_EQ(manager().fan().triggerProfile(), CoolingProfile::Kind::max);
    EXPECT_EQ(machine.power.held().size(), 2U);
    EXPECT_TRUE(manager().activeKinds().empty()) << "they are the automation's, not the session's";
    machine.advance(20s);
    EXPECT_TRUE(machine.helper.mac.isAnyFanForced());
}

TEST_F(SessionStart, JoinsTheClosedLidModeWithTheFans) {
    machine.start();
    manager().lid().setEnabled(true);
    machine.settle();
    EXPECT_TRUE(machine.helper.sleepSetting.isSleepDisabled());
    EXPECT_EQ(manager().fan().triggerProfile(), CoolingProfile::Kind::balanced);
}

TEST_F(SessionStart, KeepsTheLastSessionToTheRunItWasIn) {
    machine.start();
    manager().apply({SleepAssertions::Kind::system}, std::nullopt);
    manager().lid().setEnabled(true);
    machine.advance(1s);
    machine.manager.reset();
    machine.start();
    EXPECT_TRUE(machine.isIdle());
    EXPECT_FALSE(manager().lid().enabled());
    EXPECT_FALSE(machine.helper.sleepSetting.isSleepDisabled());
}

TEST_F(SessionStart, CopesWithoutAHelper) {
    machine.startWithoutHelper();
    manager().apply({SleepAssertions::Kind::system}, std::nullopt);
    machine.advance(1h);
    EXPECT_EQ(manager().activeKinds(), SleepAssertions::Kinds{SleepAssertions::Kind::system});
}

TEST_F(SessionStart, OwnsItsModelsUntilItsEndAndRunsNothingAfterIt) {
    storeRule();
    machine.start(75);
    manager().apply({SleepAssertions::Kind::system}, machine.wallTime() + 5min);
    manager().lid().setEnabled(true);
    manager().fan().setFansEnabled(true);
    manager().drives().add({"/Volumes/Backup", "Backup"});
    manager().drives().setEnabled(true);
    manager().updates().check();
    machine.manager.reset();
    static_cast<void>(machine.takeRequests());
    const std::size_t posted = machine.center.posted().size();
    const std::size_t taken = machine.power.taken();
    machine.thermal.set(ThermalState::critical);
    machine.applications.quit("render");
    machine.displays.set(std::vector{Display{}});
    machine.advance(10min);
    EXPECT_EQ(machine.takeRequests(), Texts{});
    EXPECT_EQ(machine.center.posted().size(), posted);
    EXPECT_EQ(machine.power.taken(), taken);
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced()) << "the helper has noticed the silence";
}

}  // namespace
}  // namespace corvane
