#include "app/onboarding/onboardingPages.h"

#include <QString>

namespace corvane {

namespace {

// Each literal of a text is a line as it is shown.

OnboardingPage welcomePage(const Lang& lang) {
    return {.emoji = QStringLiteral("🎛️"),
            .title = lang.text("Willkommen bei\n"
                               "Corvane",
                               "Welcome to\n"
                               "Corvane"),
            .body = lang.text("Dein Mac, deine Regeln.\n"
                              "Wach bleiben — sogar zugeklappt —,\n"
                              "Lüfter steuern, Temperaturen im Blick.\n"
                              "Alles aus der Menüleiste.",
                              "Your Mac, your rules.\n"
                              "Stay awake — even with the lid closed —\n"
                              "control the fans, watch the temperatures.\n"
                              "All from the menu bar."),
            .accent = QStringLiteral("blue")};
}

OnboardingPage closedLidPage(const Lang& lang) {
    return {.emoji = QStringLiteral("💻"),
            .title = lang.text("Zugeklappt\n"
                               "weiterarbeiten",
                               "Keep working,\n"
                               "lid closed"),
            .body = lang.text("Das Highlight: Schalter umlegen,\n"
                              "Deckel zu — dein Mac läuft weiter.\n"
                              "Ohne externen Monitor, auch auf Akku.\n"
                              "\n"
                              "Der Upload, der Export, der kleine Server:\n"
                              "alles läuft durch, während Corvane kühlt\n"
                              "und bei Hitze oder wenig Akku von selbst\n"
                              "stoppt.",
                              "The highlight: flip the switch,\n"
                              "close the lid — your Mac keeps running.\n"
                              "No external display needed, even on battery.\n"
                              "\n"
                              "The upload, the export, the little server:\n"
                              "it all keeps going while Corvane cools,\n"
                              "stopping by itself on heat or low battery."),
            .accent = QStringLiteral("blue")};
}

OnboardingPage keepAwakePage(const Lang& lang) {
    return {.emoji = QStringLiteral("☀️"),
            .title = lang.text("Wach bleiben,\n"
                               "wenn du's brauchst",
                               "Stay awake\n"
                               "when you need it"),
            .body = lang.text("Langer Download oder Render?\n"
                              "\n"
                              "Halte System, Display oder Netzwerk\n"
                              "wach — mit Timer von 1 bis 24 Stunden\n"
                              "oder eigener Endzeit. Danach schaltet\n"
                              "alles automatisch zurück auf normal.",
                              "A long download or render?\n"
                              "\n"
                              "Keep the system, display or network\n"
                              "awake — with a timer from 1 to 24 hours\n"
                              "or your own end time. Afterwards\n"
                              "everything returns to normal\n"
                              "automatically."),
            .accent = QStringLiteral("yellow")};
}

OnboardingPage coolingPage(const Lang& lang) {
    return {.emoji = QStringLiteral("❄️"),
            .title = QStringLiteral("Smart Cooling"),
            .body = lang.text("Schalter an, Profil wählen — Leise,\n"
                              "Ausgewogen oder Max — und die Lüfter\n"
                              "folgen live der Temperatur. Oder du\n"
                              "regelst manuell, von 0 bis 100 %.\n"
                              "\n"
                              "Immer sicher: Du kannst nur besser\n"
                              "kühlen als macOS, nie schlechter. Bei\n"
                              "echter Hitze übernimmt wieder dein Mac.",
                              "Flip the switch, pick a profile — Silent,\n"
                              "Balanced or Max — and the fans follow\n"
                              "the temperature live. Or take over\n"
                              "manually, from 0 to 100%.\n"
                              "\n"
                              "Always safe: you can only cool better\n"
                              "than macOS, never worse. On real heat,\n"
                              "your Mac takes back over."),
            .accent = QStringLiteral("cyan")};
}

OnboardingPage automationPage(const Lang& lang) {
    return {.emoji = QStringLiteral("🤖"),
            .title = lang.text("Denkt für\n"
                               "dich mit",
                               "Thinks along\n"
                               "with you"),
            .body = lang.text("Automatik: „Solange Final Cut läuft,\n"
                              "bleib wach und kühl auf Max.“ Corvane\n"
                              "reagiert von selbst — auch am Netzteil\n"
                              "oder bei externem Bildschirm.\n"
                              "\n"
                              "Und 💾 Laufwerke wach hält externe\n"
                              "Platten gemountet — perfekt für die\n"
                              "Nacht mit geschlossenem Deckel.",
                              "Automation: \"While Final Cut runs,\n"
                              "stay awake and cool at Max.\" Corvane\n"
                              "reacts on its own — also on AC power\n"
                              "or with an external display.\n"
                              "\n"
                              "And 💾 Keep drives awake holds external\n"
                              "disks mounted — perfect for a night\n"
                              "with the lid closed."),
            .accent = QStringLiteral("green")};
}

OnboardingPage menuBarPage(const Lang& lang) {
    return {.emoji = QStringLiteral("👆"),
            .title = lang.text("Oben in deiner\n"
                               "Menüleiste",
                               "Up in your\n"
                               "menu bar"),
            .body = lang.text("Corvane hat kein Fenster — es wohnt\n"
                              "oben rechts in der Menüleiste, beim\n"
                              "Tacho-Symbol.\n"
                              "\n"
                              "Gleich öffnet es sich einmal von selbst,\n"
                              "damit du weißt, wo du es findest. Ein\n"
                              "Klick aufs Symbol — und dein Schaltpult\n"
                              "ist da.",
                              "Corvane has no window — it lives in\n"
                              "the top-right menu bar, at the gauge\n"
                              "icon.\n"
                              "\n"
                              "It'll open once by itself in a moment so\n"
                              "you know where to find it. One click on\n"
                              "the icon and your control panel is there."),
            .accent = QStringLiteral("blue")};
}

}  // namespace

QList<OnboardingPage> onboardingPages(const Lang& lang) {
    QList<OnboardingPage> pages{welcomePage(lang), closedLidPage(lang),  keepAwakePage(lang),
                                coolingPage(lang), automationPage(lang), menuBarPage(lang)};
    Q_ASSERT(pages.size() == onboardingPageCount);
    return pages;
}

}  // namespace corvane
