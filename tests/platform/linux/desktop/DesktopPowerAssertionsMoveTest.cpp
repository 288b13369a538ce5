#include <gmock/gmock.h>

#include "tests/platform/linux/desktop/DesktopPowerAssertionsTest.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;

TEST_F(DesktopPowerAssertionsTest, AreTakenAgainFromAServiceThatComesUpAnew) {
    std::optional<FakeInhibitor> gnome(std::in_place, sessionBus->address(), FakeInhibitor::sessionManager);
    begin();
    const auto id = create(systemSleep, "no sleep");
    ASSERT_TRUE(gnome->comesToHold({"de.tavrin.corvane|0|no sleep|4"}));
    gnome.reset();
    EXPECT_TRUE(locksBecome({"idle|Corvane|no sleep|block"}));
    gnome.emplace(sessionBus->address(), FakeInhibitor::sessionManager);
    EXPECT_TRUE(gnome->comesToHold({"de.tavrin.corvane|0|no sleep|4"}));
    EXPECT_TRUE(locksBecome({}));
    release(id);
    EXPECT_TRUE(gnome->comesToHold({}));
    EXPECT_EQ(gnome->mistaken(), 0U);
}

TEST_F(DesktopPowerAssertionsTest, MoveToABetterServiceAndLeaveTheFormerOnlyThen) {
    const FakeInhibitor xfce(sessionBus->address(), FakeInhibitor::powerManagement);
    begin();
    create(displaySleep, "no dark");
    ASSERT_TRUE(xfce.comesToHold({"Corvane|no dark"}));
    FakeInhibitor gnome(sessionBus->address(), FakeInhibitor::sessionManager, Manner::later);
    ASSERT_TRUE(gnome.requests().waitFor(1));
    settle();
    EXPECT_EQ(xfce.held().size(), 1U) << "the new one has not agreed yet";
    gnome.answerNow();
    EXPECT_TRUE(xfce.comesToHold({}));
    EXPECT_TRUE(gnome.comesToHold({"de.tavrin.corvane|0|no dark|8"}));
    EXPECT_THAT(logind->locks().all(), IsEmpty());
}

TEST_F(DesktopPowerAssertionsTest, MoveToWhatRemainsWhenAServiceGoes) {
    std::optional<FakeInhibitor> gnome(std::in_place, sessionBus->address(), FakeInhibitor::sessionManager);
    const FakeInhibitor xfce(sessionBus->address(), FakeInhibitor::powerManagement);
    begin();
    create(systemSleep, "no sleep");
    ASSERT_TRUE(gnome->comesToHold({"de.tavrin.corvane|0|no sleep|4"}));
    gnome.reset();
    EXPECT_TRUE(xfce.comesToHold({"Corvane|no sleep"}));
}

TEST_F(DesktopPowerAssertionsTest, AreTakenAgainFromALoginManagerThatComesUpAnew) {
    begin();
    const auto id = create(systemSleep, "no sleep");
    ASSERT_TRUE(logind->locks().waitFor(1));
    logind.reset();
    logind.emplace(systemBus->address());
    EXPECT_TRUE(locksBecome({"idle|Corvane|no sleep|block"}));
    release(id);
    EXPECT_TRUE(locksBecome({}));
}

TEST_F(DesktopPowerAssertionsTest, GoToTheLoginManagerWhenTheSessionBusHasGoneAwayAndReturnWithIt) {
    std::optional<FakeInhibitor> gnome(std::in_place, sessionBus->address(), FakeInhibitor::sessionManager);
    begin({.answers = testPatience, .retry = 10ms});
    create(systemSleep, "no sleep");
    ASSERT_TRUE(gnome->comesToHold({"de.tavrin.corvane|0|no sleep|4"}));
    gnome.reset();
    sessionBus->end();
    EXPECT_TRUE(locksBecome({"idle|Corvane|no sleep|block"}));
    EXPECT_TRUE(becomes([&] { return log.count("the session bus cannot be used") >= 2; }))
        << "lost, then not found";

    PrivateBus another;
    ASSERT_EQ(another.problem(), std::nullopt);
    gnome.emplace(another.address(), FakeInhibitor::sessionManager);
    sessionThread.post(
        [&] { sessionAddress.emplace("DBUS_SESSION_BUS_ADDRESS", another.address().c_str()); });
    EXPECT_TRUE(gnome->comesToHold({"de.tavrin.corvane|0|no sleep|4"}));
    EXPECT_TRUE(locksBecome({}));
    EXPECT_LE(log.count("the session bus cannot be used"), 3U) << "each way it fails in is told of once";
    end();
    gnome.reset();
}

TEST_F(DesktopPowerAssertionsTest, KeepTheLoginManagersLocksWhenTheSystemBusHasGoneAway) {
    begin();
    const auto id = create(systemSleep, "no sleep");
    create(systemSleep, "another");
    // One at a time: the first was answered when the second is asked for.
    ASSERT_TRUE(logind->locks().waitFor(2));
    const FakeLogind::Lock lock = logind->locks().all().front();
    logind.reset();
    systemBus->end();
    EXPECT_TRUE(becomes([&] { return log.count("the system bus cannot be used") == 1; }));
    EXPECT_TRUE(FakeLogind::isHeld(lock, 0));
    release(id);
    EXPECT_FALSE(FakeLogind::isHeld(lock, static_cast<int>(std::chrono::milliseconds(testPatience).count())));
}

}  // namespace
}  // namespace corvane
