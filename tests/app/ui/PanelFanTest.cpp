#include <fmt/format.h>

#include "app/fan/FanSettings.h"
#include "tests/app/ui/PanelTest.h"

namespace corvane {
namespace {

class PanelFan : public PanelTest {
protected:
    SimulatedMac& mac() { return machine.helper.mac; }

    /// In a segmented control: `index` of `count` segments.
    void choose(const QString& path, int index, int count) {
        QQuickItem& control = item(path);
        clickAt({control.width() * (index + 0.5) / count, control.height() / 2}, path);
    }
    void openSection() {
        open(40);
        click("fanSection/header");
    }
    void openManual() {
        machine.defaults.set(FanSettings::coolingMode, "manual");
        openSection();
        click("fanSection/switch");
        advance(2s);
        ASSERT_TRUE(mac().isAnyFanForced());
    }
    void openAuto() {
        machine.defaults.set(FanSettings::coolingMode, "auto");
        openSection();
        click("fanSection/switch");
        advance(2s);
    }
    /// Along the slider, 0...1.
    QPointF alongSlider(double part) {
        const QQuickItem& slider = item("strengthSlider");
        constexpr double knob = 18;
        return {knob / 2 + part * (slider.width() - knob), slider.height() / 2};
    }
};

TEST_F(PanelFan, OffersTheHelperWhereThereIsNone) {
    machine.removeHelper();
    open();
    EXPECT_TRUE(machine.menu->expandFans());
    EXPECT_TRUE(isShown("helperPrompt"));
    EXPECT_EQ(text("installHelper"), "Install helper…");
    EXPECT_FALSE(isShown("fanSection"));
    EXPECT_FALSE(isShown("helperUpdate"));
    click("installHelper");
    EXPECT_EQ(machine.installer.prompts(), 1);
    machine.host.setInstalled(true);
    machine.installer.finish(InstallResult::success());
    settle();
    EXPECT_FALSE(isShown("helperPrompt"));
    EXPECT_TRUE(isShown("fanSection"));
    EXPECT_TRUE(isShown("fansOffText"));
}

TEST_F(PanelFan, TellsThatAnInstallationWasCancelled) {
    machine.removeHelper();
    open();
    click("installHelper");
    machine.installer.finish(InstallResult::cancelled());
    settle();
    EXPECT_TRUE(isShown("statusMessage"));
    EXPECT_EQ(text("statusMessage"), "Installation abgebrochen");
    EXPECT_EQ(colorOf("statusMessage"), themeColor("secondaryText"));
    EXPECT_TRUE(isShown("helperPrompt"));
}

TEST_F(PanelFan, TellsOfTheHelperBelowTheFansWhetherTheyAreExpandedOrNot) {
    openSection();
    EXPECT_FALSE(isShown("statusMessage"));
    machine.killHelper();
    settle();
    for (const bool isExpanded : {true, false}) {
        ASSERT_EQ(machine.menu->expandFans(), isExpanded);
        EXPECT_TRUE(isShown("statusMessage"));
        EXPECT_EQ(text("statusMessage"), "Helper unterbrochen — verbinde neu");
        const QQuickItem& section = item("fanSection");
        EXPECT_GE(item("statusMessage").mapToScene({}).y(), section.mapToScene({0, section.height()}).y());
        click("fanSection/header");
    }
}

TEST_F(PanelFan, OffersTheHelpersUpdate) {
    machine.installer.setNeedsUpdate(true);
    open();
    EXPECT_TRUE(isShown("helperUpdate"));
    EXPECT_EQ(text("helperUpdate"), "Helper update available — click");
    EXPECT_TRUE(isShown("fanSection"));
    click("helperUpdate");
    EXPECT_EQ(machine.installer.prompts(), 1);
}

TEST_F(PanelFan, LeavesTheFansToTheFirmwareWhileSwitchedOff) {
    openSection();
    EXPECT_THAT(text("fansOffText"), testing::StartsWith("Off — macOS controls the fans."));
    EXPECT_FALSE(isShown("coolingMode"));
    EXPECT_FALSE(isShown("automationCooling"));
    EXPECT_FALSE(mac().isAnyFanForced());
}

TEST_F(PanelFan, SaysWhenTheAutomationCoolsWithoutTheUser) {
    open(40);
    machine.applications.start("render");
    manager().triggers().addApp({"render", "Render", CoolingProfile::Kind::max});
    manager().triggers().setAutomationEnabled(true);
    advance(2s);
    machine.menu->panelAppeared();
    settle();
    EXPECT_TRUE(isShown("automationCooling"));
    EXPECT_EQ(text("automationCooling"), "🤖 Auto cooling active · Max");
    EXPECT_THAT(text("fansOffText"),
                testing::StartsWith("Corvane is cooling automatically right now (above)."));
    EXPECT_TRUE(mac().isAnyFanForced());
    machine.speak("de");
    settle();
    EXPECT_EQ(text("automationCooling"), "🤖 Auto-Kühlung aktiv · Max");
}

TEST_F(PanelFan, ForcesTheFansWithTheSwitchAndLetsGo) {
    openManual();
    EXPECT_TRUE(isOn("fanSection/switch"));
    EXPECT_FALSE(isShown("fansOffText"));
    EXPECT_EQ(mac().fanTarget(0), 5000);
    click("fanSection/switch");
    advance(2s);
    EXPECT_FALSE(mac().isAnyFanForced());
    EXPECT_TRUE(isShown("fansOffText"));
}

TEST_F(PanelFan, AppliesTheSliderAsItIsReleased) {
    openManual();
    EXPECT_EQ(text("strength"), "100%");
    clickAt(alongSlider(0.4), "strengthSlider");
    EXPECT_EQ(text("strength"), "40%");
    advance(1s);
    EXPECT_EQ(fan().manualPercent(), 40);
    EXPECT_EQ(machine.heldFloor(), 40);
    EXPECT_EQ(mac().fanTarget(0), 2600);
}

TEST_F(PanelFan, AppliesTheSliderOnceItRests) {
    openManual();
    const QQuickItem& slider = item("strengthSlider");
    const auto at = [&](double part) { return slider.mapToScene(alongSlider(part)).toPoint(); };
    QTest::mousePress(window.get(), Qt::LeftButton, Qt::NoModifier, at(1));
    for (const double part : {0.9, 0.8, 0.7, 0.6}) {
        QTest::mouseMove(window.get(), at(part));
        renderAll(*window);
    }
    EXPECT_EQ(machine.menu->manualSlider(), 60);
    EXPECT_EQ(fan().manualPercent(), 100);
    advance(MenuState::sliderRest);
    EXPECT_EQ(fan().manualPercent(), 60);
    QTest::mouseRelease(window.get(), Qt::LeftButton, Qt::NoModifier, at(0.6));
    advance(2s);
    EXPECT_EQ(machine.heldFloor(), 60);
}

TEST_F(PanelFan, MovesTheSliderByTheKeyboardInStepsOfFive) {
    openManual();
    item("strengthSlider").forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Left);
    advance(1s);
    EXPECT_EQ(fan().manualPercent(), 95);
    EXPECT_EQ(text("strength"), "95%");
}

TEST_F(PanelFan, AppliesWhatAssistiveTechnologiesSet) {
    openManual();
    QAccessibleInterface* slider = QAccessible::queryAccessibleInterface(&item("strengthSlider"));
    ASSERT_NE(slider, nullptr);
    slider->valueInterface()->setCurrentValue(30);
    advance(1s);
    EXPECT_EQ(text("strength"), "30%");
    EXPECT_EQ(machine.heldFloor(), 30);
    slider->actionInterface()->doAction(QAccessibleActionInterface::increaseAction());
    advance(1s);
    EXPECT_EQ(text("strength"), "35%");
    EXPECT_EQ(machine.heldFloor(), 35);
    slider->actionInterface()->doAction(QAccessibleActionInterface::decreaseAction());
    advance(1s);
    EXPECT_EQ(machine.heldFloor(), 30);
}

TEST_F(PanelFan, BoostsForTheChosenDuration) {
    openManual();
    for (const int seconds : {60, 300, 600, 1800, 3600}) {
        const QString chip = QStringLiteral("fanSection/duration-%1").arg(seconds);
        click(chip);
        EXPECT_EQ(fan().boostDuration(), seconds);
        EXPECT_EQ(item(chip).property("isSelected"), true);
        EXPECT_EQ(isShown("longBoostWarning"), seconds >= 1800) << seconds;
        EXPECT_EQ(text("boostRemaining"),
                  "⏱ Boost: " + fan().boostRemainingText().value_or("none") + " left");
        EXPECT_TRUE(isShown("boostRemaining"));
    }
    EXPECT_EQ(colorOf("boostRemaining"), themeColor("accent"));
    EXPECT_EQ(colorOf("longBoostWarning"), themeColor("roleTextColor('orange')"));
    click("fanSection/duration-60");
    advance(61s);
    EXPECT_FALSE(isShown("boostRemaining"));
    EXPECT_FALSE(mac().isAnyFanForced());
}

TEST_F(PanelFan, CountsTheSpinUpDown) {
    openManual();
    EXPECT_TRUE(isShown("spinUpBanner"));
    EXPECT_EQ(item("spinUpBanner").property("role"), "");
    EXPECT_EQ(item("spinUpBanner").property("tintOpacity"), 0.12);
    ASSERT_TRUE(fan().spinUpRemaining());
    EXPECT_EQ(text("spinUpBanner"), "Fans spinning up … " + std::to_string(*fan().spinUpRemaining()) + "s");
    advance(30s);
    EXPECT_FALSE(isShown("spinUpBanner"));
}

TEST_F(PanelFan, CountsTheSpinUpDownInAutomaticToo) {
    openAuto();
    mac().holdSensorsAt(85);
    for (int second = 0; second < 20 && !fan().spinningUp(); ++second) {
        EXPECT_FALSE(isShown("spinUpBanner"));
        advance(1s);
    }
    ASSERT_TRUE(fan().spinningUp());
    EXPECT_TRUE(isShown("spinUpBanner"));
    EXPECT_EQ(text("spinUpBanner"), "Fans spinning up … " + std::to_string(*fan().spinUpRemaining()) + "s");
    machine.speak("de");
    settle();
    EXPECT_EQ(text("spinUpBanner"), "Lüfter fahren hoch … " + std::to_string(*fan().spinUpRemaining()) + "s");
    advance(30s);
    EXPECT_FALSE(isShown("spinUpBanner"));
}

TEST_F(PanelFan, WarnsThatTheFirmwareTookOver) {
    openManual();
    EXPECT_FALSE(isShown("thermalWarning"));
    clickAt(alongSlider(0.1), "strengthSlider");
    machine.heatTo(85);
    settle();
    ASSERT_TRUE(fan().thermalOverride());
    const std::string percent = fmt::format("{:.0f}", fan().effectivePercent());
    EXPECT_TRUE(isShown("thermalWarning"));
    EXPECT_EQ(item("thermalWarning").property("role"), "orange");
    EXPECT_EQ(item("thermalWarning").property("tintOpacity"), 0.15);
    EXPECT_EQ(text("thermalWarning"), "Mac takes over — fans at " + percent + "% due to heat");
    machine.speak("de");
    settle();
    EXPECT_EQ(text("thermalWarning"), "Mac übernimmt — Lüfter auf " + percent + "% wegen Hitze");
}

/// What follows the temperature needs no word for it.
TEST_F(PanelFan, DoesNotWarnOfTheFirmwareInAutomatic) {
    machine.defaults.set(FanSettings::coolingProfile, "silent");
    openAuto();
    machine.heatTo(92);
    settle();
    ASSERT_TRUE(fan().thermalOverride());
    EXPECT_FALSE(isShown("thermalWarning"));
}

TEST_F(PanelFan, ChangesBetweenManualAndAuto) {
    openManual();
    choose("coolingMode", 1, 2);
    EXPECT_EQ(fan().coolingMode(), CoolingMode::automatic);
    EXPECT_TRUE(isShown("coolingCurve"));
    EXPECT_FALSE(isShown("strengthSlider"));
    choose("coolingMode", 0, 2);
    EXPECT_EQ(fan().coolingMode(), CoolingMode::manual);
    EXPECT_TRUE(isShown("strengthSlider"));
}

TEST_F(PanelFan, OffersThreeProfiles) {
    openAuto();
    const std::vector<std::pair<CoolingProfile::Kind, const char*>> profiles{
        {CoolingProfile::Kind::silent, "Quiet — runs a bit cooler than macOS without getting loud."},
        {CoolingProfile::Kind::balanced, "Keeps the Mac comfortably cool at moderate noise."},
        {CoolingProfile::Kind::max, "Maximum cooling — audible baseline, keeps the Mac cold."}};
    for (int index = 0; index < 3; ++index) {
        choose("coolingProfile", index, 3);
        const auto& [kind, blurb] = profiles[static_cast<std::size_t>(index)];
        EXPECT_EQ(fan().coolingProfile(), kind);
        EXPECT_EQ(text("profileBlurb"), blurb);
        EXPECT_EQ(item("coolingCurve").property("kind").toString().toStdString(),
                  std::string(CoolingProfile::rawValue(kind)));
    }
}

TEST_F(PanelFan, NamesTheProfilesInTheLanguageOfTheMoment) {
    openAuto();
    EXPECT_EQ(text("coolingProfile/silent"), "Silent");
    EXPECT_EQ(text("coolingProfile/balanced"), "Balanced");
    EXPECT_EQ(text("coolingProfile/max"), "Max");
    machine.speak("de");
    settle();
    EXPECT_EQ(text("coolingProfile/silent"), "Leise");
    EXPECT_EQ(text("coolingProfile/balanced"), "Ausgewogen");
    EXPECT_EQ(text("coolingProfile/max"), "Max");
}

TEST_F(PanelFan, SaysWhatAutoDoes) {
    openAuto();
    choose("coolingProfile", 0, 3);
    EXPECT_EQ(text("autoStatus"), "Watching — quiet until it warms up");
    machine.heatTo(85);
    settle();
    EXPECT_EQ(text("autoStatus"), machine.menu->autoStatusText().toStdString());
    EXPECT_THAT(text("autoStatus"), testing::StartsWith("Active · floor "));
    const QQuickItem& curve = item("coolingCurve");
    EXPECT_EQ(curve.property("currentTemp").toDouble(), 85);
    EXPECT_EQ(curve.property("tMin").toDouble(), 35);
    EXPECT_EQ(curve.property("tMax").toDouble(), 95);
    EXPECT_EQ(curve.height(), 70);
    EXPECT_EQ(colorOf("coolingCurve"), themeColor("accent"));
    EXPECT_TRUE(mac().isAnyFanForced());
}

TEST_F(PanelFan, SaysWhenTheAutomationCoolsHarder) {
    openManual();
    clickAt(alongSlider(0.1), "strengthSlider");
    advance(1s);
    EXPECT_FALSE(isShown("automationCoolsHarder"));
    machine.automate();
    advance(2s);
    EXPECT_TRUE(isShown("automationCoolsHarder"));
    EXPECT_EQ(text("automationCoolsHarder"),
              "Automation is cooling harder right now — your setting is the floor.");
}

}  // namespace
}  // namespace corvane
