#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/menu/TemperatureBadge.h"
#include "tests/app/fan/ReportedMachine.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TemperatureBadgeTest : public testing::Test {
protected:
    TemperatureBadgeTest() {
        machine.open();
        badge.emplace(*machine.fan, machine.lang);
    }

    void speakGerman() { machine.defaults.set(Lang::setting, std::string("de")); }

    /// What a CPU that has always been this hot is shown as.
    std::string shown(double celsius) {
        machine.receiveTimes(FanController::tempHistoryLimit, cpuRecord(celsius));
        return badge->temperature().toStdString();
    }

    std::string rpm(const std::vector<int>& speeds) {
        std::vector<StatusRecord> fans;
        for (const int speed : speeds) {
            fans.push_back(fanRecord(static_cast<int>(fans.size()), speed));
        }
        machine.receive(fansRecord(std::move(fans)));
        return badge->rpmLine().toStdString();
    }

    ReportedMachine machine;
    std::optional<TemperatureBadge> badge;
};

TEST_F(TemperatureBadgeTest, KnowsNothingBeforeTheFirstReading) {
    EXPECT_FALSE(badge->isKnown());
    EXPECT_EQ(badge->temperature(), "");
    EXPECT_EQ(badge->word(), "");
    EXPECT_EQ(badge->colorRole(), "");
    EXPECT_EQ(badge->gpuTemperature(), "");
    EXPECT_EQ(badge->rpmLine(), "");
    EXPECT_EQ(badge->throttleLabel(), "");
    EXPECT_EQ(badge->throttleRole(), "");
    EXPECT_THAT(badge->trend(), IsEmpty());
}

TEST_F(TemperatureBadgeTest, ShowsTheSmoothedTemperature) {
    machine.receive(cpuRecord(60));
    machine.receive(cpuRecord(62));
    machine.receive(cpuRecord(95));
    EXPECT_TRUE(badge->isKnown());
    EXPECT_EQ(badge->temperature().toStdString(), "62°");
    EXPECT_EQ(badge->word(), "warm");
    EXPECT_EQ(badge->colorRole(), "lime");
    EXPECT_THAT(badge->trend(), ElementsAre(60, 61, 62));
}

TEST_F(TemperatureBadgeTest, RoundsHalvesToTheEvenDegree) {
    EXPECT_EQ(shown(64.5), "64°");
    EXPECT_EQ(shown(65.5), "66°");
    EXPECT_EQ(shown(64.51), "65°");
    EXPECT_EQ(shown(99.6), "100°");
}

TEST_F(TemperatureBadgeTest, NamesTheTemperatureAsItIsNotAsItIsRounded) {
    EXPECT_EQ(shown(69.9), "70°");
    EXPECT_EQ(badge->word(), "warm");
    EXPECT_EQ(shown(74.9), "75°");
    EXPECT_EQ(badge->colorRole(), "orange");
}

TEST_F(TemperatureBadgeTest, ShowsTheGraphicsProcessorWhileItIsKnown) {
    machine.receive({{"cpuTemp", 60.0}, {"gpuTemp", 58.0}});
    EXPECT_EQ(badge->gpuTemperature().toStdString(), "58°");
    machine.receive({{"cpuTemp", 60.0}, {"gpuTemp", 57.0}});
    EXPECT_EQ(badge->gpuTemperature().toStdString(), "58°") << "the median, 57.5, to the even degree";
    machine.receive(cpuRecord(60));
    EXPECT_EQ(badge->gpuTemperature(), "");
}

TEST_F(TemperatureBadgeTest, ShowsTheSpeedOfTheFastestFan) {
    EXPECT_EQ(rpm({2310}), "2310 rpm");
    EXPECT_EQ(rpm({0, 2310, 1200}), "2310 rpm");
    EXPECT_EQ(rpm({5000, 0}), "5000 rpm");
}

TEST_F(TemperatureBadgeTest, SaysWhenAllFansStand) {
    EXPECT_EQ(rpm({0, 0}), "fans off");
    speakGerman();
    EXPECT_EQ(badge->rpmLine().toStdString(), "Lüfter aus");
}

TEST_F(TemperatureBadgeTest, SaysNothingOfFansThatAreNotThere) {
    EXPECT_EQ(rpm({}), "");
}

TEST_F(TemperatureBadgeTest, NamesTheThermalState) {
    machine.thermal.set(ThermalState::serious);
    EXPECT_EQ(badge->throttleLabel(), "Throttling");
    EXPECT_EQ(badge->throttleRole(), "orange");
    machine.thermal.set(ThermalState::nominal);
    EXPECT_EQ(badge->throttleLabel(), "");
    EXPECT_EQ(badge->throttleRole(), "");
}

TEST_F(TemperatureBadgeTest, SpeaksGerman) {
    EXPECT_EQ(shown(75), "75°");
    EXPECT_EQ(badge->word(), "hot");
    speakGerman();
    EXPECT_EQ(badge->word().toStdString(), "heiß");
}

TEST_F(TemperatureBadgeTest, AnnouncesWhateverChangesIt) {
    int changes = 0;
    QObject::connect(&*badge, &TemperatureBadge::changed, [&] { ++changes; });
    const auto expectAnnounced = [&](const char* what) { EXPECT_GE(std::exchange(changes, 0), 1) << what; };
    machine.receive(cpuRecord(60));
    expectAnnounced("a temperature");
    machine.receive({{"cpuTemp", 60.0}, {"gpuTemp", 58.0}});
    expectAnnounced("a second one");
    machine.receive(cpuRecord(60));
    expectAnnounced("its loss");
    machine.receive(fansRecord({fanRecord(0, 1200)}));
    expectAnnounced("a fan");
    machine.thermal.set(ThermalState::fair);
    expectAnnounced("the thermal state");
    badge->retranslate();
    expectAnnounced("the language");
    machine.advance(5s);
    EXPECT_EQ(changes, 0) << "records that say the same again";
}

}  // namespace
}  // namespace corvane
