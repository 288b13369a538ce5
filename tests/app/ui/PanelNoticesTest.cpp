#include <QColor>

#include "app/shell/ShellSettings.h"
#include "tests/app/ui/PanelTest.h"

namespace corvane {
namespace {

using testing::ElementsAre;

/// What the panel shows between and below the features.
class PanelNotices : public PanelTest {
protected:
    void offerUpdate(const std::string& version) {
        machine.client.setBody(R"({"shortVersion": ")" + version +
                               R"(", "version": "2", "url": "https://example.org/corvane"})");
        manager().updates().check();
        settle();
    }
};

TEST_F(PanelNotices, LeadsToANewerVersion) {
    open();
    EXPECT_FALSE(isShown("updateBanner"));
    offerUpdate("2.0");
    EXPECT_TRUE(isShown("updateBanner"));
    EXPECT_EQ(text("updateBanner"), "Update to v2.0 available — download");
    click("updateBanner");
    EXPECT_THAT(machine.opener.opened(), ElementsAre("https://example.org/corvane"));
    machine.speak("de");
    settle();
    EXPECT_EQ(text("updateBanner"), "Update auf v2.0 verfügbar — laden");
}

TEST_F(PanelNotices, WarnsWhileTheBatteryIsDrained) {
    machine.powerSources.set(onBattery(80));
    open();
    EXPECT_FALSE(isShown("batteryHint"));
    manager().toggle(SleepAssertions::Kind::system);
    settle();
    EXPECT_TRUE(isShown("batteryHint"));
    EXPECT_EQ(item("batteryHint").property("role"), "orange");
    EXPECT_EQ(item("batteryHint").property("tintOpacity"), 0.12);
    EXPECT_EQ(text("batteryHint"), "On battery — keep-awake/boost drains power. Plugging in recommended.");
    machine.powerSources.set(onMains(80));
    advance(5s);
    EXPECT_FALSE(isShown("batteryHint"));
}

TEST_F(PanelNotices, ShowTheTemperatureInAWordAndAColour) {
    const std::vector<std::tuple<float, const char*, const char*>> scale{
        {39, "cool", "green"}, {40, "ok", "green"},       {50, "ok", "lime"},
        {55, "warm", "lime"},  {65, "warm", "orange"},    {70, "hot", "orange"},
        {75, "hot", "ember"},  {82, "critical", "ember"}, {85, "critical", "red"}};
    open();
    for (const auto& [celsius, word, role] : scale) {
        machine.heatTo(celsius);
        settle();
        EXPECT_EQ(text("temperature"), std::to_string(static_cast<int>(celsius)) + "°");
        EXPECT_EQ(text("temperatureWord"), word) << celsius;
        EXPECT_EQ(machine.temperature->colorRole().toStdString(), role) << celsius;
        if (std::string(role) == "lime") {
            EXPECT_EQ(item("temperatureDot").property("color").value<QColor>(),
                      QColor::fromRgbF(0.7F, 0.8F, 0.2F));
        }
    }
    EXPECT_TRUE(isShown("trend"));
    EXPECT_EQ(item("trend").property("values").value<QList<double>>(), fan().tempTrend());
}

TEST_F(PanelNotices, ShowTheFansSpeed) {
    open();
    EXPECT_EQ(text("rpmLine"), "fans off");
    machine.automate();
    advance(20s);
    EXPECT_EQ(text("rpmLine"), machine.temperature->rpmLine().toStdString());
    EXPECT_THAT(text("rpmLine"), testing::EndsWith(" rpm"));
}

TEST_F(PanelNotices, ShowNoTemperatureBeforeThereIsOne) {
    machine.removeHelper();
    open();
    EXPECT_FALSE(isShown("temperatureBadge"));
}

TEST_F(PanelNotices, ShowTheTemperatureOfTheGraphicsAlone) {
    StatusRecord status;
    status.set(StatusKey::gpuTemp, 70.0);
    machine.report([status] { return status; });
    open();
    EXPECT_TRUE(isShown("gpuTemperature"));
    EXPECT_EQ(text("gpuTemperature"), "GPU 70°");
    for (const char* ofProcessor : {"temperature", "temperatureDot", "temperatureWord"}) {
        EXPECT_FALSE(isShown(ofProcessor)) << ofProcessor;
    }
    EXPECT_FALSE(isShown("rpmLine")) << "an empty line would leave a gap";
}

TEST_F(PanelNotices, ShowHowTheSystemThrottles) {
    open();
    EXPECT_FALSE(isShown("throttleBadge"));
    for (const auto& [state, label] :
         {std::pair(ThermalState::fair, "Elevated"), std::pair(ThermalState::serious, "Throttling"),
          std::pair(ThermalState::critical, "Critical")}) {
        machine.thermal.set(state);
        advance(2s);
        EXPECT_TRUE(isShown("throttleBadge"));
        EXPECT_EQ(item("throttleBadge").property("label"), label);
    }
    machine.thermal.set(ThermalState::nominal);
    advance(2s);
    EXPECT_FALSE(isShown("throttleBadge"));
}

TEST_F(PanelNotices, AskOnceWhetherToStartAtLogin) {
    open();
    EXPECT_TRUE(isShown("loginPrompt"));
    EXPECT_EQ(text("loginPrompt"), "Launch at login");
    click("loginPrompt/switch");
    EXPECT_TRUE(machine.loginItem.isEnabled());
    EXPECT_TRUE(isOn("loginPrompt/switch"));
    EXPECT_TRUE(isShown("loginPrompt"));
    advance(450ms);
    EXPECT_FALSE(isShown("loginPrompt"));
}

TEST_F(PanelNotices, DoNotAskWhoHasAnswered) {
    machine.defaults.set(ShellSettings::loginChoiceMade, true);
    open();
    EXPECT_FALSE(isShown("loginPrompt"));
}

TEST_F(PanelNotices, StopEverything) {
    open();
    EXPECT_FALSE(isShown("stopEverything"));
    machine.automate();
    manager().toggle(SleepAssertions::Kind::system);
    manager().lid().setEnabled(true);
    advance(2s);
    ASSERT_TRUE(machine.helper.mac.isAnyFanForced());
    EXPECT_TRUE(isShown("stopEverything"));
    EXPECT_EQ(text("stopEverything"), "Stop everything");
    click("stopEverything");
    advance(2s);
    EXPECT_TRUE(machine.isIdle());
    EXPECT_FALSE(manager().lid().enabled());
    EXPECT_FALSE(manager().triggers().automationEnabled());
    EXPECT_FALSE(machine.helper.mac.isAnyFanForced());
    EXPECT_FALSE(isShown("stopEverything"));
}

TEST_F(PanelNotices, LeadToSettingsGuideAndTheEnd) {
    open();
    click("settings");
    EXPECT_EQ(machine.settingsShown, 1);
    click("guide");
    EXPECT_EQ(machine.guidesShown, 1);
    click("quit");
    EXPECT_EQ(machine.quits, 1);
}

}  // namespace
}  // namespace corvane
