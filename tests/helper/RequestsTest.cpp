#include "tests/helper/HelperMachine.h"
#include "tests/helper/daemonLines.h"
#include "tests/support/oddNumbers.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Requests, APingIsAnsweredAtOnceWithTheNumberOfFans) {
    HelperMachine machine(twoFanMac());
    machine.startAt(60.0F);
    std::vector<Answer> answers;
    machine.service->pingWithReply([&](bool ok, std::string text) {
        answers.push_back({ok, std::move(text)});
    });
    EXPECT_THAT(answers, ElementsAre(Answer{true, "Corvane daemon alive, fans=2"}));
    machine.time.settle();
    EXPECT_EQ(answers.size(), 1U);
}

TEST(Requests, APingIsAnsweredWhileTheQueueIsBusy) {
    HelperMachine machine;
    VirtualQueue outside(machine.time);
    machine.startAt(60.0F);
    machine.setFloor(30.0);
    machine.mac.setFault("F0Md", KeyFault::neverAutomatic(1));
    std::vector<Duration> answeredAt;
    const auto ping = outside.after(200ms, [&] {
        machine.service->pingWithReply(
            [&](bool /*ok*/, const std::string& /*text*/) { answeredAt.push_back(machine.now()); });
    });
    machine.stopBoost();
    EXPECT_THAT(answeredAt, ElementsAre(200ms));
}

/// The watchdog looks every 2 s from 0 on.
TEST(Requests, TheContactOfPingsWaitsForABusyQueueAndThenCountsOnce) {
    HelperMachine machine;
    VirtualQueue outside(machine.time);
    machine.startAt(60.0F);
    machine.advance(2100ms);
    machine.setFloor(30.0);
    machine.setLid(true);
    machine.mac.setFault("F0Md", KeyFault::neverAutomatic(1));
    const auto ping = [&] {
        machine.service->pingWithReply([](bool /*ok*/, const std::string& /*text*/) {});
    };
    machine.advance(5800ms);
    const auto first = outside.after(50ms, ping);
    const auto second = outside.after(70ms, ping);
    machine.queue.sync([&] { machine.service->releaseBeforeSuspend(); });
    ASSERT_EQ(machine.now(), 8500ms) << "the queue slept over a look of the watchdog";

    machine.advance(5500ms);
    EXPECT_TRUE(machine.sleepSetting.isSleepDisabled()) << "counted from when the queue came to it";
    machine.advance(400ms);
    ping();
    machine.advance(5700ms);
    EXPECT_TRUE(machine.sleepSetting.isSleepDisabled()) << "a later ping counts again";
    machine.advance(2s);
    EXPECT_FALSE(machine.sleepSetting.isSleepDisabled());
}

TEST(Requests, EverythingElseWaitsForTheQueue) {
    HelperMachine machine;
    machine.startAt(60.0F);
    std::vector<std::string> answers;
    const auto note = [&](bool /*ok*/, std::string text) { answers.push_back(std::move(text)); };
    machine.service->setFanFloorWithPercentWithReply(30.0, note);
    machine.service->setLidStayAwakeWithReply(true, note);
    machine.service->getStatusWithReply([&](const StatusRecord& status) {
        answers.emplace_back(*status.get<bool>(StatusKey::isBoosted) ? "boosted" : "idle");
    });
    machine.service->stopBoostWithReply(note);
    EXPECT_THAT(answers, IsEmpty());
    EXPECT_THAT(machine.writtenTexts(), IsEmpty());
    machine.time.settle();
    EXPECT_THAT(answers, ElementsAre("floor set to 30%", "lid-stay-awake on", "boosted", "boost stopped"));
}

TEST(Requests, AFloorIsClampedAndAnsweredWithoutItsFraction) {
    struct Case {
        double percent;
        std::string answer;
        double floor;
    };
    for (const Case& example : {Case{150.0, "floor set to 100%", 100.0},
                                {infinite<double>, "floor set to 100%", 100.0},
                                {100.0, "floor set to 100%", 100.0},
                                {42.9, "floor set to 42%", 42.9},
                                {0.4, "floor set to 0%", 0.4},
                                {0.0, "boost off", 0.0},
                                {-0.0, "boost off", 0.0},
                                {-3.0, "boost off", 0.0},
                                {-infinite<double>, "boost off", 0.0},
                                {notANumber<double>, "boost off", 0.0}}) {
        HelperMachine machine;
        machine.startAt(60.0F);
        EXPECT_EQ(machine.setFloor(example.percent), (Answer{true, example.answer})) << example.percent;
        const StatusRecord status = machine.status();
        EXPECT_EQ(*status.get<double>(StatusKey::floorPercent), example.floor) << example.percent;
        EXPECT_EQ(*status.get<bool>(StatusKey::isBoosted), example.floor > 0.0) << example.percent;
    }
}

