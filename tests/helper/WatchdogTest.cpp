#include "tests/helper/HelperMachine.h"
#include "tests/helper/daemonLines.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto silent = "Corvane daemon: WATCHDOG — app silent, releasing fans to Apple";
constexpr auto clearing = "Corvane daemon: WATCHDOG — app silent, clearing lid-stay-awake";

/// A machine whose application boosts at `contact`; the watchdog looks every 2 s from 0 on.
struct BoostedAt {
    explicit BoostedAt(Duration contact) {
        machine.startAt(60.0F);
        machine.advance(contact);
        machine.setFloor(30.0);
        machine.forget();
    }
    HelperMachine machine;
};

TEST(Watchdog, AllowsExactlySixSecondsOfSilence) {
    BoostedAt boosted(2s);
    boosted.machine.advance(6s);
    EXPECT_EQ(boosted.machine.now(), 8s);
    EXPECT_TRUE(boosted.machine.mac.isFanForced(0));
    EXPECT_EQ(boosted.machine.log.count("WATCHDOG"), 0U);
    boosted.machine.advance(2s);
    EXPECT_FALSE(boosted.machine.mac.isFanForced(0));
    EXPECT_THAT(boosted.machine.timesOf("F0Md=0"), ElementsAre(10s));
}

TEST(Watchdog, ReleasesAtTheFirstLookAfterMoreThanSixSeconds) {
    BoostedAt boosted(1999ms);
    boosted.machine.advance(6000ms);
    EXPECT_TRUE(boosted.machine.mac.isFanForced(0));
    boosted.machine.advance(1ms);
    EXPECT_FALSE(boosted.machine.mac.isFanForced(0));
    EXPECT_EQ(boosted.machine.log.count(silent), 1U);
}

TEST(Watchdog, ReleasesBetweenSixAndEightSecondsAfterAnyLastContact) {
    for (Duration contact = 0ms; contact < 2s; contact += 50ms) {
        BoostedAt boosted(contact);
        boosted.machine.advance(9s);
        const auto releases = boosted.machine.timesOf("F0Md=0");
        ASSERT_EQ(releases.size(), 1U);
        EXPECT_GT(releases[0] - contact, 6s);
        EXPECT_LE(releases[0] - contact, 8s);
    }
}

TEST(Watchdog, SaysWhyItReleases) {
    BoostedAt boosted(0s);
    boosted.machine.advance(8s);
    EXPECT_THAT(boosted.machine.log.lines(),
                ElementsAre("Corvane daemon: #20 Ftst=0 temp=60° floor=30% eff=30% F0:Md=0,Tg=2200/0", silent,
                            released));
    EXPECT_FALSE(boosted.machine.isBoosted());
}

TEST(Watchdog, IsKeptQuietByAnyOperation) {
    const std::vector<std::function<void(HelperMachine&)>> operations{
        [](HelperMachine& machine) { machine.ping(); },
        [](HelperMachine& machine) { static_cast<void>(machine.status()); },
        [](HelperMachine& machine) { machine.setFloor(40.0); },
        [](HelperMachine& machine) { machine.setLid(false); },
    };
    for (std::size_t i = 0; i < operations.size(); ++i) {
        BoostedAt boosted(0s);
        for (int contact = 0; contact < 10; ++contact) {
            boosted.machine.advance(5900ms);
            operations[i](boosted.machine);
        }
        EXPECT_TRUE(boosted.machine.mac.isFanForced(0)) << i;
        EXPECT_EQ(boosted.machine.log.count("WATCHDOG"), 0U) << i;
        boosted.machine.advance(8s);
        EXPECT_FALSE(boosted.machine.mac.isFanForced(0)) << i;
    }
}

TEST(Watchdog, CountsAStoppedBoostAsContact) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.setLid(true);
    machine.advance(5900ms);
    machine.stopBoost();
    machine.advance(4s);
    EXPECT_TRUE(machine.sleepSetting.isSleepDisabled());
    machine.advance(4s);
    EXPECT_FALSE(machine.sleepSetting.isSleepDisabled());
}

