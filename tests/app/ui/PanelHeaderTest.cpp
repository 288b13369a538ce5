#include "app/fan/FanSettings.h"
#include "tests/app/ui/PanelTest.h"

namespace corvane {
namespace {

class PanelHeader : public PanelTest {
protected:
    std::string label() { return text("statusLabel"); }
    bool isActive() {
        return item("stateIcon").property("name") == "gauge.with.dots.needle.bottom.100percent";
    }

    void expectInGerman(const std::string& german) {
        machine.speak("de");
        settle();
        EXPECT_EQ(label(), german);
        machine.speak("en");
        settle();
    }
};

TEST_F(PanelHeader, SaysThatNothingIsGoingOn) {
    open();
    EXPECT_EQ(label(), "Inactive");
    EXPECT_FALSE(isActive());
    EXPECT_FALSE(isShown("sessionLine"));
    EXPECT_FALSE(isShown("automationLine"));
    expectInGerman("Inaktiv");
}

TEST_F(PanelHeader, PutsTheSessionBeforeAllElse) {
    open();
    machine.automate();
    advance(2s);
    EXPECT_EQ(label(), "Cooling active");
    expectInGerman("Kühlung aktiv");
    manager().lid().setEnabled(true);
    settle();
    EXPECT_EQ(label(), "Awake, lid closed");
    expectInGerman("Zugeklappt wach");
    manager().toggle(SleepAssertions::Kind::system);
    settle();
    EXPECT_EQ(label(), "Keep-awake active");
    expectInGerman("Wach-Session aktiv");
    EXPECT_TRUE(isActive());
}

TEST_F(PanelHeader, WatchesUntilItCools) {
    machine.defaults.set(FanSettings::coolingMode, "auto");
    open(40);
    fan().setFansEnabled(true);
    settle();
    EXPECT_EQ(label(), "Cooling on watch");
    EXPECT_TRUE(isActive());
    expectInGerman("Kühlung überwacht");
    machine.heatTo(85);
    settle();
    EXPECT_EQ(label(), "Cooling active");
}

TEST_F(PanelHeader, NamesTheAutomationWhenItCoolsNothing) {
    open();
    manager().triggers().setAutomationEnabled(true);
    manager().triggers().setKeepAwakeOnAC(true);
    settle();
    EXPECT_EQ(label(), "Automation active");
    EXPECT_EQ(text("automationLine"), "🤖 Auto keep-awake (on AC power)");
    expectInGerman("Automatik aktiv");
}

TEST_F(PanelHeader, CountsTheSessionDown) {
    open();
    machine.menu->applySleepDuration(3600);
    settle();
    advance(1s);
    EXPECT_THAT(text("sessionLine"), testing::StartsWith("⏱ 59:59 left · until "));
    EXPECT_TRUE(isShown("sessionLine"));
    machine.speak("de");
    settle();
    EXPECT_THAT(text("sessionLine"), testing::StartsWith("⏱ noch 59:59 · bis "));
    advance(1h);
    EXPECT_FALSE(isShown("sessionLine"));
}

TEST_F(PanelHeader, ShowsNoBatteryWhereThereIsNone) {
    open();
    EXPECT_FALSE(isShown("batteryBadge"));
}

TEST_F(PanelHeader, ShowsTheBattery) {
    machine.powerSources.set(onBattery(63));
    open();
    EXPECT_TRUE(isShown("batteryBadge"));
    EXPECT_EQ(text("batteryCharge"), "63%");
    EXPECT_EQ(item("batteryBadge").property("symbol"), "battery.75");
    EXPECT_EQ(item("batteryBadge").property("isLow"), false);
    EXPECT_EQ(item("batteryBadge").property("ink").value<QColor>(), themeColor("secondaryText"));
    machine.powerSources.set(onBattery(20));
    advance(5s);
    EXPECT_EQ(text("batteryCharge"), "20%");
    EXPECT_EQ(item("batteryBadge").property("isLow"), true);
    EXPECT_EQ(item("batteryBadge").property("ink").value<QColor>(), themeColor("roleTextColor('red')"));
    machine.powerSources.set(onMains(20));
    advance(5s);
    EXPECT_EQ(item("batteryBadge").property("symbol"), "battery.100.bolt");
    machine.powerSources.set(onBattery(std::nullopt));
    advance(5s);
    EXPECT_TRUE(isShown("batteryBadge"));
    EXPECT_FALSE(isShown("batteryCharge"));
}

}  // namespace
}  // namespace corvane
