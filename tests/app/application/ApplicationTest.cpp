#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/application/Application.h"
#include "tests/app/application/TestAppPlatform.h"

namespace corvane {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class ApplicationTest : public testing::Test {
protected:
    void SetUp() override { platform.helper.advance(2s); }

    TestAppPlatform platform;
    Application application{platform};
};

TEST_F(ApplicationTest, AsksAgainForTheFansWhenTheComputerComesBackFromASuspend) {
    FanController& fan = application.manager().fan();
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
    FanController& fan = application.manager().fan();
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
    FanController& fan = application.manager().fan();
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

DefaultsValue data(std::string_view text) {
    const auto bytes = std::as_bytes(std::span(text));
    return std::vector(bytes.begin(), bytes.end());
}

/// An application that starts on what an earlier run left in the settings.
class RestartedApplicationTest : public testing::Test {
protected:
    void start() {
        application.emplace(platform);
        platform.helper.advance(2s);
    }

    TestAppPlatform platform;
    std::optional<Application> application;
};

TEST_F(RestartedApplicationTest, ResumesItsRules) {
    platform.storedAtFirst = {
        {"trig.enabled", true},
        {"trig.apps", data(R"([{"bundleID":"org.blender.Blender","name":"Blender","cooling":"max"}])")},
    };
    platform.runningAtFirst = {"org.blender.Blender"};
    start();
    EXPECT_EQ(application->manager().triggers().activeReason(), "Blender");
    EXPECT_EQ(platform.power->held().size(), 2U);
    EXPECT_TRUE(platform.helper.mac.isAnyFanForced()) << "the cooling that the rule asks for";
    EXPECT_TRUE(application->manager().anythingActive());
}

TEST_F(RestartedApplicationTest, GoesOnTouchingItsDrives) {
    platform.storedAtFirst = {
        {"drivealive.enabled", true},
        {"drivealive.drives", data(R"([{"path":"/Volumes/Backup","name":"Backup"}])")},
    };
    platform.mountedAtFirst = {{"/Volumes/Backup", "Backup", false, true}};
    start();
    EXPECT_THAT(platform.volumes->touched(), ElementsAre("/Volumes/Backup"));
    platform.helper.advance(60s);
    EXPECT_THAT(platform.volumes->touched(), ElementsAre("/Volumes/Backup", "/Volumes/Backup"));
}

TEST_F(RestartedApplicationTest, StartsWithoutItsListsWhenTheyAreDamagedAndLeavesThemAsTheyAre) {
    platform.storedAtFirst = {
        {"trig.enabled", true},
        {"trig.apps", data(R"([{"bundleID":"org.blender.Blender","na)")},
        {"drivealive.enabled", true},
        {"drivealive.drives", data("\xff\xfe")},
    };
    platform.runningAtFirst = {"org.blender.Blender"};
    start();
    platform.helper.advance(10min);
    EXPECT_THAT(application->manager().triggers().apps(), IsEmpty());
    EXPECT_THAT(application->manager().drives().drives(), IsEmpty());
    EXPECT_THAT(platform.power->held(), IsEmpty());
    for (const auto& [key, value] : platform.storedAtFirst) {
        EXPECT_EQ(platform.defaults->value(key), value) << key;
    }
}

TEST_F(RestartedApplicationTest, HoldsNothingThatIsNotStored) {
    start();
    application->manager().apply({SleepAssertions::Kind::system}, std::nullopt);
    application->manager().lid().setEnabled(true);
    application.reset();
    start();
    EXPECT_THAT(platform.power->held(), IsEmpty());
    EXPECT_FALSE(application->manager().lid().enabled());
    EXPECT_FALSE(application->manager().anythingActive());
}

}  // namespace
}  // namespace corvane
