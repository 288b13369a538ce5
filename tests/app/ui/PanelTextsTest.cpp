#include "tests/app/ui/PanelTextsTest.h"

namespace corvane {
namespace {

TEST_P(PanelTexts, AreTheseWhileEverythingIsInUse) {
    useEverything();
    expectPanel(
        {header(true, {"Wach-Session aktiv", "Keep-awake active"}),
         {"[battery.75]", "80%"},
         {"[arrow.down.circle.fill]",
          {"Update auf v2.0 verfügbar — laden", "Update to v2.0 available — download"},
          divider},
         section("☀️", {"Wach bleiben", "Stay awake"}),
         sessionBody(true),
         {"[chevron.up]", "<customDate>", {"Übernehmen", "Apply"}},
         section("💻", {"Zugeklappt wach halten", "Awake, lid closed"}),
         {lidBody(),
          "[checkmark.shield.fill]",
          {"Aktiv — stoppt selbst bei Hitze oder wenig Akku.",
           "Active — stops itself on heat or low battery."}},
         section("🤖", {"Automatik", "Automation"}),
         automationBody(),
         section("💾", {"Laufwerke wach", "Keep drives awake"}),
         {drivesBody(), "[externaldrive.fill]", "Archive", "[minus.circle.fill]",
          "[externaldrive.badge.xmark]", "Gone", "[minus.circle.fill]"},
         drivesControls(),
         {"[bolt.slash.fill]",
          {"Auf Akku — Wachhalten/Boost zieht Strom. Netzteil empfohlen.",
           "On battery — keep-awake/boost drains power. Plugging in recommended."},
          divider},
         temperature("ok"),
         fanTitle(),
         {{"🤖 Auto-Kühlung aktiv · Max", "🤖 Auto cooling active · Max"}},
         modes(),
         {{"Feste Stärke", "Fixed strength"},
          "10%",
          "<strengthSlider>",
          {"Boost-Dauer", "Boost duration"},
          "1 m",
          "5 m",
          "10 m",
          "30 m",
          "1 h",
          {"⚠️ Dauer-Boost ist selten nötig — der Hitzeschutz regelt echte Wärme automatisch hoch. "
           "Lange 100% = "
           "unnötige Lautstärke.",
           "⚠️ A long boost is rarely needed — heat protection ramps up real heat automatically. "
           "Long 100% = "
           "needless noise."}},
         spinUp(),
         {{"Die Automatik kühlt gerade stärker — deine Einstellung ist die Untergrenze.",
           "Automation is cooling harder right now — your setting is the floor."},
          divider},
         loginPrompt(),
         footer(true)});
}

TEST_P(PanelTexts, AreTheseWhileTheFansFollowTheTemperature) {
    machine.defaults.set(FanSettings::coolingMode, "auto");
    machine.installer.setNeedsUpdate(true);
    machine.openPanel(40);
    fan().setCoolingProfile(CoolingProfile::Kind::balanced);
    fan().setFansEnabled(true);
    machine.heatTo(85);
    machine.menu->panelAppeared();
    show(4000);
    ASSERT_TRUE(fan().autoEngaged());
    const std::string floor = fmt::format("{:.0f}", fan().autoFloor());
    ASSERT_FALSE(fan().spinningUp());
    expectPanel(
        {header(true, {"Kühlung aktiv", "Cooling active"}),
         {divider},
         closedSections(),
         {divider},
         temperature({"kritisch", "critical"}),
         {"[arrow.triangle.2.circlepath]",
          {"Helper-Update verfügbar — klicken", "Helper update available — click"}},
         fanTitle(),
         modes(),
         {{"Leise", "Silent"},
          {"Ausgewogen", "Balanced"},
          "Max",
          {"Hält den Mac angenehm kühl bei moderater Lautstärke.",
           "Keeps the Mac comfortably cool at moderate noise."},
          "<coolingCurve>",
          "[checkmark.circle.fill]",
          {fmt::format("Aktiv · Lüfterboden {} %", floor), fmt::format("Active · floor {} %", floor)}},
         {divider},
         loginPrompt(),
         footer(true)});
}

TEST_P(PanelTexts, AreTheseWhileNothingIsOn) {
    machine.openPanel(40);
    expand();
    show(4000);
    expectPanel(
        {header(false, {"Inaktiv", "Inactive"}),
         {divider},
         section("☀️", {"Wach bleiben", "Stay awake"}),
         sessionBody(false),
         {"[chevron.down]"},
         section("💻", {"Zugeklappt wach halten", "Awake, lid closed"}),
         {lidBody()},
         section("🤖", {"Automatik", "Automation"}),
         {{"Wach am Netzteil", "Awake on AC power"},
          toggle,
          {"Wach bei externem Bildschirm", "Awake with external display"},
          toggle,
          "[plus.circle]",
          {"App auswählen…", "Choose app…"}},
         section("💾", {"Laufwerke wach", "Keep drives awake"}),
         {drivesBody(), {"Keine externen Laufwerke", "No external drives"}},
         drivesControls(),
         {divider},
         temperature("ok"),
         fanTitle(),
         {{"Aus — macOS regelt die Lüfter. Schalter an, und Corvane übernimmt mit fester Stärke oder "
           "Kühlkurve.",
           "Off — macOS controls the fans. Flip the switch and Corvane takes over with a fixed floor or a "
           "cooling curve."},
          divider},
         loginPrompt(),
         footer(false)});
}

TEST_P(PanelTexts, SayThatTheAutomationCoolsWhileTheFansAreOff) {
    machine.openPanel(40);
    machine.automate();
    machine.advance(2s);
    machine.menu->panelAppeared();
    show(4000);
    expectShown(
        item("fanSection"),
        {fanTitle(),
         {{"🤖 Auto-Kühlung aktiv · Max", "🤖 Auto cooling active · Max"},
          {"Corvane kühlt gerade automatisch (oben). Schalter an, um zusätzlich eine eigene Untergrenze zu "
           "setzen.",
           "Corvane is cooling automatically right now (above). Flip the switch to also set your own "
           "floor."}}});
}

TEST_P(PanelTexts, SayHowLongABoostLasts) {
    machine.defaults.set(FanSettings::coolingMode, "manual");
    machine.openPanel(40);
    fan().setFansEnabled(true);
    machine.menu->applyFanDuration(600);
    machine.menu->panelAppeared();
    show(4000);
    const std::string left = fan().boostRemainingText().value_or("none");
    expectShown(item("fanSection"),
                {fanTitle(),
                 modes(),
                 {{"Feste Stärke", "Fixed strength"},
                  "100%",
                  "<strengthSlider>",
                  {"Boost-Dauer", "Boost duration"},
                  "1 m",
                  "5 m",
                  "10 m",
                  "30 m",
                  "1 h",
                  {fmt::format("⏱ Boost noch {}", left), fmt::format("⏱ Boost: {} left", left)}},
                 spinUp()});
}

TEST_P(PanelTexts, AskForTheHelperWithoutWhichThereAreNoFans) {
    machine.removeHelper();
    machine.openPanel();
    machine.menu->setExpandLid(true);
    show(4000);
    expectShown(item("closedLidSection"), {section("💻", {"Zugeklappt wach halten", "Awake, lid closed"}),
                                           {lidBody(),
                                            "[exclamationmark.triangle.fill]",
                                            {"Benötigt das Lüfter-Hilfswerkzeug (unten installieren).",
                                             "Needs the fan helper (install below)."}}});
    EXPECT_THAT(
        shown(*window->rootObject()),
        testing::HasSubstr(expected({{{"Einmalige Installation eines Hilfswerkzeugs nötig — danach kein "
                                       "Passwort mehr.",
                                       "A one-time helper install is needed — no password after that."},
                                      "[arrow.down.app]",
                                      {"Helper installieren…", "Install helper…"}}})));
    EXPECT_THAT(shown(*window->rootObject()), testing::Not(testing::HasSubstr("🌀")));
}

TEST_P(PanelTexts, AskBeforeTheClosedLidMode) {
    open();
    machine.menu->toggleClosedLid(true);
    waitForPopups();
    expectShown(
        overlay(),
        {{{"Zugeklappt wach halten?", "Keep the Mac awake with the lid closed?"},
          {"Dein Mac läuft mit geschlossenem Deckel weiter — ideal für Uploads oder Renders über "
           "Nacht.\n\nAchtung: "
           "Zugeklappt staut sich Wärme. Corvane dreht die Lüfter automatisch hoch und schaltet bei zu viel "
           "Hitze oder "
           "niedrigem Akku selbst ab. Am Netzteil empfohlen.",
           "Your Mac keeps running with the lid shut — ideal for overnight uploads or renders.\n\nNote: a "
           "closed lid "
           "traps heat. Corvane auto-ramps the fans and switches off on excess heat or low battery. AC power "
           "recommended."},
          {"Aktivieren", "Enable"},
          {"Abbrechen", "Cancel"}}});
}

TEST_P(PanelTexts, OfferFourActionsOfARule) {
    machine.openPanel(40);
    machine.automate();
    machine.menu->panelAppeared();
    show(4000);
    click("ruleAction");
    waitForPopups();
    expectShown(overlay(), {{{"Nur wach halten", "Keep awake only"},
                             {"Kühlen: Leise", "Cool: Silent"},
                             {"Kühlen: Ausgewogen", "Cool: Balanced"},
                             "[checkmark]",
                             {"Kühlen: Max", "Cool: Max"}}});
}

TEST_P(PanelTexts, OfferAnApplication) {
    machine.installed.set({{"org.example.render", "Render", ""}});
    machine.openPanel();
    machine.menu->setExpandAuto(true);
    show(4000);
    click("chooseApp");
    waitForPopups();
    EXPECT_THAT(shown(overlay()), testing::HasSubstr("Render"));
    EXPECT_THAT(shown(overlay()), testing::EndsWith(isGerman() ? "Auswählen" : "Choose"));
}

TEST_P(PanelTexts, NameWhatIsDrawnAsASymbolAlone) {
    open();
    EXPECT_EQ(text("settings"), isGerman() ? "Einstellungen" : "Settings");
    EXPECT_EQ(text("guide"), isGerman() ? "Anleitung anzeigen" : "Show guide");
    EXPECT_EQ(text("quit"), isGerman() ? "Corvane beenden" : "Quit Corvane");
    EXPECT_EQ(item("quit").property("role"), "red");
}

INSTANTIATE_TEST_SUITE_P(InBothLanguages, PanelTexts, testing::Values("de", "en"),
                         [](const auto& language) { return std::string(language.param); });

}  // namespace
}  // namespace corvane
