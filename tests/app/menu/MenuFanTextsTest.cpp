#include "tests/app/menu/MenuMachine.h"

namespace corvane {
namespace {

class MenuFanTexts : public MenuFanTest {
protected:
    void expectInBoth(QString (MenuState::*text)() const, const char* german, const char* english) {
        EXPECT_EQ((menu().*text)().toStdString(), english);
        machine.speakGerman();
        EXPECT_EQ((menu().*text)().toStdString(), german);
        machine.defaults.remove(Lang::setting);
    }
};

// Profiles

TEST_F(MenuFanTexts, SaysWhatTheChosenProfileDoes) {
    fan().setCoolingProfile(Profile::silent);
    expectInBoth(&MenuState::profileBlurb,
                 "Leise — hält den Mac etwas kühler als macOS, ohne laut zu werden.",
                 "Quiet — runs a bit cooler than macOS without getting loud.");
    fan().setCoolingProfile(Profile::balanced);
    expectInBoth(&MenuState::profileBlurb, "Hält den Mac angenehm kühl bei moderater Lautstärke.",
                 "Keeps the Mac comfortably cool at moderate noise.");
    fan().setCoolingProfile(Profile::max);
    expectInBoth(&MenuState::profileBlurb, "Maximale Kühlung — hörbarer Grundpegel, hält den Mac kalt.",
                 "Maximum cooling — audible baseline, keeps the Mac cold.");
}

TEST_F(MenuFanTexts, NamesTheAutomationsProfile) {
    EXPECT_EQ(menu().fanProfileName(), "");
    fan().requestCooling(Profile::silent, "test");
    expectInBoth(&MenuState::fanProfileName, "Leise", "Silent");
    fan().requestCooling(Profile::balanced, "test");
    expectInBoth(&MenuState::fanProfileName, "Ausgewogen", "Balanced");
    fan().requestCooling(Profile::max, "test");
    expectInBoth(&MenuState::fanProfileName, "Max", "Max");
    fan().requestCooling(std::nullopt, "test");
    EXPECT_EQ(menu().fanProfileName(), "");
}

// Automatic mode

TEST_F(MenuFanTexts, SaysThatAutomaticModeWatches) {
    fan().setFansEnabled(true);
    machine.advance(2s);
    ASSERT_FALSE(fan().autoEngaged());
    expectInBoth(&MenuState::autoStatusText, "Überwacht — leise, bis es wärmer wird",
                 "Watching — quiet until it warms up");
}

TEST_F(MenuFanTexts, SaysTheFloorThatAutomaticModeHolds) {
    fan().setFansEnabled(true);
    machine.heatTo(72);
    ASSERT_TRUE(fan().autoEngaged());
    const std::string floor = fmt::format("{:.0f}", fan().autoFloor());
    const std::string german = fmt::format("Aktiv · Lüfterboden {} %", floor);
    const std::string english = fmt::format("Active · floor {} %", floor);
    expectInBoth(&MenuState::autoStatusText, german.c_str(), english.c_str());
}

TEST_F(MenuFanTexts, SaysTheFloorAsAWholeNumber) {
    machine.heatTo(60);
    fan().setCoolingMode(CoolingMode::manual);
    fan().setFansEnabled(true);
    fan().setManualFloor(62.5);
    fan().requestCooling(Profile::silent, "test");
    ASSERT_EQ(fan().autoFloor(), 62.5);
    EXPECT_EQ(menu().autoStatusText().toStdString(), "Active · floor 62 %") << "as printf rounds it";
    fan().setManualFloor(62.6);
    EXPECT_EQ(menu().autoStatusText().toStdString(), "Active · floor 63 %");
}

// Manual mode

TEST_F(MenuFanTexts, SaysTheStrengthAsAWholeNumber) {
    EXPECT_EQ(menu().manualSliderText(), "100%");
    menu().setManualSlider(62.5);
    EXPECT_EQ(menu().manualSliderText(), "62%") << "as printf rounds it";
    menu().setManualSlider(62.6);
    EXPECT_EQ(menu().manualSliderText(), "63%");
}

TEST_F(MenuFanTexts, SaysAsAWholeNumberHowHardTheFirmwareCools) {
    switchOnManually();
    fan().setManualFloor(62.5);
    machine.advance(2s);
    ASSERT_EQ(fan().effectivePercent(), 62.5);
    expectInBoth(&MenuState::thermalWarning, "Mac übernimmt — Lüfter auf 62% wegen Hitze",
                 "Mac takes over — fans at 62% due to heat");
}

// The automation and the user

TEST_F(MenuFanTexts, DoesNotCallAnAutomationHarderThatAsksForNothing) {
    machine.heatTo(80);
    fan().setFansEnabled(true);
    EXPECT_FALSE(menu().automationCoolsHarder());
    fan().setCoolingMode(CoolingMode::manual);
    EXPECT_FALSE(menu().automationCoolsHarder());
}

TEST_F(MenuFanTexts, CallsTheAutomationHarderThanAManualFloorThatItExceeds) {
    machine.heatTo(80);
    switchOnManually();
    fan().setManualFloor(20);
    fan().requestCooling(Profile::max, "test");
    ASSERT_GT(fan().autoFloor(), 20);
    EXPECT_TRUE(menu().automationCoolsHarder());
    fan().setManualFloor(100);
    EXPECT_FALSE(menu().automationCoolsHarder()) << "the user's floor wins";
}

TEST_F(MenuFanTexts, CallsTheAutomationHarderThanAWeakerProfile) {
    fan().setFansEnabled(true);
    fan().setCoolingProfile(Profile::balanced);
    fan().requestCooling(Profile::silent, "test");
    EXPECT_FALSE(menu().automationCoolsHarder());
    fan().requestCooling(Profile::balanced, "test");
    EXPECT_FALSE(menu().automationCoolsHarder());
    fan().requestCooling(Profile::max, "test");
    EXPECT_TRUE(menu().automationCoolsHarder());
}

TEST_F(MenuFanTexts, DoesNotCallTheAutomationHarderWhileTheSwitchIsOff) {
    machine.heatTo(80);
    fan().requestCooling(Profile::max, "test");
    EXPECT_FALSE(menu().automationCoolsHarder());
}

// Announcements

TEST_F(MenuFanTexts, AreAnnouncedWithWhateverChangesThem) {
    SignalCount changes(menu(), &MenuState::coolingTextsChanged);
    const auto expectAnnounced = [&](const char* what) { EXPECT_GE(changes.take(), 1) << what; };
    fan().setFansEnabled(true);
    expectAnnounced("the switch");
    fan().setCoolingProfile(Profile::max);
    expectAnnounced("the profile");
    fan().requestCooling(Profile::silent, "test");
    expectAnnounced("a request");
    fan().setCoolingMode(CoolingMode::manual);
    expectAnnounced("the mode");
    fan().setManualFloor(30);
    expectAnnounced("the floor");
    fan().requestCooling(std::nullopt, "test");
    machine.advance(2s);
    static_cast<void>(changes.take());
    machine.heatTo(80);
    expectAnnounced("heat");
    menu().retranslate();
    EXPECT_EQ(changes.take(), 1) << "the language";
}

}  // namespace
}  // namespace corvane
