#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/application/Application.h"
#include "app/application/runApplication.h"
#include "tests/app/application/TestAppPlatform.h"

namespace corvane {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

TEST(RunApplication, HoldsTerminationSignalsBeforeItDoesAnythingElse) {
    TestAppPlatform platform;
    platform.loop.raiseAfter(3s);
    EXPECT_EQ(runApplication(platform), 0);
    EXPECT_THAT(platform.events.events, ElementsAre("[signals held]", "Corvane: the fan helper is installed",
                                                    "[signals handled]", "[main loop]", "[helper]"));
}

TEST(RunApplication, EndsAtASignalWithoutAWordToTheHelperWhichThenReleasesByItself) {
    TestAppPlatform platform;
    platform.loop.scripted(3s, [&] {
        platform.helper.service->setFanFloorWithPercentWithReply(80, [](bool, const std::string&) {});
    });
    platform.loop.raiseAfter(4s);
    EXPECT_EQ(runApplication(platform), 0);
    EXPECT_TRUE(platform.helper.mac.isAnyFanForced());
    platform.helper.advance(12s);
    EXPECT_FALSE(platform.helper.mac.isAnyFanForced());
}

TEST(RunApplication, ReleasesWhatAnEarlierRunLeftBehind) {
    TestAppPlatform platform;
    platform.helper.start();
    platform.helper.setFloor(70);
    platform.helper.setLid(true);
    platform.helper.advance(1s);
    ASSERT_TRUE(platform.helper.mac.isAnyFanForced());

    platform.loop.raiseAfter(3s);
    runApplication(platform);
    EXPECT_FALSE(platform.helper.mac.isAnyFanForced());
    EXPECT_FALSE(platform.helper.sleepSetting.isSleepDisabled());
}

TEST(RunApplication, SaysWhenThereIsNoHelper) {
    TestAppPlatform platform;
    platform.isHelperInstalled = false;
    platform.loop.raiseAfter(1s);
    EXPECT_EQ(runApplication(platform), 0);
    EXPECT_THAT(platform.events.events, Contains("Corvane: the fan helper is not installed"));
}

class ApplicationTest : public testing::Test {
protected:
    void SetUp() override {
        application.start();
        platform.helper.advance(2s);
    }

    TestAppPlatform platform;
    Application application{platform};
};

TEST_F(ApplicationTest, AsksAgainForTheFansWhenTheComputerComesBackFromASuspend) {
    FanController& fan = application.fan();
    fan.setCoolingMode(CoolingMode::manual);
    fan.setFansEnabled(true);
    platform.helper.advance(2s);
    ASSERT_TRUE(platform.helper.mac.isAnyFanForced());

    platform.helper.service->releaseBeforeSuspend();
    ASSERT_FALSE(platform.helper.mac.isAnyFanForced());
    platform.helper.time.suspend(60s);
    platform.helper.service->resumeAfterSuspend();
    platform.resume();
    platform.helper.advance(2s);
    EXPECT_TRUE(platform.helper.mac.isAnyFanForced());
    EXPECT_EQ(fan.boostRemainingText(), "8:56");
}

TEST_F(ApplicationTest, LogsWhatBecomesOfTheFans) {
    FanController& fan = application.fan();
    fan.setCoolingMode(CoolingMode::manual);
    fan.setFansEnabled(true);
    platform.helper.advance(2s);
    EXPECT_THAT(platform.events.events, Contains("Corvane: the helper drives the fans"));
    fan.setFansEnabled(false);
    platform.helper.advance(2s);
    EXPECT_THAT(platform.events.events, Contains("Corvane: the firmware drives the fans"));
    EXPECT_THAT(platform.events.events, Not(Contains(HasSubstr("heat takes"))));
}

TEST_F(ApplicationTest, LogsWhenHeatAsksForMoreThanTheFloor) {
    FanController& fan = application.fan();
    fan.setCoolingMode(CoolingMode::manual);
    fan.setFansEnabled(true);
    fan.setManualFloor(10);
    platform.helper.advance(2s);
    platform.helper.mac.holdSensorsAt(88);
    platform.helper.advance(10s);
    EXPECT_THAT(platform.events.events, Contains("Corvane: heat takes the fans beyond the floor"));
    platform.helper.mac.holdSensorsAt(50);
    platform.helper.advance(20s);
    EXPECT_THAT(platform.events.events, Contains("Corvane: heat asks no more of the fans than the floor"));
}

}  // namespace
}  // namespace corvane
