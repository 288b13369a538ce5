// The properties as a view reads and writes them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/app/fan/ConnectedMachine.h"

namespace corvane {
namespace {

using Kind = CoolingProfile::Kind;

class FanProperties : public testing::Test {
protected:
    FanController& fan() { return *machine.fan; }
    QVariant value(const char* property) { return machine.fan->property(property); }

    ConnectedMachine machine;
};

TEST_F(FanProperties, ReadAndWriteTheModeAsItsRawText) {
    EXPECT_EQ(value("coolingMode"), "auto");
    EXPECT_TRUE(fan().setProperty("coolingMode", "manual"));
    EXPECT_EQ(fan().coolingMode(), CoolingMode::manual);
    EXPECT_EQ(value("coolingMode"), "manual");
    fan().setProperty("coolingMode", "automatic");
    EXPECT_EQ(fan().coolingMode(), CoolingMode::manual) << "there is no such mode";
}

TEST_F(FanProperties, ReadAndWriteTheProfileAsItsRawText) {
    EXPECT_EQ(value("coolingProfile"), "balanced");
    EXPECT_TRUE(fan().setProperty("coolingProfile", "max"));
    EXPECT_EQ(fan().coolingProfile(), Kind::max);
    fan().setProperty("coolingProfile", "");
    EXPECT_EQ(value("coolingProfile"), "max") << "there is no such profile";
}

TEST_F(FanProperties, ReadTheAutomationsProfileAsItsRawText) {
    EXPECT_EQ(value("triggerProfile"), "");
    const SignalCount changes(fan(), &FanController::triggerProfileChanged);
    fan().requestCooling(Kind::silent, "test");
    EXPECT_EQ(value("triggerProfile"), "silent");
    EXPECT_EQ(changes.value(), 1);
}

TEST_F(FanProperties, AnnounceTheCountdownOfABoostWithThePoll) {
    EXPECT_EQ(value("boostRemainingText"), "");
    const SignalCount changes(fan(), &FanController::countdownChanged);
    machine.boost();
    EXPECT_EQ(value("boostRemainingText"), "9:58");
    const int before = changes.value();
    EXPECT_GE(before, 1);
    machine.advance(1s);
    EXPECT_EQ(value("boostRemainingText"), "9:57");
    EXPECT_GT(changes.value(), before);
    const int running = changes.value();
    fan().setFansEnabled(false);
    EXPECT_EQ(value("boostRemainingText"), "");
    EXPECT_GT(changes.value(), running);
}

TEST_F(FanProperties, AnnounceTheCountdownOfASpinUpWithThePoll) {
    EXPECT_FALSE(value("spinUpRemaining").isValid());
    const SignalCount changes(fan(), &FanController::countdownChanged);
    fan().setCoolingMode(CoolingMode::manual);
    fan().setFansEnabled(true);
    EXPECT_EQ(value("spinUpRemaining"), 5);
    const int before = changes.value();
    EXPECT_GE(before, 1);
    fan().setFansEnabled(false);
    EXPECT_FALSE(value("spinUpRemaining").isValid());
    EXPECT_GT(changes.value(), before);
}

TEST_F(FanProperties, ReadATemperatureThatIsNotKnownAsNone) {
    FanMachine bare;
    bare.installer.setInstalled(false);
    bare.open();
    EXPECT_FALSE(bare.fan->property("cpuTemp").isValid());
    EXPECT_FALSE(bare.fan->property("cpuTempSmoothed").isValid());
    EXPECT_FALSE(bare.fan->property("gpuTemp").isValid());
    EXPECT_FALSE(bare.fan->property("gpuTempSmoothed").isValid());
    EXPECT_EQ(value("cpuTempSmoothed").toDouble(), *fan().cpuTempSmoothed());
}

}  // namespace
}  // namespace corvane
