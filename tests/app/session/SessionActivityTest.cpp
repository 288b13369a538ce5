#include <functional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/app/session/SessionMachine.h"

namespace corvane {
namespace {

/// Each of these alone makes the application one that is at work.
class SessionActivity : public SessionTest {
protected:
    SessionActivity() : SessionTest(75) {
        machine.advance(20s);
        EXPECT_FALSE(manager().anythingActive());
        QObject::connect(&manager(), &SleepManager::anythingActiveChanged, [this] { ++announced; });
    }

    /// `begin` makes it active and `end` inactive again, and both are announced.
    void expectActiveBetween(const std::function<void()>& begin, const std::function<void()>& end) {
        begin();
        EXPECT_TRUE(manager().anythingActive());
        EXPECT_TRUE(manager().property("anythingActive").toBool());
        EXPECT_GE(std::exchange(announced, 0), 1);
        end();
        machine.advance(2s);
        EXPECT_FALSE(manager().anythingActive());
        EXPECT_GE(announced, 1);
    }

    int announced = 0;
};

TEST_F(SessionActivity, IsASession) {
    expectActiveBetween([&] { manager().apply({Kind::network}, std::nullopt); },
                        [&] { manager().stopSession(); });
}

TEST_F(SessionActivity, IsABoost) {
    FanController& fan = manager().fan();
    expectActiveBetween(
        [&] {
            fan.requestCooling(CoolingProfile::Kind::max, "test");
            EXPECT_TRUE(fan.isBoosted());
            EXPECT_FALSE(fan.fansEnabled());
        },
        [&] { fan.requestCooling(std::nullopt, "test"); });
}

TEST_F(SessionActivity, IsFanControlThatWaitsForHeat) {
    machine.helper.mac.holdSensorsAt(40);
    machine.advance(30s);
    FanController& fan = manager().fan();
    expectActiveBetween(
        [&] {
            fan.setFansEnabled(true);
            EXPECT_FALSE(fan.isBoosted());
        },
        [&] { fan.setFansEnabled(false); });
}

TEST_F(SessionActivity, IsARuleThatHolds) {
    machine.powerSources.set(onMains(80));
    TriggerManager& triggers = manager().triggers();
    triggers.setAutomationEnabled(true);
    EXPECT_FALSE(manager().anythingActive()) << "no rule holds";
    expectActiveBetween([&] { triggers.setKeepAwakeOnAC(true); }, [&] { triggers.setKeepAwakeOnAC(false); });
}

TEST_F(SessionActivity, IsTheClosedLidMode) {
    expectActiveBetween([&] { manager().lid().setEnabled(true); },
                        [&] { manager().lid().setEnabled(false); });
}

TEST_F(SessionActivity, IsNotADriveThatIsKeptAwake) {
    manager().drives().add({"/Volumes/Backup", "Backup"});
    manager().drives().setEnabled(true);
    EXPECT_FALSE(manager().anythingActive());
}

}  // namespace
}  // namespace corvane
