#include "tests/helper/HelperMachine.h"
#include "tests/helper/daemonLines.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto unverified =
    "Corvane daemon: WARNING — could not verify auto mode after retries; loop is stopped so firmware will "
    "reclaim shortly";

/// A boost of 30 % at 60 degrees, whose writes and lines so far are forgotten.
void boost(HelperMachine& machine) {
    machine.startAt(60.0F);
    machine.setFloor(30.0);
    machine.forget();
}

TEST(Release, ClearsTargetAndModeOfEachFanThenTheForceSwitch) {
    HelperMachine machine(twoFanMac());
    boost(machine);
    machine.stopBoost();
    EXPECT_THAT(machine.writtenTexts(), ElementsAre("F0Tg=0", "F0Md=0", "F1Tg=0", "F1Md=0", "Ftst=0"));
    EXPECT_THAT(machine.log.lines(), ElementsAre(released));
    EXPECT_FALSE(machine.mac.isAnyFanForced());
}

TEST(Release, TakesNoTimeWhenItIsVerifiedAtOnce) {
    HelperMachine machine(twoFanMac());
    boost(machine);
    machine.stopBoost();
    EXPECT_EQ(machine.now(), 0ms);
}

TEST(Release, UsesTheMachinesOwnSpellingOfTheModeKey) {
    HelperMachine machine(lowerCaseMac());
    boost(machine);
    machine.mac.setFault("F0md", KeyFault::neverAutomatic(1));
    machine.stopBoost();
    EXPECT_EQ(machine.writtenTexts().at(1), "F0md=0");
    EXPECT_THAT(machine.log.lines(), ElementsAre(unverified)) << "that key is the one that is read back";
}

TEST(Release, TriesFiveTimesWithPausesThenWarns) {
    HelperMachine machine;
    boost(machine);
    machine.mac.setFault("F0Md", KeyFault::neverAutomatic(1));
    EXPECT_EQ(machine.stopBoost(), (Answer{true, "boost stopped"}));
    EXPECT_EQ(machine.now(), 600ms) << "a pause follows the fifth attempt too";
    EXPECT_THAT(machine.timesOf("F0Tg=0"), ElementsAre(0ms, 120ms, 240ms, 360ms, 480ms));
    EXPECT_THAT(machine.timesOf("F0Md=0"), ElementsAre(0ms, 120ms, 240ms, 360ms, 480ms));
    EXPECT_THAT(machine.timesOf("Ftst=0"), ElementsAre(0ms, 120ms, 240ms, 360ms, 480ms));
    EXPECT_EQ(machine.writes.size(), 15U);
    EXPECT_THAT(machine.log.lines(), ElementsAre(unverified));
    EXPECT_FALSE(machine.isBoosted());
}

TEST(Release, SaysWhichAttemptWasVerified) {
    struct Case {
        Duration recoversAfter;
        std::string line;
        Duration takes;
    };
    for (const Case& example :
         {Case{1ms, "Corvane daemon: released to Apple-auto (verified, attempt 2)", 120ms},
          Case{300ms, "Corvane daemon: released to Apple-auto (verified, attempt 4)", 360ms},
          Case{479ms, "Corvane daemon: released to Apple-auto (verified, attempt 5)", 480ms},
          Case{481ms, unverified, 600ms}}) {
        HelperMachine machine;
        VirtualQueue outside(machine.time);
        boost(machine);
        machine.mac.setFault("F0Md", KeyFault::neverAutomatic(1));
        const auto recovery = outside.after(example.recoversAfter, [&] { machine.mac.clearFaults(); });
        machine.stopBoost();
        EXPECT_THAT(machine.log.lines(), ElementsAre(example.line));
        EXPECT_EQ(machine.now(), example.takes);
    }
}

TEST(Release, LooksAtEveryFan) {
    for (const std::size_t stuck : {0U, 1U}) {
        HelperMachine machine(twoFanMac());
        boost(machine);
        machine.mac.setFault(fmt::format("F{}Md", stuck), KeyFault::neverAutomatic(1));
        machine.stopBoost();
        EXPECT_THAT(machine.log.lines(), ElementsAre(unverified)) << stuck;
        EXPECT_FALSE(machine.mac.isFanForced(1 - stuck)) << stuck;
        EXPECT_EQ(machine.timesOf("F0Md=0").size(), 5U) << "every attempt hands all fans back";
        EXPECT_EQ(machine.timesOf("F1Md=0").size(), 5U);
    }
}

TEST(Release, AcceptsNoModeButZero) {
    HelperMachine machine;
    boost(machine);
    machine.mac.setFault("F0Md", KeyFault::neverAutomatic(3));
    machine.stopBoost();
    EXPECT_THAT(machine.log.lines(), ElementsAre(unverified));
}

TEST(Release, CountsAModeThatCannotBeReadAsAutomatic) {
    HelperMachine machine;
    boost(machine);
    machine.mac.setFault("F0Md", KeyFault::readFails());
    machine.stopBoost();
    EXPECT_THAT(machine.log.lines(), ElementsAre(released));
    EXPECT_FALSE(machine.mac.isAnyFanForced());
}

