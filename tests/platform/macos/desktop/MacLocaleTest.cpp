#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/macos/desktop/MacLocale.h"
#include "tests/platform/macos/fakes/Foundation/FakeLocale.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(MacLocale, HasTheLanguagesOfTheSettingsAsTheyAreNow) {
    FakeLocale system({"de-CH", "en"});
    const MacLocale locale;
    EXPECT_THAT(locale.preferredLanguages(), ElementsAre("de-CH", "en"));
    system.set({"fr-FR"});
    EXPECT_THAT(locale.preferredLanguages(), ElementsAre("fr-FR"));
    system.set({});
    EXPECT_THAT(locale.preferredLanguages(), IsEmpty());
}

}  // namespace
}  // namespace corvane
