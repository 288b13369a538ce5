#include <gtest/gtest.h>

#include "app/shell/Lang.h"
#include "platform/simulated/MemoryUserDefaults.h"
#include "platform/simulated/SimulatedLocale.h"

namespace corvane {
namespace {

class LangTest : public testing::Test {
protected:
    void choose(const char* language) { defaults.set("appLanguage", std::string(language)); }

    MemoryUserDefaults defaults;
    SimulatedLocale locale;
    Lang lang{defaults, locale};
};

TEST_F(LangTest, IsGermanWhenTheFirstPreferredLanguageIs) {
    for (const char* language : {"de", "de-DE", "de-AT", "de-CH", "DE-de", "De"}) {
        locale.prefer({language, "en"});
        EXPECT_TRUE(lang.isGerman()) << language;
    }
}

TEST_F(LangTest, IsEnglishForEveryOtherFirstLanguage) {
    for (const char* language : {"en", "fr-FR", "nl", "da-DK", "", "d"}) {
        locale.prefer({language, "de-DE"});
        EXPECT_FALSE(lang.isGerman()) << language;
    }
}

TEST_F(LangTest, IsEnglishWhenNoLanguageIsPreferred) {
    locale.prefer({});
    EXPECT_FALSE(lang.isGerman());
}

TEST_F(LangTest, FollowsTheSettingBeforeTheSystem) {
    locale.prefer({"en-GB"});
    choose("de");
    EXPECT_TRUE(lang.isGerman());

    locale.prefer({"de-DE"});
    choose("en");
    EXPECT_FALSE(lang.isGerman());
}

TEST_F(LangTest, TakesAnyOtherSettingForTheSystemsChoice) {
    for (const char* setting : {"system", "DE", "EN", "De", "de-DE", "german", ""}) {
        choose(setting);
        locale.prefer({"de-DE"});
        EXPECT_TRUE(lang.isGerman()) << setting;
        locale.prefer({"fr-FR"});
        EXPECT_FALSE(lang.isGerman()) << setting;
    }
}

TEST_F(LangTest, TakesASettingThatIsNoTextForTheSystemsChoice) {
    locale.prefer({"de-DE"});
    defaults.set("appLanguage", false);
    EXPECT_TRUE(lang.isGerman());
}

TEST_F(LangTest, ChoosesTheMemberOfAPairAnewEachTime) {
    locale.prefer({"en"});
    EXPECT_STREQ(lang.text("Lüfter", "Fans"), "Fans");
    choose("de");
    EXPECT_STREQ(lang.text("Lüfter", "Fans"), "Lüfter");
    defaults.remove("appLanguage");
    EXPECT_STREQ(lang.text("Lüfter", "Fans"), "Fans");
    locale.prefer({"de-CH"});
    EXPECT_STREQ(lang.text("Lüfter", "Fans"), "Lüfter");
}

}  // namespace
}  // namespace corvane
