#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/application/runApplication.h"
#include "app/shell/BuildInfo.h"
#include "tests/app/application/RecordingViews.h"
#include "tests/app/application/TestAppPlatform.h"

namespace corvane {
namespace {

using testing::Contains;
using testing::ElementsAre;

/// Views that tell when they are made.
Views tellingViews(RecordingViews& recorded, Log& log) {
    Views views = recorded.views();
    views.makePopover = [&log, make = views.makePopover](const PanelModels& models) {
        log.write("[panel]");
        return make(models);
    };
    views.makeOnboardingWindow = [&log, make = views.makeOnboardingWindow](auto&&... arguments) {
        log.write("[introduction]");
        return make(std::forward<decltype(arguments)>(arguments)...);
    };
    return views;
}

TEST(RunApplication, StartsUpInItsOrderWithTheSignalsHeldFirst) {
    TestAppPlatform platform;
    RecordingViews recorded;
    platform.loop.raiseAfter(3s);
    EXPECT_EQ(runApplication(platform, tellingViews(recorded, platform.events)), 0);

    std::vector<std::string> expected = {"[signals held]",    "Corvane: the fan helper is installed",
                                         "[status item]",     "[panel]",
                                         "[signals handled]", "[introduction]"};
    if (*BuildInfo::updateFeed != '\0') {
        expected.emplace_back("[web]");
    }
    expected.insert(expected.end(), {"[hot key]", "[hot key]", "[main loop]", "[helper]"});
    EXPECT_EQ(platform.events.events, expected);
}

TEST(RunApplication, EndsAtASignalWithoutAWordToTheHelperWhichThenReleasesByItself) {
    TestAppPlatform platform;
    platform.loop.scripted(3s, [&] {
        platform.helper.service->setFanFloorWithPercentWithReply(80, [](bool, const std::string&) {});
    });
    platform.loop.raiseAfter(4s);
    EXPECT_EQ(runApplication(platform, RecordingViews().views()), 0);
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
    runApplication(platform, RecordingViews().views());
    EXPECT_FALSE(platform.helper.mac.isAnyFanForced());
    EXPECT_FALSE(platform.helper.sleepSetting.isSleepDisabled());
}

TEST(RunApplication, SaysWhenThereIsNoHelper) {
    TestAppPlatform platform;
    platform.isHelperInstalled = false;
    platform.loop.raiseAfter(1s);
    EXPECT_EQ(runApplication(platform, RecordingViews().views()), 0);
    EXPECT_THAT(platform.events.events, Contains("Corvane: the fan helper is not installed"));
}

TEST(RunApplication, OpensItsPanelWhenItIsStartedAgain) {
    TestAppPlatform platform;
    platform.storedAtFirst = {{"lastLaunchedBuild", std::string(BuildInfo::buildNumber)}};
    RecordingViews recorded;
    bool wasShown = false;
    platform.loop.scripted(2s, [&] {
        ASSERT_FALSE(recorded.popover->isShown());
        platform.singleInstance->startAgain();
        wasShown = recorded.popover->isShown();
    });
    platform.loop.raiseAfter(3s);
    EXPECT_EQ(runApplication(platform, recorded.views()), 0);
    EXPECT_TRUE(wasShown);
}

TEST(RunApplication, LeavesEverythingToTheOneThatRunsAlready) {
    TestAppPlatform platform;
    platform.startAs = {.role = StartRole::second, .error = ""};
    platform.helper.start();
    platform.helper.setFloor(70);
    platform.helper.advance(1s);
    EXPECT_EQ(runApplication(platform, RecordingViews().views()), 0);
    EXPECT_TRUE(platform.helper.mac.isAnyFanForced()) << "the floor is the other one's";
    EXPECT_EQ(platform.statusItem, nullptr);
    EXPECT_THAT(platform.events.events, ElementsAre("[signals held]"));
}

TEST(RunApplication, FailsWhereTheOneThatRunsDoesNotAnswer) {
    TestAppPlatform platform;
    platform.startAs = {.role = StartRole::unanswered, .error = "the other one is stuck"};
    EXPECT_EQ(runApplication(platform, RecordingViews().views()), 1);
    EXPECT_THAT(platform.events.events, ElementsAre("[signals held]", "Corvane: the other one is stuck"));
}

}  // namespace
}  // namespace corvane
