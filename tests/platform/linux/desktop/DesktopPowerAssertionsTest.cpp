#include "tests/platform/linux/desktop/DesktopPowerAssertionsTest.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

namespace corvane {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;

TEST_F(DesktopPowerAssertionsTest, AreTheSessionManagersWhereThereIsOne) {
    const FakeInhibitor gnome(sessionBus->address(), FakeInhibitor::sessionManager);
    const FakeInhibitor xfce(sessionBus->address(), FakeInhibitor::powerManagement);
    begin();
    const auto system = create(systemSleep, "no sleep");
    const auto display = create(displaySleep, "no dark");
    ASSERT_TRUE(gnome.comesToHold({"de.tavrin.corvane|0|no sleep|4", "de.tavrin.corvane|0|no dark|8"}));
    release(system);
    EXPECT_TRUE(gnome.comesToHold({"de.tavrin.corvane|0|no dark|8"}));
    release(display);
    EXPECT_TRUE(gnome.comesToHold({}));
    EXPECT_EQ(gnome.released(), 2U);
    EXPECT_THAT(xfce.requests().all(), IsEmpty());
    EXPECT_THAT(logind->locks().all(), IsEmpty()) << "one service at a time";
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(DesktopPowerAssertionsTest, AreDividedBetweenTwoServicesUnderKde) {
    const FakeInhibitor kde(sessionBus->address(), FakeInhibitor::kdePower);
    const FakeInhibitor powerManagement(sessionBus->address(), FakeInhibitor::powerManagement);
    const FakeInhibitor screenSaver(sessionBus->address(), FakeInhibitor::screenSaver);
    begin();
    create(systemSleep, "no sleep");
    create(displaySleep, "no dark");
    EXPECT_TRUE(powerManagement.comesToHold({"Corvane|no sleep"}));
    EXPECT_TRUE(screenSaver.comesToHold({"Corvane|no dark"}));
}

TEST_F(DesktopPowerAssertionsTest, AreThePowerManagersUnderXfce) {
    const FakeInhibitor xfce(sessionBus->address(), FakeInhibitor::powerManagement);
    begin();
    create(systemSleep, "no sleep");
    create(displaySleep, "no dark");
    EXPECT_TRUE(xfce.comesToHold({"Corvane|no sleep", "Corvane|no dark"}));
}

TEST_F(DesktopPowerAssertionsTest, OfAPowerManagerHaveAConnectionEachWhichEndsWithThem) {
    const FakeInhibitor xfce(sessionBus->address(), FakeInhibitor::powerManagement);
    begin();
    const auto one = create(systemSleep, "one");
    create(displaySleep, "two");
    ASSERT_TRUE(xfce.comesToHold({"Corvane|one", "Corvane|two"}));
    EXPECT_EQ(xfce.callers().size(), 2U) << "not all forget every hold of a connection that ends";
    release(one);
    EXPECT_TRUE(xfce.comesToHold({"Corvane|two"}));
    end();
    EXPECT_TRUE(xfce.comesToHold({}));
}

TEST_F(DesktopPowerAssertionsTest, AreTheLoginManagersOtherwise) {
    begin();
    const auto system = create(systemSleep, "no sleep");
    const auto display = create(displaySleep, "no dark");
    EXPECT_TRUE(locksBecome({"idle|Corvane|no sleep|block", "idle|Corvane|no dark|block"}));
    release(display);
    EXPECT_TRUE(locksBecome({"idle|Corvane|no sleep|block"}));
    release(system);
    EXPECT_TRUE(locksBecome({}));
    EXPECT_EQ(logind->locks().size(), 2U);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(DesktopPowerAssertionsTest, KeepTheSystemAwakeAgainForTheNetwork) {
    const FakeInhibitor gnome(sessionBus->address(), FakeInhibitor::sessionManager);
    begin();
    create(systemSleep, "no sleep");
    create(PowerAssertions::networkClientActive, "reachable");
    EXPECT_TRUE(gnome.comesToHold({"de.tavrin.corvane|0|no sleep|4", "de.tavrin.corvane|0|reachable|4"}));
}

TEST_F(DesktopPowerAssertionsTest, AreNoneOfATypeThereIsNot) {
    begin();
    EXPECT_EQ(create("PreventEverything", "why"), std::nullopt);
    EXPECT_EQ(create("", "why"), std::nullopt);
    settle();
    EXPECT_THAT(logind->locks().all(), IsEmpty());
}

TEST_F(DesktopPowerAssertionsTest, AreNoneOnceItIsKnownThatThereIsNobodyToAsk) {
    logind.reset();
    begin();
    EXPECT_EQ(create(systemSleep, "no sleep"), std::nullopt);
    EXPECT_EQ(log.count("there is no service that could be asked"), 1U);
    logind.emplace(systemBus->address());
    std::optional<Id> id;
    EXPECT_TRUE(becomes([&] {
        id = id ? id : create(systemSleep, "no sleep");
        return id.has_value();
    }));
    EXPECT_TRUE(locksBecome({"idle|Corvane|no sleep|block"}));
}

TEST_F(DesktopPowerAssertionsTest, GoToTheLoginManagerWhileTheSessionBusHangs) {
    sessionBus->freeze();
    beginUnknowing();
    // The answers come at once, though nobody has agreed to anything yet.
    const auto first = create(systemSleep, "first");
    const auto second = create(systemSleep, "second");
    release(first);
    EXPECT_NE(second, first);
    ASSERT_TRUE(logind->locks().waitFor(1));
    // The bus thread of the session is still waiting.
    sessionBus->end();
    EXPECT_TRUE(locksBecome({"idle|Corvane|second|block"}));
}

TEST_F(DesktopPowerAssertionsTest, GoToTheLoginManagerWhenTheSessionsServiceRefuses) {
    for (const Manner manner : {Manner::withErrors, Manner::withNonsense}) {
        SCOPED_TRACE(static_cast<int>(manner));
        const FakeInhibitor gnome(sessionBus->address(), FakeInhibitor::sessionManager, manner);
        begin();
        create(systemSleep, "one");
        create(systemSleep, "two");
        EXPECT_TRUE(locksBecome({"idle|Corvane|one|block", "idle|Corvane|two|block"}));
        EXPECT_EQ(gnome.requests().size(), 2U) << "it is asked once for each";
        EXPECT_EQ(log.count("org.gnome.SessionManager refuses"), 1U);
        EXPECT_EQ(log.lines().size(), 1U);
        log.clear();
        end();
        EXPECT_TRUE(becomes([&] { return locks().empty(); }));
        logind.emplace(systemBus->address());
    }
}

TEST_F(DesktopPowerAssertionsTest, GoToAServiceThatRefusedAtFirstOnceItIsReady) {
    FakeInhibitor xfce(sessionBus->address(), FakeInhibitor::powerManagement, Manner::withErrors);
    begin({.answers = testPatience, .retry = testPatience, .again = 20ms});
    create(systemSleep, "one");
    create(displaySleep, "two");
    EXPECT_TRUE(locksBecome({"idle|Corvane|one|block", "idle|Corvane|two|block"}));
    xfce.changeManner(Manner::well);
    EXPECT_TRUE(xfce.comesToHold({"Corvane|one", "Corvane|two"}));
    EXPECT_TRUE(becomes([&] { return locks().empty(); }));
    EXPECT_EQ(log.count("org.freedesktop.PowerManagement refuses"), 1U);
}

TEST_F(DesktopPowerAssertionsTest, AskAServiceThatGoesOnRefusingAFewTimesAndNoMore) {
    const FakeInhibitor gnome(sessionBus->address(), FakeInhibitor::sessionManager, Manner::withErrors);
    begin({.answers = testPatience, .retry = testPatience, .again = 1ms});
    create(systemSleep, "no sleep");
    ASSERT_TRUE(gnome.requests().waitFor(1 + InhibitLink::mostRepeats));
    // Another hold is asked for all the same, once.
    create(systemSleep, "another");
    ASSERT_TRUE(gnome.requests().waitFor(2 + InhibitLink::mostRepeats));
    EXPECT_TRUE(locksBecome({"idle|Corvane|no sleep|block", "idle|Corvane|another|block"}));
    EXPECT_EQ(gnome.requests().size(), 2U + InhibitLink::mostRepeats);
}

TEST_F(DesktopPowerAssertionsTest, GoToTheLoginManagerWhenTheSessionsServiceDoesNotAnswer) {
    FakeInhibitor gnome(sessionBus->address(), FakeInhibitor::sessionManager, Manner::later);
    begin({.answers = 50ms, .retry = testPatience, .again = 20ms});
    create(systemSleep, "no sleep");
    EXPECT_TRUE(locksBecome({"idle|Corvane|no sleep|block"}));
    EXPECT_EQ(log.count("org.gnome.SessionManager does not answer"), 1U);
    // It is asked again from time to time. What it took meanwhile was for connections that are no more.
    ASSERT_TRUE(gnome.requests().waitFor(3));
    EXPECT_EQ(log.lines().size(), 1U);
    gnome.answerNow();
    EXPECT_TRUE(becomes([&] { return locks().empty(); }));
    EXPECT_TRUE(gnome.comesToHold({"de.tavrin.corvane|0|no sleep|4"}));
}

TEST_F(DesktopPowerAssertionsTest, HoldNothingWhenAReleaseOvertakesTheAnswer) {
    FakeInhibitor gnome(sessionBus->address(), FakeInhibitor::sessionManager, Manner::later);
    begin();
    const auto id = create(systemSleep, "no sleep");
    ASSERT_TRUE(gnome.requests().waitFor(1));
    release(id);
    settle();
    EXPECT_EQ(gnome.held().size(), 1U);
    gnome.answerNow();
    EXPECT_TRUE(gnome.comesToHold({}));
    EXPECT_EQ(gnome.released(), 1U);
    EXPECT_EQ(gnome.mistaken(), 0U);
}

TEST_F(DesktopPowerAssertionsTest, AreNotInheritedByAProgramThatIsStarted) {
    begin();
    const auto id = create(systemSleep, "no sleep");
    create(systemSleep, "another");
    // One at a time: the first was answered when the second is asked for.
    ASSERT_TRUE(logind->locks().waitFor(2));
    const PrivateBus program;
    release(id);
    EXPECT_TRUE(logind->waitForRelease(0));
}

TEST_F(DesktopPowerAssertionsTest, EndRightAfterThousandsOfThem) {
    FakeInhibitor gnome(sessionBus->address(), FakeInhibitor::sessionManager, Manner::later);
    begin();
    constexpr int many = 5000;
    mainLoop.sync([&] {
        for (int i = 0; i < many; ++i) {
            const auto id = power->create(systemSleep, fmt::format("{}", i));
            ASSERT_TRUE(id);
            power->release(*id);
        }
    });
    const auto last = create(systemSleep, "last");
    gnome.answerNow();
    EXPECT_TRUE(gnome.comesToHold({"de.tavrin.corvane|0|last|4"}));
    EXPECT_LE(gnome.requests().size(), 10U) << "what is released before its turn is never asked for";
    release(last);
    EXPECT_TRUE(gnome.comesToHold({}));
    EXPECT_TRUE(locksBecome({}));
}

TEST_F(DesktopPowerAssertionsTest, MayBeManyAtOnce) {
    const FakeInhibitor xfce(sessionBus->address(), FakeInhibitor::powerManagement);
    begin();
    std::vector<std::string> expected;
    for (int i = 0; i < 200; ++i) {
        create(systemSleep, "same");
        expected.emplace_back("Corvane|same");
    }
    EXPECT_TRUE(xfce.comesToHold(expected));
}

TEST_F(DesktopPowerAssertionsTest, LetGoOfEverythingWhenTheyGo) {
    const FakeInhibitor kde(sessionBus->address(), FakeInhibitor::kdePower);
    const FakeInhibitor powerManagement(sessionBus->address(), FakeInhibitor::powerManagement);
    begin();
    create(systemSleep, "no sleep");
    create(displaySleep, "no dark");
    ASSERT_TRUE(powerManagement.comesToHold({"Corvane|no sleep"}));
    ASSERT_TRUE(locksBecome({"idle|Corvane|no dark|block"}));
    end();
    EXPECT_TRUE(powerManagement.comesToHold({}));
    EXPECT_TRUE(logind->waitForRelease(0));
}

TEST_F(DesktopPowerAssertionsTest, PassOverTheReleaseOfWhatThereIsNot) {
    begin();
    const auto id = create(systemSleep, "no sleep");
    release(*id + 1);
    ASSERT_TRUE(logind->locks().waitFor(1));
    release(id);
    release(id);
    EXPECT_TRUE(locksBecome({}));
}

}  // namespace
}  // namespace corvane
