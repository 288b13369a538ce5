#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/app/session/SessionMachine.h"

namespace corvane {
namespace {

struct SessionApply : SessionTest {};

TEST_F(SessionApply, HoldsJustTheKindsUntilTheEnd) {
    manager().apply({Kind::network, Kind::system}, in(2h));
    EXPECT_EQ(manager().activeKinds(), (Kinds{Kind::system, Kind::network}));
    EXPECT_EQ(manager().expiresAt(), in(2h));
    EXPECT_EQ(machine.power.held().size(), 2U);
    EXPECT_EQ(machine.power.held().at(1).type, PowerAssertions::preventUserIdleSystemSleep);
    EXPECT_EQ(machine.power.held().at(2).type, PowerAssertions::networkClientActive);
}

TEST_F(SessionApply, KeepsTheAssertionsOfTheKindsThatStayAndMovesTheEnd) {
    manager().apply({Kind::system, Kind::display}, in(2h));
    const auto display = manager().assertions().ids().at(Kind::display);
    manager().apply({Kind::display}, in(1h));
    EXPECT_EQ(manager().activeKinds(), Kinds{Kind::display});
    EXPECT_EQ(manager().assertions().ids().at(Kind::display), display);
    EXPECT_EQ(manager().expiresAt(), in(1h));
    EXPECT_EQ(machine.power.taken(), 2U);
    EXPECT_EQ(machine.power.released(), 1U);
    machine.advance(1h);
    EXPECT_TRUE(machine.isIdle());
    machine.advance(2h);
    EXPECT_EQ(machine.posted(finished), 1U) << "the former end is none any more";
}

TEST_F(SessionApply, OfNoKindsEndsTheSession) {
    manager().apply({Kind::system, Kind::display, Kind::network}, in(1h));
    manager().apply({}, in(2h));
    EXPECT_TRUE(machine.isIdle());
    EXPECT_TRUE(machine.power.held().empty());
    machine.advance(3h);
    EXPECT_EQ(machine.postedTitles(), std::vector<std::string>{});
}

TEST_F(SessionApply, OfNoKindsToNoSessionDoesNothing) {
    manager().apply({}, in(2h));
    EXPECT_TRUE(machine.isIdle());
    EXPECT_EQ(machine.power.taken(), 0U);
    EXPECT_EQ(machine.center.foregroundRequests(), 0);
}

TEST_F(SessionApply, WithoutAnEndGoesOnForever) {
    manager().apply({Kind::system}, std::nullopt);
    const WallTime now = manager().now();
    machine.advance(48h);
    EXPECT_EQ(manager().activeKinds(), Kinds{Kind::system});
    EXPECT_EQ(manager().expiresAt(), std::nullopt);
    EXPECT_EQ(manager().now(), now) << "nothing ticks";
    EXPECT_EQ(machine.center.foregroundRequests(), 0) << "nothing will be posted";
}

TEST_F(SessionApply, WithoutAnEndCancelsTheEndThereWas) {
    manager().apply({Kind::system}, in(1h));
    manager().apply({Kind::system}, std::nullopt);
    EXPECT_EQ(manager().expiresAt(), std::nullopt);
    machine.advance(2h);
    EXPECT_EQ(manager().activeKinds(), Kinds{Kind::system});
    EXPECT_EQ(machine.power.taken(), 1U);
}

TEST_F(SessionApply, PassesOverAKindThatTheSystemRefuses) {
    machine.power.refuse(PowerAssertions::preventUserIdleDisplaySleep);
    manager().apply({Kind::system, Kind::display, Kind::network}, in(1h));
    EXPECT_EQ(manager().activeKinds(), (Kinds{Kind::system, Kind::network}));
    EXPECT_EQ(manager().expiresAt(), in(1h));
}

TEST_F(SessionApply, OfARefusedKindAloneIsNoSession) {
    manager().apply({Kind::system}, in(1h));
    machine.power.refuse(PowerAssertions::preventUserIdleDisplaySleep);
    manager().apply({Kind::display}, in(1h));
    EXPECT_TRUE(machine.isIdle());
    machine.advance(2h);
    EXPECT_EQ(machine.posted(finished), 0U);
}

TEST_F(SessionApply, LeavesTheAssertionsOfTheAutomationAndTheLidAlone) {
    machine.automate();
    manager().lid().setEnabled(true);
    const std::size_t others = machine.power.held().size();
    ASSERT_EQ(others, 3U) << "system and display of the automation, system of the lid";
    manager().apply({Kind::system, Kind::display}, in(1h));
    EXPECT_EQ(machine.power.held().size(), others + 2);
    machine.advance(1h);
    EXPECT_TRUE(machine.isIdle());
    EXPECT_EQ(machine.power.held().size(), others);
    manager().apply({Kind::system}, std::nullopt);
    manager().triggers().setAutomationEnabled(false);
    manager().lid().setEnabled(false);
    EXPECT_EQ(manager().activeKinds(), Kinds{Kind::system});
    EXPECT_EQ(machine.power.held().size(), 1U);
}

TEST_F(SessionApply, IsSeenByAViewAsRawValuesAndADate) {
    manager().apply({Kind::network, Kind::system}, in(90s));
    EXPECT_EQ(manager().property("activeKinds").toStringList(), (QStringList{"system", "network"}));
    const auto end = std::chrono::floor<std::chrono::milliseconds>(in(90s).time_since_epoch());
    EXPECT_EQ(manager().property("expiresAt").toDateTime().toMSecsSinceEpoch(), end.count());
    manager().stopSession();
    EXPECT_EQ(manager().property("activeKinds").toStringList(), QStringList());
    EXPECT_FALSE(manager().property("expiresAt").isValid());
}

/// Whatever the user does in whatever order, and whatever the system refuses.
TEST_F(SessionApply, AndEverythingElsePublishesWhatIsHeld) {
    std::mt19937 random(20261121);
    const auto pick = [&](int count) { return std::uniform_int_distribution<>(0, count - 1)(random); };
    const auto pickKind = [&] { return SleepAssertions::allKinds.at(static_cast<std::size_t>(pick(3))); };
    for (int step = 0; step < 3000; ++step) {
        switch (pick(6)) {
            case 0:
                manager().apply({pickKind(), pickKind()}, in(std::chrono::seconds(pick(90) - 5)));
                break;
            case 1:
                manager().apply({pickKind()}, std::nullopt);
                break;
            case 2:
                manager().toggle(pickKind());
                break;
            case 3:
                machine.power.refuse(pick(2) == 0 ? "" : PowerAssertions::preventUserIdleDisplaySleep);
                break;
            case 4:
                manager().stopSession();
                break;
            default:
                machine.advance(std::chrono::milliseconds(pick(20'000)));
        }
        ASSERT_EQ(manager().activeKinds(), manager().assertions().heldKinds());
        ASSERT_EQ(manager().activeKinds().size(), machine.power.held().size());
        ASSERT_TRUE(!manager().expiresAt() || !manager().activeKinds().empty());
        ASSERT_EQ(manager().remainingText().isNull(), !manager().expiresAt());
    }
}

}  // namespace
}  // namespace corvane
