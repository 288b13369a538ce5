#include <cstdint>

#include "tests/app/fan/ReportedMachine.h"
#include "tests/support/oddNumbers.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t number = 1;

std::vector<StatusRecord> oneRecord() {
    return {recordOf({{"cpuTemp", 71.0}})};
}

/// An empty record, and one for each of `values` under `key`.
std::vector<StatusRecord> recordsWithout(std::string_view key, const std::vector<StatusValue>& values) {
    std::vector<StatusRecord> records = {StatusRecord()};
    for (const StatusValue& value : values) {
        records.push_back(recordOf({{std::string(key), value}}));
    }
    return records;
}

/// Records without a Boolean under `key`, those with something else there included.
std::vector<StatusRecord> recordsWithoutBoolean(std::string_view key) {
    return recordsWithout(key, {std::monostate(), number, 1.0, std::string("true"), oneRecord()});
}

/// Records without a finite real under `key`.
std::vector<StatusRecord> recordsWithoutReal(std::string_view key) {
    return recordsWithout(key, {std::monostate(), true, number, std::string("50"), oneRecord(),
                                notANumber<double>, infinite<double>, -infinite<double>});
}

// Fans

TEST(FanStatus, ReplacesTheFansByThoseReported) {
    ReportedMachine machine;
    machine.open();
    machine.receive(fansRecord({fanRecord(0, 1200, 1500), fanRecord(1, 0)}));
    EXPECT_THAT(machine.fan->fans(),
                ElementsAre(FanInfo{0, 1200, 1000, 5000, 1500}, FanInfo{1, 0, 1000, 5000, 0}));
    machine.receive(fansRecord({fanRecord(3, 2000)}));
    EXPECT_THAT(machine.fan->fans(), ElementsAre(FanInfo{3, 2000, 1000, 5000, 0}));
}

TEST(FanStatus, ReadsEachFieldFromItsOwnKey) {
    ReportedMachine machine;
    machine.open();
    machine.receive(fansRecord(
        {recordOf({{"targetRPM", 5}, {"maxRPM", 4}, {"minRPM", 3}, {"currentRPM", 2}, {"index", 1}})}));
    EXPECT_THAT(machine.fan->fans(), ElementsAre(FanInfo{1, 2, 3, 4, 5}));
}

TEST(FanStatus, HasNoFansAfterAnEmptyList) {
    ReportedMachine machine;
    machine.open();
    machine.receive(fansRecord({fanRecord(0, 1200)}));
    machine.receive(fansRecord({}));
    EXPECT_THAT(machine.fan->fans(), IsEmpty());
}

TEST(FanStatus, KeepsTheFansWithoutAList) {
    ReportedMachine machine;
    machine.open();
    machine.receive(fansRecord({fanRecord(0, 1200)}));
    for (const StatusRecord& record :
         recordsWithout("fans", {std::monostate(), true, number, 1.0, std::string("fans")})) {
        machine.receive(record);
        EXPECT_EQ(machine.fan->fans().size(), 1);
    }
}

/// The fan record with another value under `key`, or with none.
StatusRecord fanRecordWith(std::string_view changedKey, const std::optional<StatusValue>& changed) {
    const StatusRecord whole = fanRecord(1, 2000, 2500);
    StatusRecord record;
    for (const auto& [key, value] : whole.entries()) {
        if (key != changedKey) {
            record.set(key, value);
        } else if (changed) {
            record.set(key, *changed);
        }
    }
    return record;
}

const std::vector<std::optional<StatusValue>>& notIntegers() {
    static const std::vector<std::optional<StatusValue>> values = {
        std::nullopt,        StatusValue(std::monostate()),    StatusValue(true),
        StatusValue(2000.0), StatusValue(std::string("2000")), StatusValue(oneRecord()),
    };
    return values;
}

TEST(FanStatus, SkipsAFanThatLacksOneOfTheFirstFourFields) {
    ReportedMachine machine;
    machine.open();
    for (const char* key : {"index", "currentRPM", "minRPM", "maxRPM"}) {
        for (const auto& value : notIntegers()) {
            machine.receive(fansRecord({fanRecord(0, 1200), fanRecordWith(key, value), fanRecord(2, 1300)}));
            EXPECT_THAT(machine.fan->fans(),
                        ElementsAre(FanInfo{0, 1200, 1000, 5000, 0}, FanInfo{2, 1300, 1000, 5000, 0}))
                << key;
        }
    }
}

