#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/app/session/SessionMachine.h"

namespace corvane {
namespace {

struct SessionToggle : SessionTest {};

TEST_F(SessionToggle, BeginsASessionOfADay) {
    machine.advance(1h);
    manager().toggle(Kind::system);
    EXPECT_EQ(manager().activeKinds(), Kinds{Kind::system});
    EXPECT_EQ(manager().expiresAt(), in(24h));
    machine.advance(24h - 1ms);
    EXPECT_EQ(manager().activeKinds(), Kinds{Kind::system});
    machine.advance(1ms);
    EXPECT_TRUE(machine.isIdle());
    EXPECT_EQ(machine.posted(finished), 1U);
}

TEST_F(SessionToggle, OfAnotherKindKeepsTheEnd) {
    manager().toggle(Kind::system);
    const std::optional<WallTime> end = manager().expiresAt();
    machine.advance(1h);
    manager().toggle(Kind::display);
    EXPECT_EQ(manager().activeKinds(), (Kinds{Kind::system, Kind::display}));
    EXPECT_EQ(manager().expiresAt(), end);
    manager().toggle(Kind::system);
    EXPECT_EQ(manager().activeKinds(), Kinds{Kind::display});
    EXPECT_EQ(manager().expiresAt(), end);
}

TEST_F(SessionToggle, OfTheLastKindEndsTheSession) {
    manager().toggle(Kind::system);
    manager().toggle(Kind::display);
    manager().toggle(Kind::display);
    manager().toggle(Kind::system);
    EXPECT_TRUE(machine.isIdle());
    EXPECT_TRUE(machine.power.held().empty());
    machine.advance(25h);
    EXPECT_EQ(machine.posted(finished), 0U);
}

TEST_F(SessionToggle, TakesTheAssertionAnewAfterItWasReleased) {
    manager().toggle(Kind::network);
    manager().toggle(Kind::network);
    manager().toggle(Kind::network);
    EXPECT_EQ(machine.power.taken(), 2U);
    EXPECT_EQ(machine.power.held().size(), 1U);
}

TEST_F(SessionToggle, KeepsTheEndThatWasChosen) {
    manager().apply({Kind::system}, in(30min));
    const std::optional<WallTime> end = manager().expiresAt();
    manager().toggle(Kind::network);
    EXPECT_EQ(manager().expiresAt(), end);
    machine.advance(30min);
    EXPECT_TRUE(machine.isIdle());
}

TEST_F(SessionToggle, GivesASessionWithoutEndTheEndOfADay) {
    manager().apply({Kind::system}, std::nullopt);
    machine.advance(3h);
    manager().toggle(Kind::display);
    EXPECT_EQ(manager().expiresAt(), in(24h));
}

TEST_F(SessionToggle, OfARefusedKindIsNoSession) {
    machine.power.refuse(PowerAssertions::preventUserIdleSystemSleep);
    manager().toggle(Kind::system);
    EXPECT_TRUE(machine.isIdle());
    EXPECT_EQ(machine.center.foregroundRequests(), 0);
}

TEST_F(SessionToggle, OfARefusedKindLeavesASessionAsItIs) {
    manager().apply({Kind::display}, in(1h));
    machine.power.refuse(PowerAssertions::preventUserIdleSystemSleep);
    manager().toggle(Kind::system);
    EXPECT_EQ(manager().activeKinds(), Kinds{Kind::display});
    EXPECT_EQ(manager().expiresAt(), in(1h));
}

}  // namespace
}  // namespace corvane
