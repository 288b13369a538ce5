#include "tests/app/fan/ReportedMachine.h"
#include "tests/support/oddNumbers.h"

namespace corvane {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

/// A controller that reads a real helper's sensors, one of the CPU and one of the GPU, once a second.
class SensorMachine : public FanMachine {
public:
    explicit SensorMachine(float cpuCelsius, float gpuCelsius = 50)
        : FanMachine(macWithSensors({sensor::fixed("Tg0f", 50.0F), sensor::fixed("Tp09", 50.0F)})) {
        helper.mac.holdSensor("Tp09", cpuCelsius);
        helper.mac.holdSensor("Tg0f", gpuCelsius);
        open();
    }

    /// The next record has this.
    void readCpu(float celsius) { read("Tp09", celsius); }
    void readGpu(float celsius) { read("Tg0f", celsius); }

private:
    void read(std::string_view key, float celsius) {
        helper.mac.holdSensor(key, celsius);
        advance(1s);
    }
};

TEST(TemperatureHistory, BeginsWithTheFirstReading) {
    SensorMachine machine(61.5F);
    EXPECT_EQ(machine.fan->cpuTempSmoothed(), 61.5);
    EXPECT_THAT(machine.fan->tempHistory(), ElementsAre(61.5));
    EXPECT_THAT(machine.fan->tempTrend(), ElementsAre(61.5));
}

TEST(TemperatureHistory, SmoothsTwoReadingsToTheirMean) {
    SensorMachine machine(60);
    machine.readCpu(70);
    EXPECT_EQ(machine.fan->cpuTemp(), 70);
    EXPECT_EQ(machine.fan->cpuTempSmoothed(), 65);
    EXPECT_THAT(machine.fan->tempTrend(), ElementsAre(60, 65));
}

TEST(TemperatureHistory, SmoothsThreeReadingsToTheMiddleOne) {
    SensorMachine machine(60);
    machine.readCpu(80);
    machine.readCpu(62);
    EXPECT_EQ(machine.fan->cpuTempSmoothed(), 62);
    EXPECT_THAT(machine.fan->tempHistory(), ElementsAre(60, 80, 62));
}

TEST(TemperatureHistory, IsNotMovedByASingleSpike) {
    SensorMachine machine(60);
    machine.advance(13s);
    machine.readCpu(100);
    EXPECT_EQ(machine.fan->tempHistory().size(), 15);
    EXPECT_EQ(machine.fan->cpuTemp(), 100);
    EXPECT_EQ(machine.fan->cpuTempSmoothed(), 60);
    EXPECT_EQ(machine.fan->tempTrend().back(), 60);
}

TEST(TemperatureHistory, HoldsTheLastFifteenReadingsOldestFirst) {
    SensorMachine machine(30);
    for (int second = 1; second <= 15; ++second) {
        machine.readCpu(static_cast<float>(30 + second));
    }
    EXPECT_EQ(machine.fan->tempHistory().size(), 15);
    EXPECT_EQ(machine.fan->tempHistory().front(), 31);
    EXPECT_EQ(machine.fan->tempHistory().back(), 45);
    EXPECT_EQ(machine.fan->cpuTempSmoothed(), 38);
}

TEST(TemperatureHistory, TakesNoMoreRoomAfterANightInWhichItWasShown) {
    SensorMachine machine(60);
    for (int second = 0; second < 1000; ++second) {
        const QList<double> shown[] = {machine.fan->tempHistory(), machine.fan->gpuHistory(),
                                       machine.fan->tempTrend()};
        machine.advance(1s);
        ASSERT_LE(shown[0].capacity(), 2 * FanController::tempHistoryLimit);
        ASSERT_LE(shown[1].capacity(), 2 * FanController::tempHistoryLimit);
        ASSERT_LE(shown[2].capacity(), 2 * FanController::tempTrendLimit);
    }
    EXPECT_EQ(machine.fan->tempTrend().size(), FanController::tempTrendLimit);
}

TEST(TemperatureHistory, FollowsAStepOnceMostReadingsAreNew) {
    SensorMachine machine(60);
    machine.advance(20s);
    machine.helper.mac.holdSensor("Tp09", 80);
    machine.advance(7s);
    EXPECT_EQ(machine.fan->cpuTempSmoothed(), 60);
    machine.advance(1s);
    EXPECT_EQ(machine.fan->cpuTempSmoothed(), 80);
}

TEST(TemperatureHistory, HoldsExactlyFifteenReadingsAndNinetySmoothedValuesAfterTwoHundredRecords) {
    SensorMachine machine(30);
    for (int second = 1; second < 200; ++second) {
        machine.readCpu(30.0F + static_cast<float>(second) / 4);
    }
    EXPECT_EQ(machine.fan->tempHistory().size(), 15);
    EXPECT_EQ(machine.fan->tempHistory().back(), 30 + 199 / 4.0);
    EXPECT_EQ(machine.fan->tempTrend().size(), 90);
    // A steady rise is smoothed to what was read seven records ago.
    EXPECT_EQ(machine.fan->tempTrend().back(), 30 + 192 / 4.0);
    EXPECT_EQ(machine.fan->tempTrend().front(), 30 + (192 - 89) / 4.0);
}

TEST(TemperatureHistory, HoldsNinetySmoothedValuesFromTheNinetiethRecordOn) {
    SensorMachine machine(60);
    machine.advance(88s);
    EXPECT_EQ(machine.fan->tempTrend().size(), 89);
    machine.advance(1s);
    EXPECT_EQ(machine.fan->tempTrend().size(), 90);
    machine.advance(1s);
    EXPECT_EQ(machine.fan->tempTrend().size(), 90);
    EXPECT_THAT(machine.fan->tempTrend(), Each(60));
}

TEST(TemperatureHistory, StandsStillWhileTheCpuIsNotRead) {
    SensorMachine machine(60, 50);
    machine.advance(4s);
    machine.helper.mac.setFault("Tp09", KeyFault::readFails());
    machine.advance(30s);
    EXPECT_EQ(machine.fan->cpuTemp(), 60);
    EXPECT_EQ(machine.fan->tempHistory().size(), 5);
    EXPECT_EQ(machine.fan->tempTrend().size(), 5);
    EXPECT_EQ(machine.fan->gpuHistory().size(), 15);
}

TEST(TemperatureHistory, NeverTakesInWhatIsNoNumber) {
    SensorMachine machine(60);
    for (const double celsius : {notANumber<double>, infinite<double>, -infinite<double>}) {
        machine.readCpu(static_cast<float>(celsius));
        machine.readGpu(static_cast<float>(celsius));
    }
    machine.advance(20s);
    EXPECT_THAT(machine.fan->tempHistory(), Each(60));
    EXPECT_EQ(machine.fan->cpuTempSmoothed(), 60);
    EXPECT_EQ(machine.fan->gpuTempSmoothed(), 50);
}

TEST(TemperatureHistory, SmoothsTheGpuTheSameWay) {
    SensorMachine machine(60, 40);
    EXPECT_EQ(machine.fan->gpuTempSmoothed(), 40);
    machine.readGpu(50);
    EXPECT_EQ(machine.fan->gpuTemp(), 50);
    EXPECT_EQ(machine.fan->gpuTempSmoothed(), 45);
    EXPECT_THAT(machine.fan->gpuHistory(), ElementsAre(40, 50));
    for (int second = 0; second < 20; ++second) {
        machine.readGpu(static_cast<float>(51 + second));
    }
    EXPECT_EQ(machine.fan->gpuHistory().size(), 15);
    EXPECT_EQ(machine.fan->gpuHistory().front(), 56);
    EXPECT_EQ(machine.fan->gpuHistory().back(), 70);
    EXPECT_EQ(machine.fan->gpuTempSmoothed(), 63);
}

TEST(TemperatureHistory, HasNoTrendOfTheGpu) {
    ReportedMachine machine;
    machine.open();
    machine.receiveTimes(5, recordOf({{"gpuTemp", 50.0}}));
    EXPECT_THAT(machine.fan->tempTrend(), IsEmpty());
    EXPECT_THAT(machine.fan->tempHistory(), IsEmpty());
}

TEST(TemperatureHistory, BlanksTheGpuWithoutAReadingAndKeepsItsSmoothedValue) {
    SensorMachine machine(50, 70);
    machine.advance(4s);
    machine.helper.mac.setFault("Tg0f", KeyFault::readFails());
    machine.advance(1s);
    EXPECT_EQ(machine.fan->gpuTemp(), std::nullopt);
    EXPECT_EQ(machine.fan->gpuTempSmoothed(), 70);
    EXPECT_EQ(machine.fan->gpuHistory().size(), 5);
}

TEST(TemperatureHistory, GoesOnCoolingByTheGpusSmoothedValueWithoutAReading) {
    SensorMachine machine(45, 75);
    machine.advance(4s);
    machine.helper.mac.setFault("Tg0f", KeyFault::readFails());
    machine.advance(1s);
    machine.fan->setFansEnabled(true);
    EXPECT_EQ(machine.fan->autoFloor(), 65);
    machine.advance(20s);
    EXPECT_TRUE(machine.fan->autoEngaged());
}

TEST(TemperatureHistory, StartsEmptyAtEveryLaunch) {
    SensorMachine machine(60);
    machine.advance(20s);
    machine.readCpu(70);
    machine.open();
    EXPECT_THAT(machine.fan->tempHistory(), ElementsAre(70));
    EXPECT_THAT(machine.fan->tempTrend(), ElementsAre(70));
    EXPECT_THAT(machine.defaults.writes(), IsEmpty());
}

}  // namespace
}  // namespace corvane