TEST(Watchdog, ClearsFansThenLid) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.setFloor(30.0);
    machine.setLid(true);
    machine.advance(7999ms);
    machine.forget();
    machine.advance(1ms);
    EXPECT_THAT(machine.log.lines(), ElementsAre(silent, released, clearing));
    EXPECT_THAT(machine.sleepSetting.calls(), ElementsAre(true, false));
    EXPECT_FALSE(*machine.status().get<bool>(StatusKey::lidStayAwake));
}

TEST(Watchdog, ClearsALidHeldWithoutABoost) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.setLid(true);
    machine.forget();
    machine.advance(8s);
    EXPECT_THAT(machine.log.lines(), ElementsAre(clearing));
    EXPECT_THAT(machine.writtenTexts(), IsEmpty()) << "no fan was held";
}

TEST(Watchdog, StaysQuietOnceEverythingIsReleased) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.setFloor(30.0);
    machine.setLid(true);
    machine.advance(8s);
    machine.forget();
    machine.advance(10min);
    EXPECT_THAT(machine.log.lines(), IsEmpty());
    EXPECT_THAT(machine.writtenTexts(), IsEmpty());
    EXPECT_THAT(machine.sleepSetting.calls(), ElementsAre(true, false));
}

TEST(Watchdog, IsSilentWithAnIdleHelper) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.advance(1h);
    EXPECT_THAT(machine.log.lines(), IsEmpty());
    EXPECT_THAT(machine.writtenTexts(), IsEmpty());
}

TEST(Watchdog, ReportsALidThatCannotBeSwitchedBackAndLetsItBe) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.setLid(true);
    machine.forget();
    machine.sleepSetting.failWith("no way");
    machine.advance(1min);
    EXPECT_THAT(machine.log.lines(),
                ElementsAre(clearing, "Corvane daemon: pmset disablesleep failed: no way"));
}

TEST(Watchdog, CountsTheTimeTheComputerSlept) {
    BoostedAt boosted(0s);
    boosted.machine.advance(1s);
    boosted.machine.time.suspend(1h);
    boosted.machine.time.settle();
    EXPECT_FALSE(boosted.machine.mac.isFanForced(0));
    EXPECT_EQ(boosted.machine.log.count(silent), 1U);
}

TEST(Watchdog, DoesNotCareAboutTheCalendar) {
    BoostedAt boosted(0s);
    boosted.machine.time.setWallTime(boosted.machine.time.wallTime() - 24h);
    boosted.machine.advance(8s);
    EXPECT_FALSE(boosted.machine.mac.isFanForced(0));

    BoostedAt other(0s);
    other.machine.time.setWallTime(other.machine.time.wallTime() + 24h);
    other.machine.advance(6s);
    EXPECT_TRUE(other.machine.mac.isFanForced(0));
}

TEST(Watchdog, ANewBoostWorksAfterItReleased) {
    BoostedAt boosted(0s);
    boosted.machine.advance(20s);
    boosted.machine.forget();
    boosted.machine.setFloor(50.0);
    boosted.machine.advance(4s);
    EXPECT_TRUE(boosted.machine.mac.isFanForced(0));
    EXPECT_EQ(boosted.machine.log.count(loopStarted), 1U);
}

TEST(Watchdog, ReleasesAStuckFanOnceAndThenLeavesItToTheFirmware) {
    BoostedAt boosted(0s);
    boosted.machine.mac.setFault("F0Md", KeyFault::neverAutomatic(1));
    boosted.machine.advance(1min);
    EXPECT_EQ(boosted.machine.log.count("WATCHDOG"), 1U);
    EXPECT_EQ(boosted.machine.log.count("WARNING — could not verify auto mode"), 1U);
    EXPECT_THAT(boosted.machine.timesOf("F0Md=0"), ElementsAre(8000ms, 8120ms, 8240ms, 8360ms, 8480ms));
}

}  // namespace
}  // namespace corvane
