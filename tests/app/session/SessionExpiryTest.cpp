#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/app/session/SessionMachine.h"

namespace corvane {
namespace {

using testing::IsEmpty;

class SessionExpiry : public SessionTest {
protected:
    void expectEndedOnce() {
        EXPECT_TRUE(machine.isIdle());
        EXPECT_TRUE(machine.power.held().empty());
        machine.advance(24h);
        EXPECT_EQ(machine.posted(finished), 1U);
    }
    void expectGoingOn() {
        EXPECT_EQ(manager().activeKinds(), Kinds{Kind::system});
        EXPECT_EQ(machine.posted(finished), 0U);
    }
};

TEST_F(SessionExpiry, ReleasesEverythingAtTheEnd) {
    manager().apply({Kind::system}, in(2h));
    machine.advance(2h - 1ms);
    expectGoingOn();
    machine.advance(1ms);
    expectEndedOnce();
}

TEST_F(SessionExpiry, SaysSoInTheUsersLanguage) {
    manager().apply({Kind::system}, in(1min));
    machine.advance(1min);
    machine.locale.prefer({"de-DE"});
    manager().apply({Kind::system}, in(1min));
    machine.advance(1min);
    ASSERT_EQ(machine.center.posted().size(), 2U);
    EXPECT_EQ(machine.center.posted()[0].title, "Keep-awake finished");
    EXPECT_EQ(machine.center.posted()[0].body,
              "The timer ended — your Mac is back to its normal sleep behaviour.");
    EXPECT_EQ(machine.center.posted()[1].title, "Wach-Session beendet");
    EXPECT_EQ(machine.center.posted()[1].body,
              "Der Timer ist abgelaufen — dein Mac kehrt zum normalen Energieverhalten zurück.");
}

TEST_F(SessionExpiry, ComesAfterHalfASecondForADateInThePast) {
    manager().apply({Kind::system}, in(-1h));
    EXPECT_EQ(manager().expiresAt(), in(-1h));
    EXPECT_EQ(manager().remainingText(), "0:00");
    machine.advance(499ms);
    expectGoingOn();
    machine.advance(1ms);
    expectEndedOnce();
}

TEST_F(SessionExpiry, ComesAfterHalfASecondAtTheEarliest) {
    for (const Duration soon : {Duration(0), Duration(200ms), Duration(500ms)}) {
        manager().apply({Kind::system}, in(soon));
        machine.advance(499ms);
        EXPECT_EQ(manager().activeKinds(), Kinds{Kind::system});
        machine.advance(1ms);
        EXPECT_TRUE(machine.isIdle());
    }
    manager().apply({Kind::system}, in(501ms));
    machine.advance(500ms);
    EXPECT_EQ(manager().activeKinds(), Kinds{Kind::system});
    machine.advance(1ms);
    EXPECT_TRUE(machine.isIdle());
}

TEST_F(SessionExpiry, AsksForThePermissionToPostWhenItIsScheduled) {
    machine.center.setAuthorization(NotificationAuthorization::notDetermined);
    manager().apply({Kind::system}, in(1h));
    machine.settle();
    EXPECT_EQ(machine.center.authorizationRequests(), 1);
}

TEST_F(SessionExpiry, ReleasesEverythingWhenNothingMayBePosted) {
    machine.center.setAuthorization(NotificationAuthorization::denied);
    manager().apply({Kind::system}, in(1h));
    machine.advance(1h);
    EXPECT_TRUE(machine.isIdle());
    EXPECT_THAT(machine.center.posted(), IsEmpty());
}

TEST_F(SessionExpiry, ReplacesTheOneScheduledBefore) {
    manager().apply({Kind::system}, in(10min));
    manager().scheduleExpiry(in(20min));
    machine.advance(10min);
    expectGoingOn();
    machine.advance(10min);
    expectEndedOnce();
}

TEST_F(SessionExpiry, CancelledLeavesTheSessionWithoutEnd) {
    manager().apply({Kind::system}, in(10min));
    manager().cancelExpiry();
    EXPECT_EQ(manager().expiresAt(), std::nullopt);
    machine.advance(24h);
    expectGoingOn();
}

TEST_F(SessionExpiry, IsDroppedWithASessionThatTheUserStops) {
    manager().apply({Kind::system, Kind::network}, in(10min));
    manager().stopSession();
    EXPECT_TRUE(machine.isIdle());
    EXPECT_TRUE(machine.power.held().empty());
    machine.advance(1h);
    EXPECT_THAT(machine.center.posted(), IsEmpty());
}

TEST_F(SessionExpiry, FollowsAClockThatIsSetForward) {
    manager().apply({Kind::system}, in(2h));
    machine.setClock(in(90min));
    machine.advance(30min - 1ms);
    expectGoingOn();
    machine.advance(1ms);
    expectEndedOnce();
}

TEST_F(SessionExpiry, ComesAtOnceWhenTheClockIsSetBeyondIt) {
    manager().apply({Kind::system}, in(2h));
    machine.advance(1min);
    machine.setClock(in(3h));
    expectEndedOnce();
}

TEST_F(SessionExpiry, FollowsAClockThatIsSetBack) {
    manager().apply({Kind::system}, in(2h));
    machine.advance(1h);
    machine.setClock(in(-1h));
    machine.advance(1s);
    EXPECT_EQ(manager().remainingText(), "1:59:59");
    machine.advance(2h - 1s - 1ms);
    expectGoingOn();
    machine.advance(1ms);
    expectEndedOnce();
}

TEST_F(SessionExpiry, ComesOnceWhenTheComputerWakesUpBehindIt) {
    manager().apply({Kind::system}, in(2h));
    machine.helper.time.suspend(5h);
    EXPECT_EQ(manager().activeKinds(), Kinds{Kind::system});
    machine.settle();
    expectEndedOnce();
}

TEST_F(SessionExpiry, ComesAtItsTimeAfterASuspendBeforeIt) {
    manager().apply({Kind::system}, in(2h));
    machine.helper.time.suspend(90min);
    machine.settle();
    expectGoingOn();
    EXPECT_EQ(manager().remainingText(), "30:00");
    machine.advance(30min - 1ms);
    expectGoingOn();
    machine.advance(1ms);
    expectEndedOnce();
}

TEST_F(SessionExpiry, CanBeFollowedByAnotherSession) {
    manager().apply({Kind::system}, in(1min));
    machine.advance(1min);
    manager().apply({Kind::display}, in(1min));
    EXPECT_EQ(manager().activeKinds(), Kinds{Kind::display});
    machine.advance(1min);
    EXPECT_TRUE(machine.isIdle());
    EXPECT_EQ(machine.posted(finished), 2U);
}

TEST_F(SessionExpiry, MayBeScheduledAnewByWhomItIsAnnouncedTo) {
    bool again = true;
    QObject::connect(&manager(), &SleepManager::expiresAtChanged, [&] {
        if (again && !manager().expiresAt()) {
            again = false;
            manager().apply({Kind::display}, in(1min));
        }
    });
    manager().apply({Kind::system}, in(1min));
    machine.advance(1min);
    EXPECT_EQ(manager().activeKinds(), Kinds{Kind::display});
    machine.advance(1min);
    EXPECT_TRUE(machine.isIdle());
    EXPECT_EQ(machine.posted(finished), 2U);
}

TEST_F(SessionExpiry, IsDroppedWithTheManager) {
    manager().apply({Kind::system}, in(10min));
    machine.manager.reset();
    machine.advance(1h);
    EXPECT_THAT(machine.center.posted(), IsEmpty());
}

}  // namespace
}  // namespace corvane