TEST(Release, WarnsAboutAFanThatRefusesItsMode) {
    HelperMachine machine;
    boost(machine);
    machine.mac.setFault("F0Md", KeyFault::writeRefused());
    machine.stopBoost();
    EXPECT_THAT(machine.log.lines(), ElementsAre(unverified));
    EXPECT_EQ(machine.now(), 600ms);
    machine.mac.clearFaults();
    machine.log.clear();
    machine.stopBoost();
    EXPECT_THAT(machine.log.lines(), ElementsAre(released)) << "asking again tries again";
    EXPECT_FALSE(machine.mac.isAnyFanForced());
}

TEST(Release, SurvivesARefusedTargetAndForceSwitch) {
    HelperMachine machine;
    boost(machine);
    machine.mac.setFault("F0Tg", KeyFault::writeRefused());
    machine.mac.setFault("Ftst", KeyFault::writeRefused());
    machine.stopBoost();
    EXPECT_THAT(machine.log.lines(), ElementsAre(released));
    EXPECT_FALSE(machine.mac.isAnyFanForced());
}

TEST(Release, IsVerifiedAtOnceWithoutFans) {
    HelperMachine machine(macBookAir());
    machine.startAt(60.0F);
    machine.stopBoost();
    EXPECT_THAT(machine.log.lines(), ElementsAre(released));
    EXPECT_EQ(machine.now(), 0ms);
}

TEST(Release, RunsInFullEvenWhenNothingIsHeld) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.stopBoost();
    EXPECT_THAT(machine.writtenTexts(), ElementsAre("F0Tg=0", "F0Md=0", "Ftst=0"));
    EXPECT_THAT(machine.log.lines(), ElementsAre(released));
}

TEST(Release, LetsNoRequestInBetween) {
    HelperMachine machine;
    VirtualQueue outside(machine.time);
    boost(machine);
    machine.mac.setFault("F0Md", KeyFault::neverAutomatic(1));
    std::vector<std::pair<Duration, std::string>> replies;
    const auto request = outside.after(200ms, [&] {
        machine.service->setFanFloorWithPercentWithReply(
            50.0, [&](bool /*ok*/, const std::string& text) { replies.emplace_back(machine.now(), text); });
    });
    machine.stopBoost();
    EXPECT_THAT(replies, IsEmpty());
    machine.time.settle();
    EXPECT_THAT(replies, ElementsAre(std::pair<Duration, std::string>(600ms, "floor set to 50%")));
    EXPECT_TRUE(machine.isBoosted());
}

TEST(Release, LeavesAllStateAtRest) {
    HelperMachine machine;
    machine.startAt(90.0F);
    machine.setFloor(30.0);
    machine.stopBoost();
    const StatusRecord status = machine.status();
    EXPECT_FALSE(*status.get<bool>(StatusKey::isBoosted));
    EXPECT_FALSE(*status.get<bool>(StatusKey::thermalOverride));
    EXPECT_EQ(*status.get<double>(StatusKey::floorPercent), 0.0);
    EXPECT_EQ(*status.get<double>(StatusKey::effectivePercent), 0.0);
}

TEST(Release, InAnEmergencyHandsBackFansThenLid) {
    HelperMachine machine;
    boost(machine);
    machine.setLid(true);
    machine.sleepSetting.failWith("refused");
    machine.forget();
    machine.queue.sync([&] { machine.service->emergencyRelease(); });
    EXPECT_THAT(machine.log.lines(),
                ElementsAre(released, "Corvane daemon: pmset disablesleep failed: refused"));
    EXPECT_THAT(machine.sleepSetting.calls(), ElementsAre(true, false));
    EXPECT_FALSE(machine.mac.isAnyFanForced());
    EXPECT_FALSE(*machine.status().get<bool>(StatusKey::lidStayAwake));
}

TEST(Release, InAnEmergencyTouchesALidThatIsNotHeldNot) {
    HelperMachine machine;
    boost(machine);
    machine.queue.sync([&] { machine.service->emergencyRelease(); });
    EXPECT_THAT(machine.sleepSetting.calls(), IsEmpty());
}

TEST(Release, HappensBeforeTheComputerSleepsAndKeepsTheLid) {
    HelperMachine machine;
    boost(machine);
    machine.setLid(true);
    machine.forget();
    machine.queue.sync([&] { machine.service->releaseBeforeSuspend(); });
    EXPECT_THAT(machine.log.lines(),
                ElementsAre("Corvane daemon: system is going to sleep — releasing fans to Apple", released));
    EXPECT_FALSE(machine.mac.isAnyFanForced());
    EXPECT_TRUE(*machine.status().get<bool>(StatusKey::lidStayAwake));
    EXPECT_THAT(machine.sleepSetting.calls(), ElementsAre(true));
}

TEST(Release, BeforeSleepDoesNothingWhenNothingIsHeld) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.queue.sync([&] { machine.service->releaseBeforeSuspend(); });
    EXPECT_THAT(machine.writtenTexts(), IsEmpty());
    EXPECT_THAT(machine.log.lines(), IsEmpty());
}

