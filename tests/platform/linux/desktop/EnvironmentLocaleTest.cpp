#include <map>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/desktop/EnvironmentLocale.h"

namespace corvane {
namespace {

using testing::ElementsAre;

std::vector<std::string> languagesIn(const std::map<std::string, std::string>& environment) {
    const EnvironmentLocale locale([&](const char* name) {
        const auto found = environment.find(name);
        return found == environment.end() ? nullptr : found->second.c_str();
    });
    return locale.preferredLanguages();
}

TEST(EnvironmentLocale, PrefersEnglishWhenNothingIsSaid) {
    EXPECT_THAT(languagesIn({}), ElementsAre("en"));
    EXPECT_THAT(languagesIn({{"LANGUAGE", ""}, {"LC_ALL", ""}, {"LANG", ""}}), ElementsAre("en"));
}

TEST(EnvironmentLocale, MakesALanguageTagOfALocale) {
    EXPECT_THAT(languagesIn({{"LANG", "de_DE.UTF-8@euro"}}), ElementsAre("de-DE"));
    EXPECT_THAT(languagesIn({{"LANG", "de_AT"}}), ElementsAre("de-AT"));
    EXPECT_THAT(languagesIn({{"LANG", "de"}}), ElementsAre("de"));
    EXPECT_THAT(languagesIn({{"LANG", "sr_RS@latin"}}), ElementsAre("sr-RS"));
    EXPECT_THAT(languagesIn({{"LANG", "es_419.UTF-8"}}), ElementsAre("es-419"));
}

TEST(EnvironmentLocale, TakesTheFirstVariableThatIsSetAndNotEmpty) {
    EXPECT_THAT(languagesIn({{"LC_ALL", "fr_FR"}, {"LC_MESSAGES", "it_IT"}, {"LANG", "de_DE"}}),
                ElementsAre("fr-FR"));
    EXPECT_THAT(languagesIn({{"LC_ALL", ""}, {"LC_MESSAGES", "it_IT"}, {"LANG", "de_DE"}}),
                ElementsAre("it-IT"));
    EXPECT_THAT(languagesIn({{"LC_MESSAGES", ""}, {"LANG", "de_DE"}}), ElementsAre("de-DE"));
    EXPECT_THAT(languagesIn({{"LC_TIME", "de_DE"}}), ElementsAre("en"));
}

TEST(EnvironmentLocale, PrefersEnglishWhereTextsAreUntranslated) {
    for (const char* untranslated : {"C", "POSIX", "C.UTF-8", "POSIX@x"}) {
        EXPECT_THAT(languagesIn({{"LANG", untranslated}}), ElementsAre("en")) << untranslated;
    }
    EXPECT_THAT(languagesIn({{"LC_ALL", "C"}, {"LANG", "de_DE.UTF-8"}}), ElementsAre("en"));
}

TEST(EnvironmentLocale, PrefersTheListOfLanguages) {
    EXPECT_THAT(languagesIn({{"LANGUAGE", "de_CH:fr:en_GB.UTF-8"}, {"LANG", "it_IT.UTF-8"}}),
                ElementsAre("de-CH", "fr", "en-GB"));
    EXPECT_THAT(languagesIn({{"LANGUAGE", ":de::C:"}, {"LANG", "it_IT"}}), ElementsAre("de", "en"));
    EXPECT_THAT(languagesIn({{"LANGUAGE", "de"}}), ElementsAre("de"));
}

TEST(EnvironmentLocale, PrefersTheListOfLanguagesEvenWhereTextsAreUntranslated) {
    EXPECT_THAT(languagesIn({{"LANGUAGE", "de:fr"}, {"LC_ALL", "C"}}), ElementsAre("de", "fr"));
    EXPECT_THAT(languagesIn({{"LANGUAGE", "de"}, {"LANG", "POSIX"}}), ElementsAre("de"));
    EXPECT_THAT(languagesIn({{"LANGUAGE", "de"}, {"LANG", "C.UTF-8"}}), ElementsAre("de"));
}

TEST(EnvironmentLocale, LeavesOutWhatIsNoLanguage) {
    EXPECT_THAT(languagesIn({{"LANGUAGE", "../../etc:de:much_toolonglanguage:_:de_"}}), ElementsAre("de"));
    EXPECT_THAT(languagesIn({{"LANGUAGE", "/:\xff"}, {"LANG", "fr_FR"}}), ElementsAre("fr-FR"));
    EXPECT_THAT(languagesIn({{"LANG", "/usr/share"}}), ElementsAre("en"));
}

TEST(EnvironmentLocale, ReadsAfreshEachTime) {
    const char* language = "de";
    const EnvironmentLocale locale(
        [&](const char* name) { return std::string_view(name) == "LANG" ? language : nullptr; });
    EXPECT_THAT(locale.preferredLanguages(), ElementsAre("de"));
    language = "fr";
    EXPECT_THAT(locale.preferredLanguages(), ElementsAre("fr"));
}

}  // namespace
}  // namespace corvane
