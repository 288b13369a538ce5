#include <QSet>
#include <QStringList>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/onboarding/onboardingPages.h"
#include "platform/simulated/MemoryUserDefaults.h"
#include "platform/simulated/SimulatedLocale.h"

namespace corvane {
namespace {

using testing::ElementsAre;

class OnboardingPagesTest : public testing::Test {
protected:
    QList<OnboardingPage> pages(const char* language) {
        defaults.set(Lang::setting, std::string(language));
        return onboardingPages(lang);
    }

    std::vector<std::string> each(const char* language, QString OnboardingPage::*member) {
        std::vector<std::string> texts;
        for (const OnboardingPage& page : pages(language)) {
            texts.push_back((page.*member).toStdString());
        }
        return texts;
    }

    MemoryUserDefaults defaults;
    SimulatedLocale locale;
    Lang lang{defaults, locale};
};

TEST_F(OnboardingPagesTest, HaveTheirTitlesInGerman) {
    EXPECT_THAT(each("de", &OnboardingPage::title),
                ElementsAre("Willkommen bei\nCorvane", "Zugeklappt\nweiterarbeiten",
                            "Wach bleiben,\nwenn du's brauchst", "Smart Cooling", "Denkt für\ndich mit",
                            "Oben in deiner\nMenüleiste"));
}

TEST_F(OnboardingPagesTest, HaveTheirTitlesInEnglish) {
    EXPECT_THAT(
        each("en", &OnboardingPage::title),
        ElementsAre("Welcome to\nCorvane", "Keep working,\nlid closed", "Stay awake\nwhen you need it",
                    "Smart Cooling", "Thinks along\nwith you", "Up in your\nmenu bar"));
}

TEST_F(OnboardingPagesTest, HaveTheirBodiesInGerman) {
    EXPECT_THAT(
        each("de", &OnboardingPage::body),
        ElementsAre(
            "Dein Mac, deine Regeln.\nWach bleiben — sogar zugeklappt —,\nLüfter steuern, Temperaturen im "
            "Blick.\nAlles aus der Menüleiste.",
            "Das Highlight: Schalter umlegen,\nDeckel zu — dein Mac läuft weiter.\nOhne externen Monitor, "
            "auch auf Akku.\n\nDer Upload, der Export, der kleine Server:\nalles läuft durch, während "
            "Corvane kühlt\nund bei Hitze oder wenig Akku von selbst\nstoppt.",
            "Langer Download oder Render?\n\nHalte System, Display oder Netzwerk\nwach — mit Timer von 1 bis "
            "24 Stunden\noder eigener Endzeit. Danach schaltet\nalles automatisch zurück auf normal.",
            "Schalter an, Profil wählen — Leise,\nAusgewogen oder Max — und die Lüfter\nfolgen live der "
            "Temperatur. Oder du\nregelst manuell, von 0 bis 100 %.\n\nImmer sicher: Du kannst nur "
            "besser\nkühlen als macOS, nie schlechter. Bei\nechter Hitze übernimmt wieder dein Mac.",
            "Automatik: „Solange Final Cut läuft,\nbleib wach und kühl auf Max.“ Corvane\nreagiert von "
            "selbst — auch am Netzteil\noder bei externem Bildschirm.\n\nUnd 💾 Laufwerke wach hält "
            "externe\nPlatten gemountet — perfekt für die\nNacht mit geschlossenem Deckel.",
            "Corvane hat kein Fenster — es wohnt\noben rechts in der Menüleiste, "
            "beim\nTacho-Symbol.\n\nGleich öffnet es sich einmal von selbst,\ndamit du weißt, wo du es "
            "findest. Ein\nKlick aufs Symbol — und dein Schaltpult\nist da."));
}

TEST_F(OnboardingPagesTest, HaveTheirBodiesInEnglish) {
    EXPECT_THAT(
        each("en", &OnboardingPage::body),
        ElementsAre(
            "Your Mac, your rules.\nStay awake — even with the lid closed —\ncontrol the fans, watch the "
            "temperatures.\nAll from the menu bar.",
            "The highlight: flip the switch,\nclose the lid — your Mac keeps running.\nNo external display "
            "needed, even on battery.\n\nThe upload, the export, the little server:\nit all keeps going "
            "while Corvane cools,\nstopping by itself on heat or low battery.",
            "A long download or render?\n\nKeep the system, display or network\nawake — with a timer from 1 "
            "to 24 hours\nor your own end time. Afterwards\neverything returns to normal\nautomatically.",
            "Flip the switch, pick a profile — Silent,\nBalanced or Max — and the fans follow\nthe "
            "temperature live. Or take over\nmanually, from 0 to 100%.\n\nAlways safe: you can only cool "
            "better\nthan macOS, never worse. On real heat,\nyour Mac takes back over.",
            "Automation: \"While Final Cut runs,\nstay awake and cool at Max.\" Corvane\nreacts on its own — "
            "also on AC power\nor with an external display.\n\nAnd 💾 Keep drives awake holds "
            "external\ndisks mounted — perfect for a night\nwith the lid closed.",
            "Corvane has no window — it lives in\nthe top-right menu bar, at the gauge\nicon.\n\nIt'll open "
            "once by itself in a moment so\nyou know where to find it. One click on\nthe icon and your "
            "control panel is there."));
}

TEST_F(OnboardingPagesTest, HaveAColorAndAPictureEach) {
    for (const char* language : {"de", "en"}) {
        EXPECT_THAT(each(language, &OnboardingPage::accent),
                    ElementsAre("blue", "blue", "yellow", "cyan", "green", "blue"));
        EXPECT_THAT(each(language, &OnboardingPage::emoji),
                    ElementsAre("🎛️", "💻", "☀️", "❄️", "🤖", "👆"));
    }
}

TEST_F(OnboardingPagesTest, AreBuiltAnewEachTime) {
    QSet<QUuid> known;
    for (const QList<OnboardingPage>& built : {pages("en"), pages("en")}) {
        for (const OnboardingPage& page : built) {
            EXPECT_FALSE(page.id.isNull());
            known.insert(page.id);
        }
    }
    EXPECT_EQ(known.size(), 2 * onboardingPageCount);
}

}  // namespace
}  // namespace corvane