TEST(Requests, AFloorOfNothingEndsTheBoost) {
    for (const double percent : {0.0, -5.0, notANumber<double>}) {
        HelperMachine machine;
        machine.startAt(60.0F);
        machine.setFloor(30.0);
        machine.forget();
        machine.setFloor(percent);
        EXPECT_THAT(machine.writtenTexts(), ElementsAre("F0Tg=0", "F0Md=0", "Ftst=0")) << percent;
        EXPECT_THAT(machine.log.lines(), ElementsAre(released));
        EXPECT_FALSE(machine.mac.isAnyFanForced());
    }
}

TEST(Requests, AFloorIsConfirmedEvenWhenItsFirstTickReleased) {
    HelperMachine machine;
    machine.startAt(101.0F);
    EXPECT_EQ(machine.setFloor(70.0), (Answer{true, "floor set to 70%"}));
    EXPECT_FALSE(machine.isBoosted());
    EXPECT_EQ(*machine.status().get<double>(StatusKey::floorPercent), 0.0);
}

TEST(Requests, StoppingIsConfirmedWhetherOrNotSomethingWasHeld) {
    HelperMachine machine;
    machine.startAt(60.0F);
    EXPECT_EQ(machine.stopBoost(), (Answer{true, "boost stopped"}));
    machine.setFloor(30.0);
    EXPECT_EQ(machine.stopBoost(), (Answer{true, "boost stopped"}));
    EXPECT_FALSE(machine.mac.isAnyFanForced());
}

/// Asks, then lets the service die before its queue gets to it.
struct GoneService {
    GoneService() {
        machine.startAt(60.0F);
        const auto service = std::exchange(machine.service, nullptr);
        const auto noteAs = [this](std::string name) {
            return [this, name = std::move(name)](bool ok, const std::string& text) {
                replies.push_back(fmt::format("{}: {}, {}", name, ok, text));
            };
        };
        service->setFanFloorWithPercentWithReply(50.0, noteAs("floor"));
        service->setFanFloorWithPercentWithReply(0.0, noteAs("floor"));
        service->stopBoostWithReply(noteAs("stop"));
        service->setLidStayAwakeWithReply(true, noteAs("lid"));
        service->pingWithReply(noteAs("ping"));
        service->getStatusWithReply([this](const StatusRecord& status) {
            replies.push_back(fmt::format("status of {} keys", status.entries().size()));
        });
    }
    HelperMachine machine;
    std::vector<std::string> replies;
};

TEST(Requests, AServiceThatIsGoneAnswersAsFarAsItCan) {
    GoneService gone;
    gone.machine.advance(10s);
    EXPECT_THAT(gone.replies,
                ElementsAre("ping: true, Corvane daemon alive, fans=1", "stop: true, boost stopped",
                            "lid: false, no service", "status of 0 keys"));
}

TEST(Requests, AServiceThatIsGoneTouchesNothing) {
    GoneService gone;
    gone.machine.advance(10s);
    EXPECT_THAT(gone.machine.writtenTexts(), IsEmpty());
    EXPECT_THAT(gone.machine.log.lines(), IsEmpty());
    EXPECT_THAT(gone.machine.sleepSetting.calls(), IsEmpty());
}

TEST(Requests, AServiceThatIsDestroyedTakesItsTimersAlong) {
    HelperMachine machine;
    machine.startAt(60.0F);
    machine.setFloor(30.0);
    machine.forget();
    machine.service.reset();
    machine.advance(1min);
    EXPECT_THAT(machine.writtenTexts(), IsEmpty());
    EXPECT_THAT(machine.log.lines(), IsEmpty());
}

}  // namespace
}  // namespace corvane