TEST(FanStatus, KeepsAFanWithoutATargetAtTargetZero) {
    ReportedMachine machine;
    machine.open();
    for (const auto& value : notIntegers()) {
        machine.receive(fansRecord({fanRecordWith("targetRPM", value)}));
        EXPECT_THAT(machine.fan->fans(), ElementsAre(FanInfo{1, 2000, 1000, 5000, 0}));
    }
}

TEST(FanStatus, SkipsAnEmptyFanRecord) {
    ReportedMachine machine;
    machine.open();
    machine.receive(fansRecord({StatusRecord()}));
    EXPECT_THAT(machine.fan->fans(), IsEmpty());
}

// Booleans

TEST(FanStatus, FollowsTheHelpersBoostAndKeepsItWithoutAWord) {
    ReportedMachine machine;
    machine.open();
    for (const bool isBoosted : {true, false}) {
        machine.receive({{"isBoosted", isBoosted}});
        EXPECT_EQ(machine.fan->isBoosted(), isBoosted);
        for (const StatusRecord& record : recordsWithoutBoolean("isBoosted")) {
            machine.receive(record);
            EXPECT_EQ(machine.fan->isBoosted(), isBoosted);
        }
    }
}

TEST(FanStatus, HasAThermalOverrideOnlyWhileItIsReported) {
    ReportedMachine machine;
    machine.open();
    for (const StatusRecord& record : recordsWithoutBoolean("thermalOverride")) {
        machine.receive({{"thermalOverride", true}});
        EXPECT_TRUE(machine.fan->thermalOverride());
        machine.receive(record);
        EXPECT_FALSE(machine.fan->thermalOverride());
    }
    machine.receive({{"thermalOverride", true}});
    machine.receive({{"thermalOverride", false}});
    EXPECT_FALSE(machine.fan->thermalOverride());
}

// Reals

TEST(FanStatus, HasAnEffectivePercentageOnlyWhileOneIsReported) {
    ReportedMachine machine;
    machine.open();
    for (const StatusRecord& record : recordsWithoutReal("effectivePercent")) {
        machine.receive({{"effectivePercent", 42.5}});
        EXPECT_EQ(machine.fan->effectivePercent(), 42.5);
        machine.receive(record);
        EXPECT_EQ(machine.fan->effectivePercent(), 0);
    }
}

TEST(FanStatus, KeepsTheCpuTemperatureWithoutAReading) {
    ReportedMachine machine;
    machine.open();
    machine.receive({{"cpuTemp", 61.5}});
    for (const StatusRecord& record : recordsWithoutReal("cpuTemp")) {
        machine.receive(record);
        EXPECT_EQ(machine.fan->cpuTemp(), 61.5);
        EXPECT_EQ(machine.fan->cpuTempSmoothed(), 61.5);
        EXPECT_THAT(machine.fan->tempHistory(), ElementsAre(61.5));
        EXPECT_THAT(machine.fan->tempTrend(), ElementsAre(61.5));
    }
}

TEST(FanStatus, LosesTheGpuTemperatureWithoutAReadingAndKeepsWhatItSmoothed) {
    ReportedMachine machine;
    machine.open();
    machine.receive({{"gpuTemp", 55.5}});
    for (const StatusRecord& record : recordsWithoutReal("gpuTemp")) {
        machine.receive(record);
        EXPECT_EQ(machine.fan->gpuTemp(), std::nullopt);
        EXPECT_EQ(machine.fan->gpuTempSmoothed(), 55.5);
        EXPECT_THAT(machine.fan->gpuHistory(), ElementsAre(55.5));
    }
    machine.receive({{"gpuTemp", 57.5}});
    EXPECT_EQ(machine.fan->gpuTemp(), 57.5);
}

TEST(FanStatus, TakesTheAverageOfTheCpuNotItsMaximum) {
    ReportedMachine machine;
    machine.open();
    machine.receive({{"cpuTempMax", 90.0}, {"cpuTemp", 60.0}});
    EXPECT_EQ(machine.fan->cpuTemp(), 60);
}

// Whole records

TEST(FanStatus, TakesOverNothingFromAnEmptyRecordButWhatFallsBack) {
    ReportedMachine machine;
    machine.open();
    machine.receive({{"fans", std::vector{fanRecord(0, 1200)}},
                     {"isBoosted", true},
                     {"cpuTemp", 60.0},
                     {"gpuTemp", 50.0},
                     {"thermalOverride", true},
                     {"effectivePercent", 30.0}});
    machine.receive(StatusRecord());
    EXPECT_EQ(machine.fan->fans().size(), 1);
    EXPECT_TRUE(machine.fan->isBoosted());
    EXPECT_EQ(machine.fan->cpuTemp(), 60);
    EXPECT_EQ(machine.fan->gpuTemp(), std::nullopt);
    EXPECT_FALSE(machine.fan->thermalOverride());
    EXPECT_EQ(machine.fan->effectivePercent(), 0);
}

