#include "tests/app/fan/ReportedMachine.h"

namespace corvane {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class ThrottleMachine : public FanMachine {
public:
    explicit ThrottleMachine(ThermalState initial = ThermalState::nominal) {
        thermal.set(initial);
        open();
    }

    void become(ThermalState state) {
        thermal.set(state);
        settle();
    }
    [[nodiscard]] std::size_t posted() const { return center.posted().size(); }
};

TEST(FanThrottle, IsAnnouncedInEnglish) {
    ThrottleMachine machine;
    machine.become(ThermalState::serious);
    ASSERT_THAT(machine.center.posted(), SizeIs(1));
    EXPECT_EQ(machine.center.posted()[0].title, "⚠️ Mac is throttling");
    EXPECT_EQ(machine.center.posted()[0].body,
              "Thermal pressure is high — heat protection is keeping the fans up.");
}

TEST(FanThrottle, IsAnnouncedInGerman) {
    ThrottleMachine machine;
    machine.locale.prefer({"de"});
    machine.become(ThermalState::critical);
    ASSERT_THAT(machine.center.posted(), SizeIs(1));
    EXPECT_EQ(machine.center.posted()[0].title, "⚠️ Mac drosselt");
    EXPECT_EQ(machine.center.posted()[0].body,
              "Die thermische Last ist hoch — der Hitzeschutz hält die Lüfter oben.");
}

TEST(FanThrottle, ShowsTheThermalState) {
    ThrottleMachine machine;
    const SignalCount changes(*machine.fan, &FanController::thermalStateChanged);
    int expected = 0;
    for (const ThermalState state :
         {ThermalState::fair, ThermalState::serious, ThermalState::critical, ThermalState::nominal}) {
        machine.become(state);
        EXPECT_EQ(machine.fan->thermalState(), state);
        EXPECT_EQ(changes.value(), ++expected);
    }
}

TEST(FanThrottle, IsNotAnnouncedWhenTheStateIsFair) {
    ThrottleMachine machine;
    machine.become(ThermalState::fair);
    EXPECT_EQ(machine.posted(), 0U);
}

TEST(FanThrottle, IsNotAnnouncedAgainWhenSeriousBecomesCritical) {
    ThrottleMachine machine;
    machine.become(ThermalState::serious);
    machine.become(ThermalState::critical);
    machine.become(ThermalState::serious);
    EXPECT_EQ(machine.posted(), 1U);
}

TEST(FanThrottle, EndsWithoutAWordWhenTheStateIsFairAgain) {
    ThrottleMachine machine;
    machine.become(ThermalState::serious);
    machine.become(ThermalState::fair);
    EXPECT_EQ(machine.posted(), 1U);
    machine.become(ThermalState::serious);
    EXPECT_EQ(machine.posted(), 2U);
}

TEST(FanThrottle, IsNotAnnouncedForTheStateTheControllerFinds) {
    ThrottleMachine machine(ThermalState::serious);
    machine.advance(60s);
    EXPECT_EQ(machine.posted(), 0U);
}

TEST(FanThrottle, IsNotAnnouncedWhileAlertsAreOff) {
    ThrottleMachine machine;
    machine.defaults.set("heatAlerts", false);
    machine.become(ThermalState::serious);
    machine.become(ThermalState::critical);
    EXPECT_EQ(machine.posted(), 0U);
    EXPECT_EQ(machine.fan->thermalState(), ThermalState::critical);
}

TEST(FanThrottle, IsAnnouncedWhenTheSettingIsNoBoolean) {
    ThrottleMachine machine;
    machine.defaults.set("heatAlerts", std::string("no"));
    machine.become(ThermalState::serious);
    EXPECT_EQ(machine.posted(), 1U);
}

TEST(FanThrottle, HasItsEpisodesWhileAlertsAreOff) {
    ThrottleMachine machine;
    machine.defaults.set("heatAlerts", false);
    machine.become(ThermalState::serious);
    machine.defaults.set("heatAlerts", true);
    machine.become(ThermalState::critical);
    EXPECT_EQ(machine.posted(), 0U);
    machine.become(ThermalState::serious);
    machine.defaults.set("heatAlerts", false);
    machine.become(ThermalState::nominal);
    machine.defaults.set("heatAlerts", true);
    machine.become(ThermalState::serious);
    EXPECT_EQ(machine.posted(), 1U);
}

TEST(FanThrottle, IsAnnouncedWithoutAHelper) {
    FanMachine machine;
    machine.installer.setInstalled(false);
    machine.open();
    machine.thermal.set(ThermalState::serious);
    machine.settle();
    EXPECT_THAT(machine.center.posted(), SizeIs(1));
}

TEST(FanThrottle, ChangesNothingAboutTheFans) {
    ThrottleMachine machine;
    machine.helper.forget();
    machine.become(ThermalState::critical);
    machine.advance(10s);
    EXPECT_THAT(machine.helper.writtenTexts(), IsEmpty());
}

}  // namespace
}  // namespace corvane
