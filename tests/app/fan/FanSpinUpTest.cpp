#include "tests/app/fan/ReportedMachine.h"

namespace corvane {
namespace {

/// Records that bring no fan near its target.
class SpinningMachine : public ReportedMachine {
public:
    SpinningMachine() {
        open();
        fan->setCoolingMode(CoolingMode::manual);
    }

    /// The user switches the fans on, which begins the spin-up.
    void begin() {
        fan->setFansEnabled(true);
        settle();
    }
};

TEST(FanSpinUp, BeginsWithTheBoost) {
    SpinningMachine machine;
    EXPECT_FALSE(machine.fan->spinningUp());
    machine.begin();
    EXPECT_TRUE(machine.fan->spinningUp());
    EXPECT_EQ(machine.fan->spinUpUntil(), machine.mainLoop.bootTime() + 5s);
}

TEST(FanSpinUp, IsOverWhenAFanReaches85PercentOfItsTarget) {
    SpinningMachine machine;
    machine.begin();
    machine.receive(fansRecord({fanRecord(0, 1699, 2000)}));
    EXPECT_TRUE(machine.fan->spinningUp());
    machine.receive(fansRecord({fanRecord(0, 1700, 2000)}));
    EXPECT_FALSE(machine.fan->spinningUp());
}

TEST(FanSpinUp, ComparesWithTheWholePartOf85Percent) {
    SpinningMachine machine;
    machine.begin();
    // 85 % of 2001 is 1700.85.
    machine.receive(fansRecord({fanRecord(0, 1699, 2001)}));
    EXPECT_TRUE(machine.fan->spinningUp());
    machine.receive(fansRecord({fanRecord(0, 1700, 2001)}));
    EXPECT_FALSE(machine.fan->spinningUp());
}

TEST(FanSpinUp, IsOverAsSoonAsOneOfTheFansIsThere) {
    SpinningMachine machine;
    machine.begin();
    machine.receive(fansRecord({fanRecord(0, 0, 2000), fanRecord(1, 1900, 2000)}));
    EXPECT_FALSE(machine.fan->spinningUp());
}

TEST(FanSpinUp, DoesNotCountAFanWithTargetZeroOrLess) {
    SpinningMachine machine;
    machine.begin();
    machine.receive(fansRecord({fanRecord(0, 5000, 0), fanRecord(1, 5000, -1000)}));
    EXPECT_TRUE(machine.fan->spinningUp());
}

TEST(FanSpinUp, DoesNotCountAFanThatIsSkipped) {
    SpinningMachine machine;
    machine.begin();
    machine.receive(fansRecord({recordOf({{"index", 0}, {"currentRPM", 5000}, {"targetRPM", 1000}})}));
    EXPECT_TRUE(machine.fan->spinningUp());
}

TEST(FanSpinUp, ForgetsItsTimesWhenItIsOver) {
    SpinningMachine machine;
    machine.begin();
    machine.receive(fansRecord({fanRecord(0, 5000, 5000)}));
    EXPECT_FALSE(machine.fan->spinningUp());
    EXPECT_EQ(machine.fan->spinUpUntil(), std::nullopt);
    EXPECT_EQ(machine.fan->spinUpRemaining(), std::nullopt);
}

TEST(FanSpinUp, DoesNotComeBackWhenTheFansSlowDown) {
    SpinningMachine machine;
    machine.begin();
    machine.receive(fansRecord({fanRecord(0, 5000, 5000)}));
    machine.receive(fansRecord({fanRecord(0, 0, 5000)}));
    EXPECT_FALSE(machine.fan->spinningUp());
}

TEST(FanSpinUp, EndsWithAnEmptyListOnlyAfterMoreThanTwentySeconds) {
    SpinningMachine machine;
    machine.begin();
    machine.receiveTimes(20, fansRecord({}));
    EXPECT_TRUE(machine.fan->spinningUp());
    machine.receive(fansRecord({}));
    EXPECT_FALSE(machine.fan->spinningUp());
    EXPECT_EQ(machine.fan->spinUpUntil(), std::nullopt);
}

TEST(FanSpinUp, EndsAfterMoreThanTwentySecondsOfRecordsWithoutAList) {
    SpinningMachine machine;
    machine.begin();
    machine.receiveTimes(20, StatusRecord());
    EXPECT_TRUE(machine.fan->spinningUp());
    machine.receive(StatusRecord());
    EXPECT_FALSE(machine.fan->spinningUp());
}

TEST(FanSpinUp, CountsTheTwentySecondsFromTheRequest) {
    SpinningMachine machine;
    machine.advance(500ms);
    machine.begin();
    machine.advance(19500ms);
    EXPECT_TRUE(machine.fan->spinningUp());
    machine.advance(1s);
    EXPECT_FALSE(machine.fan->spinningUp());
}

TEST(FanSpinUp, CountsDownFromFiveAndStaysAtZero) {
    SpinningMachine machine;
    EXPECT_EQ(machine.fan->spinUpRemaining(), std::nullopt);
    machine.begin();
    for (const int remaining : {5, 4, 3, 2, 1, 0, 0}) {
        EXPECT_EQ(machine.fan->spinUpRemaining(), remaining);
        machine.receive(fansRecord({}));
    }
    machine.receiveTimes(13, fansRecord({}));
    EXPECT_EQ(machine.fan->spinUpRemaining(), 0);
    machine.receive(fansRecord({}));
    EXPECT_EQ(machine.fan->spinUpRemaining(), std::nullopt);
}

TEST(FanSpinUp, CountsDownInStepsOfThePoll) {
    SpinningMachine machine;
    machine.advance(500ms);
    machine.begin();
    EXPECT_EQ(machine.fan->spinUpRemaining(), 5);
    machine.advance(499ms);
    EXPECT_EQ(machine.fan->spinUpRemaining(), 5);
    machine.advance(1ms);
    EXPECT_EQ(machine.fan->spinUpRemaining(), 4);
}

TEST(FanSpinUp, AnnouncesItsBeginAndItsEnd) {
    SpinningMachine machine;
    const SignalCount spinningUp(*machine.fan, &FanController::spinningUpChanged);
    const SignalCount spinUpUntil(*machine.fan, &FanController::spinUpUntilChanged);
    machine.begin();
    machine.receiveTimes(3, fansRecord({}));
    EXPECT_EQ(spinningUp.value(), 1);
    EXPECT_EQ(spinUpUntil.value(), 1);
    machine.receive(fansRecord({fanRecord(0, 5000, 5000)}));
    EXPECT_EQ(spinningUp.value(), 2);
    EXPECT_EQ(spinUpUntil.value(), 2);
}

TEST(FanSpinUp, LastsUntilARealFanTurnsFastEnough) {
    FanMachine machine;
    machine.openAt(50);
    machine.fan->setCoolingMode(CoolingMode::manual);
    machine.fan->setFansEnabled(true);
    for (int second = 0; second < 20 && machine.fan->spinningUp(); ++second) {
        EXPECT_LT(machine.fan->fans()[0].currentRPM, 4250);
        machine.advance(1s);
    }
    EXPECT_FALSE(machine.fan->spinningUp());
    EXPECT_GE(machine.fan->fans()[0].currentRPM, 4250);
}

}  // namespace
}  // namespace corvane
