#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/awake/SleepAssertions.h"
#include "platform/simulated/MemoryUserDefaults.h"
#include "platform/simulated/SimulatedLocale.h"
#include "platform/simulated/SimulatedPowerAssertions.h"

namespace corvane {
namespace {

using Assertion = SimulatedPowerAssertions::Assertion;
using Kind = SleepAssertions::Kind;
using Kinds = SleepAssertions::Kinds;
using testing::ElementsAre;
using testing::Pair;

class SleepAssertionsTest : public testing::Test {
protected:
    SimulatedPowerAssertions power;
    SleepAssertions assertions{power};
};

TEST_F(SleepAssertionsTest, HoldNothingToBeginWith) {
    EXPECT_TRUE(assertions.ids().empty());
    EXPECT_TRUE(assertions.heldKinds().empty());
    EXPECT_EQ(power.taken(), 0U);
}

TEST_F(SleepAssertionsTest, AreTakenInTheSystemsTypesUnderNamesThatSayWhatFor) {
    for (const Kind kind : SleepAssertions::allKinds) {
        EXPECT_TRUE(assertions.start(kind));
    }
    EXPECT_THAT(
        power.held(),
        ElementsAre(Pair(1, Assertion{"PreventUserIdleSystemSleep", "Wakewell: prevent system sleep"}),
                    Pair(2, Assertion{"PreventUserIdleDisplaySleep", "Wakewell: prevent display sleep"}),
                    Pair(3, Assertion{"NetworkClientActive", "Wakewell: keep network active"})));
    EXPECT_THAT(assertions.ids(),
                ElementsAre(Pair(Kind::system, 1), Pair(Kind::display, 2), Pair(Kind::network, 3)));
}

TEST_F(SleepAssertionsTest, AreTakenOncePerKindAndReleasedByOneStop) {
    EXPECT_TRUE(assertions.start(Kind::system));
    EXPECT_TRUE(assertions.start(Kind::system));
    EXPECT_EQ(power.taken(), 1U);
    assertions.stop(Kind::system);
    EXPECT_TRUE(power.held().empty());
    EXPECT_FALSE(assertions.holds(Kind::system));
}

TEST_F(SleepAssertionsTest, AreTakenAnewAfterTheyWereReleased) {
    assertions.start(Kind::system);
    assertions.stop(Kind::system);
    EXPECT_TRUE(assertions.start(Kind::system));
    EXPECT_THAT(assertions.ids(), ElementsAre(Pair(Kind::system, 2)));
    EXPECT_EQ(power.held().size(), 1U);
}

TEST_F(SleepAssertionsTest, StoppedWithoutBeingHeldStayAsTheyAre) {
    assertions.start(Kind::display);
    assertions.stop(Kind::system);
    EXPECT_EQ(power.released(), 0U);
    EXPECT_EQ(assertions.heldKinds(), Kinds{Kind::display});
}

TEST_F(SleepAssertionsTest, OfOneKindDoNotTouchThoseOfAnother) {
    assertions.start(Kind::display);
    EXPECT_FALSE(assertions.holds(Kind::system));
    assertions.start(Kind::system);
    assertions.start(Kind::network);
    assertions.stop(Kind::system);
    EXPECT_EQ(assertions.heldKinds(), (Kinds{Kind::display, Kind::network}));
    EXPECT_EQ(power.held().size(), 2U);
}

TEST_F(SleepAssertionsTest, AreAllReleasedAtOnce) {
    for (const Kind kind : SleepAssertions::allKinds) {
        assertions.start(kind);
    }
    assertions.stopAll();
    EXPECT_TRUE(assertions.ids().empty());
    EXPECT_TRUE(power.held().empty());
    EXPECT_EQ(power.released(), 3U);
}

TEST_F(SleepAssertionsTest, StoppedAllWithoutAnyDoNothing) {
    assertions.stopAll();
    EXPECT_TRUE(assertions.ids().empty());
    EXPECT_EQ(power.released(), 0U);
}

TEST_F(SleepAssertionsTest, ThatTheSystemRefusesAreNotHeldAndChangeNothing) {
    assertions.start(Kind::system);
    power.refuse(PowerAssertions::preventUserIdleDisplaySleep);
    EXPECT_FALSE(assertions.start(Kind::display));
    EXPECT_THAT(assertions.ids(), ElementsAre(Pair(Kind::system, 1)));
    power.refuse("");
    EXPECT_TRUE(assertions.start(Kind::display));
}

TEST_F(SleepAssertionsTest, OfAnotherOwnerAreLeftAlone) {
    SleepAssertions others(power);
    assertions.start(Kind::system);
    others.start(Kind::system);
    EXPECT_EQ(power.held().size(), 2U);
    assertions.stopAll();
    EXPECT_EQ(power.held().size(), 1U);
    EXPECT_TRUE(others.holds(Kind::system));
    others.stop(Kind::system);
    EXPECT_TRUE(power.held().empty());
}

TEST_F(SleepAssertionsTest, OfAnOwnerThatIsGoneAreLeftToTheSystem) {
    {
        SleepAssertions others(power);
        others.start(Kind::network);
    }
    EXPECT_EQ(power.held().size(), 1U);
}

TEST(SleepAssertionsKind, HasARawValueThatLeadsBackToIt) {
    EXPECT_EQ(SleepAssertions::rawValue(Kind::system), "system");
    EXPECT_EQ(SleepAssertions::rawValue(Kind::display), "display");
    EXPECT_EQ(SleepAssertions::rawValue(Kind::network), "network");
    for (const Kind kind : SleepAssertions::allKinds) {
        EXPECT_EQ(SleepAssertions::kindFromRawValue(SleepAssertions::rawValue(kind)), kind);
    }
}

TEST(SleepAssertionsKind, IsNotMadeFromAnyOtherText) {
    for (const char* text : {"", "System", "SYSTEM", "system ", " system", "sys", "systems", "disk"}) {
        EXPECT_EQ(SleepAssertions::kindFromRawValue(text), std::nullopt) << text;
    }
}

TEST(SleepAssertionsKind, ComesInOneOrder) {
    EXPECT_THAT(SleepAssertions::allKinds, ElementsAre(Kind::system, Kind::display, Kind::network));
    EXPECT_THAT((Kinds{Kind::network, Kind::system, Kind::display}),
                ElementsAre(Kind::system, Kind::display, Kind::network));
}

TEST(SleepAssertionsKind, IsLabelledInTheUsersLanguage) {
    const MemoryUserDefaults defaults;
    SimulatedLocale locale;
    const Lang lang(defaults, locale);
    EXPECT_STREQ(SleepAssertions::label(Kind::system, lang), "Keep system awake");
    EXPECT_STREQ(SleepAssertions::label(Kind::display, lang), "Keep display awake");
    EXPECT_STREQ(SleepAssertions::label(Kind::network, lang), "Keep network active");
    locale.prefer({"de-DE"});
    EXPECT_STREQ(SleepAssertions::label(Kind::system, lang), "System wach halten");
    EXPECT_STREQ(SleepAssertions::label(Kind::display, lang), "Display wach halten");
    EXPECT_STREQ(SleepAssertions::label(Kind::network, lang), "Netzwerk aktiv halten");
}

}  // namespace
}  // namespace corvane