TEST(FanStatus, IgnoresKeysItDoesNotKnow) {
    ReportedMachine machine;
    machine.open();
    machine.receive({{"fanz", 1}, {"", true}, {"cpuTemp", 60.0}, {"CPUTEMP", 99.0}});
    EXPECT_EQ(machine.fan->cpuTemp(), 60);
}

TEST(FanStatus, ShowsWhatTheRealHelperReports) {
    FanMachine machine(twoFanMac());
    machine.openAt(60);
    machine.fan->setCoolingMode(CoolingMode::manual);
    machine.fan->setFansEnabled(true);
    machine.fan->setManualFloor(50);
    machine.advance(20s);
    EXPECT_EQ(machine.fan->effectivePercent(), 50);
    EXPECT_FALSE(machine.fan->thermalOverride());
    ASSERT_EQ(machine.fan->fans().size(), 2);
    EXPECT_EQ(machine.fan->fans()[1].targetRPM, 3500);
    EXPECT_NEAR(machine.fan->fans()[1].currentRPM, 3500, 20);
    machine.helper.mac.holdSensorsAt(90);
    machine.advance(5s);
    EXPECT_TRUE(machine.fan->thermalOverride());
    EXPECT_GT(machine.fan->effectivePercent(), 70);
}

// Announcements

TEST(FanStatus, AnnouncesEachPropertyWhenItChangesAndOnlyThen) {
    ReportedMachine machine;
    machine.open();
    const FanController& fan = *machine.fan;
    const SignalCount fans(fan, &FanController::fansChanged);
    const SignalCount isBoosted(fan, &FanController::isBoostedChanged);
    const SignalCount cpuTemp(fan, &FanController::cpuTempChanged);
    const SignalCount cpuTempSmoothed(fan, &FanController::cpuTempSmoothedChanged);
    const SignalCount gpuTemp(fan, &FanController::gpuTempChanged);
    const SignalCount gpuTempSmoothed(fan, &FanController::gpuTempSmoothedChanged);
    const SignalCount thermalOverride(fan, &FanController::thermalOverrideChanged);
    const SignalCount effectivePercent(fan, &FanController::effectivePercentChanged);
    const SignalCount tempTrend(fan, &FanController::tempTrendChanged);
    const auto counts = [&] {
        return std::vector{
            fans.value(),    isBoosted.value(),       cpuTemp.value(),         cpuTempSmoothed.value(),
            gpuTemp.value(), gpuTempSmoothed.value(), thermalOverride.value(), effectivePercent.value()};
    };
    const StatusRecord record = recordOf({{"fans", std::vector{fanRecord(0, 1200)}},
                                          {"isBoosted", true},
                                          {"cpuTemp", 60.0},
                                          {"gpuTemp", 50.0},
                                          {"thermalOverride", true},
                                          {"effectivePercent", 30.0}});
    machine.receive(record);
    EXPECT_THAT(counts(), testing::Each(1));
    EXPECT_EQ(tempTrend.value(), 1);
    machine.receive(record);
    EXPECT_THAT(counts(), testing::Each(1));
    EXPECT_EQ(tempTrend.value(), 2);
    machine.receive(fansRecord({fanRecord(0, 1201)}));
    EXPECT_THAT(counts(), ElementsAre(2, 1, 1, 1, 2, 1, 2, 2));
    EXPECT_EQ(tempTrend.value(), 2);
}

TEST(FanStatus, LetsPropertiesBeReadByName) {
    ReportedMachine machine;
    machine.open();
    EXPECT_FALSE(machine.fan->property("cpuTemp").isValid());
    EXPECT_FALSE(machine.fan->property("gpuTempSmoothed").isValid());
    machine.receive({{"cpuTemp", 60.0}, {"gpuTemp", 50.0}, {"isBoosted", true}});
    EXPECT_EQ(machine.fan->property("cpuTemp").toDouble(), 60);
    EXPECT_EQ(machine.fan->property("cpuTempSmoothed").toDouble(), 60);
    EXPECT_EQ(machine.fan->property("gpuTemp").toDouble(), 50);
    EXPECT_EQ(machine.fan->property("gpuTempSmoothed").toDouble(), 50);
    EXPECT_TRUE(machine.fan->property("isBoosted").toBool());
    machine.receive(StatusRecord());
    EXPECT_FALSE(machine.fan->property("gpuTemp").isValid());
}

}  // namespace
}  // namespace corvane