TEST(Release, OutlastsRequestsThatArriveBetweenItAndTheSuspend) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.queue.syncAhead([&] { machine.service->releaseBeforeSuspend(); });
    EXPECT_EQ(machine.setFloor(40.0), (Answer{true, "floor set to 40%"}));
    machine.advance(2s);
    EXPECT_FALSE(machine.isBoosted());
    EXPECT_EQ(*machine.status().get<double>(StatusKey::floorPercent), 0.0) << "no floor is held";
    EXPECT_FALSE(machine.mac.isAnyFanForced());
}

TEST(Release, BeforeSleepEndsWithTheFloorThatWasAskedForMeanwhile) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.queue.syncAhead([&] { machine.service->releaseBeforeSuspend(); });
    machine.time.suspend(1h);
    machine.setFloor(40.0);
    machine.advance(1s);
    ASSERT_FALSE(machine.mac.isAnyFanForced());

    machine.queue.syncAhead([&] { machine.service->resumeAfterSuspend(); });
    EXPECT_TRUE(machine.isBoosted());
    EXPECT_TRUE(machine.mac.isAnyFanForced());
    EXPECT_EQ(*machine.status().get<double>(StatusKey::floorPercent), 40.0);
}

/// Neither shown nor held by a resume in the middle of contact.
void expectForgottenFloor(HelperMachine& machine) {
    EXPECT_EQ(*machine.status().get<double>(StatusKey::floorPercent), 0.0);
    machine.queue.syncAhead([&] { machine.service->releaseBeforeSuspend(); });
    machine.ping();
    machine.queue.syncAhead([&] { machine.service->resumeAfterSuspend(); });
    EXPECT_FALSE(machine.isBoosted());
    EXPECT_FALSE(machine.mac.isAnyFanForced());
}

TEST(Release, BeforeSleepForgetsAFloorWhoseClientWasNotHeardSince) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.queue.syncAhead([&] { machine.service->releaseBeforeSuspend(); });
    machine.setFloor(40.0);
    machine.time.suspend(1h);
    machine.queue.syncAhead([&] { machine.service->resumeAfterSuspend(); });
    EXPECT_FALSE(machine.mac.isAnyFanForced());

    expectForgottenFloor(machine);
}

TEST(Release, BeforeSleepForgetsThatFloorAtTheResumeAlsoBetweenTwoLooksOfTheWatchdog) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.queue.syncAhead([&] { machine.service->releaseBeforeSuspend(); });
    machine.setFloor(40.0);
    machine.advance(6500ms);
    machine.queue.syncAhead([&] { machine.service->resumeAfterSuspend(); });
    expectForgottenFloor(machine);
}

TEST(Release, BeforeSleepForgetsAFloorWhoseClientFellSilentWhereNoResumeFollows) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.queue.syncAhead([&] { machine.service->releaseBeforeSuspend(); });
    machine.setFloor(40.0);
    machine.advance(8001ms);
    machine.ping();
    machine.queue.syncAhead([&] { machine.service->resumeAfterSuspend(); });
    expectForgottenFloor(machine);
}

TEST(Release, BeforeSleepLeavesABoostToTheWatchdogWhereTheResumeComesAlone) {
    HelperMachine machine;
    boost(machine);
    machine.advance(7s);
    ASSERT_TRUE(machine.mac.isAnyFanForced());
    machine.queue.syncAhead([&] { machine.service->resumeAfterSuspend(); });
    machine.forget();
    machine.advance(500ms);
    EXPECT_THAT(machine.timesOf("F0Md=1"), testing::SizeIs(1)) << "until then it is driven on";
    machine.advance(500ms);
    EXPECT_EQ(machine.log.count("WATCHDOG — app silent, releasing fans to Apple"), 1U);
    EXPECT_FALSE(machine.mac.isAnyFanForced());
}

TEST(Release, BeforeSleepEndsWithNothingHeldWhenTheFloorWasWithdrawnMeanwhile) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.queue.syncAhead([&] { machine.service->releaseBeforeSuspend(); });
    machine.setFloor(40.0);
    machine.stopBoost();
    machine.queue.syncAhead([&] { machine.service->resumeAfterSuspend(); });
    EXPECT_FALSE(machine.mac.isAnyFanForced());
}

TEST(Release, GoesAheadOfRequestsThatWait) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.setFloor(40.0);
    int answers = 0;
    for (int i = 0; i < 100; ++i) {
        machine.service->setFanFloorWithPercentWithReply(50.0, [&](bool, const std::string&) { ++answers; });
    }
    machine.queue.syncAhead([&] {
        machine.service->emergencyRelease();
        machine.service.reset();
    });
    EXPECT_EQ(answers, 0);
    EXPECT_FALSE(machine.mac.isAnyFanForced());
    machine.advance(10s);
    EXPECT_EQ(answers, 0) << "a service that is gone does not answer a floor";
    EXPECT_FALSE(machine.mac.isAnyFanForced());
}

}  // namespace
}  // namespace corvane
