#include <memory>
#include <optional>

#include <gtest/gtest.h>

#include "platform/macos/gui/MacAppearance.h"
#include "tests/platform/macos/fakes/AppKit/FakeApplication.h"

namespace corvane {
namespace {

class MacAppearanceTest : public testing::Test {
protected:
    FakeApplication application;
    int changes = 0;
};

TEST_F(MacAppearanceTest, IsWhatTheUserPrefersFromTheBeginning) {
    EXPECT_FALSE(MacAppearance().isDark());
    application.setDark(true);
    EXPECT_TRUE(MacAppearance().isDark());
}

TEST_F(MacAppearanceTest, FollowsTheUser) {
    MacAppearance appearance;
    const auto observation = appearance.observe([this] { ++changes; });
    application.setDark(true);
    EXPECT_TRUE(appearance.isDark());
    EXPECT_EQ(changes, 1);
    application.setDark(false);
    EXPECT_FALSE(appearance.isDark());
    EXPECT_EQ(changes, 2);
}

TEST_F(MacAppearanceTest, HasChangedAlreadyWhenItIsAnnounced) {
    MacAppearance appearance;
    std::optional<bool> seen;
    const auto observation = appearance.observe([&] { seen = appearance.isDark(); });
    application.setDark(true);
    EXPECT_EQ(seen, true);
}

TEST_F(MacAppearanceTest, SaysNothingOfWhatIsNoChangeBetweenDarkAndLight) {
    MacAppearance appearance;
    const auto observation = appearance.observe([this] { ++changes; });
    application.setDark(false);
    EXPECT_EQ(changes, 0);
    application.setDark(true);
    application.setDark(true);
    EXPECT_EQ(changes, 1);
}

TEST_F(MacAppearanceTest, TellsNobodyWhoHasStoppedObserving) {
    MacAppearance appearance;
    auto observation = appearance.observe([this] { ++changes; });
    observation.reset();
    application.setDark(true);
    EXPECT_EQ(changes, 0);
    EXPECT_TRUE(appearance.isDark());
}

TEST_F(MacAppearanceTest, LetsGoOfTheApplicationAtItsEnd) {
    auto appearance = std::make_unique<MacAppearance>();
    EXPECT_EQ(application.observers(), 1);
    appearance.reset();
    EXPECT_EQ(application.observers(), 0);
    application.setDark(true);
}

TEST_F(MacAppearanceTest, MayBeThereTwice) {
    MacAppearance one;
    const auto observation = one.observe([this] { ++changes; });
    {
        const MacAppearance other;
        EXPECT_EQ(application.observers(), 2);
    }
    application.setDark(true);
    EXPECT_TRUE(one.isDark());
    EXPECT_EQ(changes, 1);
}

}  // namespace
}  // namespace corvane
