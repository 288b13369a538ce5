#include <gtest/gtest.h>

#include "app/fan/FanSettings.h"
#include "tests/app/fan/FanMachine.h"

namespace corvane {
namespace {

using Kind = CoolingProfile::Kind;
using Texts = std::vector<std::string>;

/// 74 °C: the profiles ask for 19, 61.9 and 100 %, the helper's own curve for 8.7 %.
struct FanProfile : testing::Test {
    FanProfile() { machine.openAt(74); }
    FanController& fan() { return *machine.fan; }

    FanMachine machine;
};

TEST_F(FanProfile, IsWrittenWithEveryAssignment) {
    fan().setCoolingProfile(Kind::balanced);
    fan().setCoolingProfile(Kind::silent);
    fan().setCoolingProfile(Kind::max);
    fan().setCoolingProfile(Kind::max);
    Texts written;
    for (const auto& [key, value] : machine.defaults.writes()) {
        EXPECT_EQ(key, "fan.coolingProfile");
        written.push_back(std::get<std::string>(value.value()));
    }
    EXPECT_EQ(written, (Texts{"balanced", "silent", "max", "max"}));
    EXPECT_EQ(fan().coolingProfile(), Kind::max);
}

TEST_F(FanProfile, IsAskedForAtOnceInAutomaticMode) {
    fan().setFansEnabled(true);
    machine.settle();
    static_cast<void>(machine.takeRequests());
    fan().setCoolingProfile(Kind::max);
    machine.settle();
    EXPECT_EQ(machine.takeRequests(), Texts{"floor 100"});
    EXPECT_EQ(machine.heldFloor(), 100);
    EXPECT_EQ(machine.helper.mac.fanTarget(0), 5000);
    fan().setCoolingProfile(Kind::silent);
    machine.settle();
    EXPECT_EQ(machine.takeRequests(), Texts{"floor 19"});
    EXPECT_EQ(machine.heldFloor(), 19);
    EXPECT_EQ(machine.helper.mac.fanTarget(0), 1760);
}

TEST_F(FanProfile, IsSentAgainEvenWhenItIsTheSame) {
    fan().setCoolingProfile(Kind::silent);
    fan().setFansEnabled(true);
    machine.settle();
    static_cast<void>(machine.takeRequests());
    fan().setCoolingProfile(Kind::silent);
    machine.settle();
    EXPECT_EQ(machine.takeRequests(), Texts{"floor 19"});
}

TEST_F(FanProfile, DoesNotTouchTheFansInManualMode) {
    fan().setCoolingMode(CoolingMode::manual);
    fan().setFansEnabled(true);
    machine.settle();
    static_cast<void>(machine.takeRequests());
    const std::size_t writesBefore = machine.defaults.writes().size();
    fan().setCoolingProfile(Kind::silent);
    machine.advance(5s);
    EXPECT_EQ(machine.takeRequests(), Texts{});
    EXPECT_EQ(machine.heldFloor(), 100);
    EXPECT_EQ(machine.defaults.writes().size(), writesBefore + 1);
}

TEST_F(FanProfile, DoesNotDisturbTheAutomationInManualMode) {
    fan().setCoolingMode(CoolingMode::manual);
    fan().setTriggerCooling(Kind::silent);
    fan().setAuto(true);  // armed, but of no account in this mode
    machine.settle();
    static_cast<void>(machine.takeRequests());
    fan().setCoolingProfile(Kind::max);
    machine.settle();
    EXPECT_EQ(machine.takeRequests(), Texts{});
}

TEST_F(FanProfile, DoesNotTouchTheFansWhileAutomaticModeIsNotArmed) {
    fan().setCoolingProfile(Kind::max);
    machine.advance(20s);
    EXPECT_EQ(machine.takeRequests(), Texts{});
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
    fan().setTriggerCooling(Kind::silent);
    machine.settle();
    static_cast<void>(machine.takeRequests());
    fan().setCoolingProfile(Kind::balanced);
    machine.settle();
    EXPECT_EQ(machine.takeRequests(), Texts{}) << "the automation's request stands as it is";
}

}  // namespace
}  // namespace corvane
