#include "tests/app/application/MenuBarTest.h"

#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

namespace corvane {
namespace {

using namespace std::string_literals;
using std::chrono::hours;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using Kind = SleepManager::Kind;
using Kinds = SleepManager::Kinds;

TEST_F(MenuBarTest, OpensThePanelByItselfOnceAfterANewBuild) {
    start();
    platform.helper.advance(698ms);
    EXPECT_FALSE(shown.popover->isShown());
    platform.helper.advance(2ms);
    EXPECT_TRUE(shown.popover->isShown());
    EXPECT_THAT(shown.popover->openings, ElementsAre(std::nullopt)) << "nobody has clicked anywhere";
    EXPECT_EQ(platform.defaults->get<std::string>("lastLaunchedBuild"), BuildInfo::buildNumber);
}

TEST_F(MenuBarTest, OpensThePanelByItselfAtTheItemWhereTheTrayTellsItsPlace) {
    start();
    item().tellPlace({900, 24});
    platform.helper.advance(1s);
    EXPECT_THAT(shown.popover->openings, ElementsAre(QPoint(900, 24)));
}

TEST_F(MenuBarTest, OpensThePanelByItselfAfterAnotherBuildThanTheLast) {
    platform.storedAtFirst = {{"lastLaunchedBuild", std::string("0")}};
    start();
    platform.helper.advance(1s);
    EXPECT_TRUE(shown.popover->isShown());
}

TEST_F(MenuBarTest, LeavesThePanelClosedWhenThisBuildWasStartedBefore) {
    startAgain();
    platform.helper.advance(10s);
    EXPECT_THAT(shown.popover->openings, IsEmpty());
}

TEST_F(MenuBarTest, TakesAStoredBuildThatIsNoTextForNone) {
    platform.storedAtFirst = {{"lastLaunchedBuild", true}};
    start();
    platform.helper.advance(1s);
    EXPECT_TRUE(shown.popover->isShown());
    EXPECT_EQ(platform.defaults->get<std::string>("lastLaunchedBuild"), BuildInfo::buildNumber);
}

TEST_F(MenuBarTest, AsksForUpdatesJustWhenItWasBuiltWithAFeed) {
    startAgain();
    EXPECT_THAT(platform.web->requests(), SizeIs(std::string_view(BuildInfo::updateFeed).empty() ? 0 : 1));
}

TEST_F(MenuBarTest, OffersWhatTheFeedSaysIsNewerThanThisBuild) {
    const std::string_view feed = BuildInfo::updateFeed;
    if (feed.empty()) {
        GTEST_SKIP() << "built without a feed";
    }
    EXPECT_TRUE(feed.ends_with("/appcast.json")) << feed;
    startAgain();
    ASSERT_THAT(platform.web->requests(), SizeIs(1));
    EXPECT_EQ(platform.web->requests().front().url, feed);

    UpdateChecker& updates = manager().updates();
    EXPECT_EQ(updates.currentVersion(), BuildInfo::version);
    for (const auto& [offered, published] :
         {std::pair(std::string(BuildInfo::version), std::string()), std::pair("999.0"s, "999.0"s)}) {
        platform.web->setBody(R"({"version":")" + offered + R"("})");
        updates.check();
        settle();
        EXPECT_EQ(updates.latestVersion().toStdString(), published);
    }
    updates.openDownload();
    EXPECT_THAT(platform.opener->opened(), ElementsAre(BuildInfo::homePage));
}

TEST_F(MenuBarTest, OpensThePanelWhereItIsClickedAndClosesItWithTheNextClick) {
    startAgain();
    item().click({ScreenPoint{1200, 12}});
    EXPECT_THAT(shown.popover->openings, ElementsAre(QPoint(1200, 12)));
    item().click({ScreenPoint{1200, 12}});
    EXPECT_FALSE(shown.popover->isShown());
    item().click();
    EXPECT_THAT(shown.popover->openings, ElementsAre(QPoint(1200, 12), std::nullopt));
}

TEST_F(MenuBarTest, ComesBeforeAllOthersWithThePanel) {
    startAgain();
    const int before = platform.activationPolicy->activations();
    item().click({ScreenPoint{1200, 12}});
    EXPECT_EQ(platform.activationPolicy->activations(), before + 1);
    item().click({ScreenPoint{1200, 12}});
    EXPECT_EQ(platform.activationPolicy->activations(), before + 1) << "closed, it stays where it is";
}

TEST_F(MenuBarTest, DoesNotReopenThePanelWithTheClickThatClosedIt) {
    startAgain();
    shown.popover->isClickUsedUp = true;
    item().click({ScreenPoint{1200, 12}});
    EXPECT_THAT(shown.popover->openings, IsEmpty());
}

TEST_F(MenuBarTest, ShowsTheGaugeInTheMiddleUntilSomethingIsActive) {
    startAgain();
    EXPECT_EQ(item().image(), StatusImage::gauge50);
    manager().apply({Kind::system}, std::nullopt);
    settle();
    EXPECT_EQ(item().image(), StatusImage::gauge100);
    EXPECT_EQ(item().toolTipTitle(), "Corvane");
    EXPECT_EQ(item().toolTipText(), "Keep-awake active");
    manager().resetAll();
    settle();
    EXPECT_EQ(item().image(), StatusImage::gauge50);
    EXPECT_EQ(item().toolTipText(), "Inactive");
}

TEST_F(MenuBarTest, FollowsTheFansTheLidAndTheAutomation) {
    startAgain();
    const std::vector<std::function<void(bool)>> switches = {
        [&](bool on) { manager().fan().setFansEnabled(on); },
        [&](bool on) { manager().lid().setEnabled(on); },
        [&](bool on) {
            manager().triggers().setKeepAwakeOnAC(on);
            manager().triggers().setAutomationEnabled(on);
        },
    };
    for (const auto& turn : switches) {
        turn(true);
        platform.helper.advance(1s);
        EXPECT_EQ(item().image(), StatusImage::gauge100);
        turn(false);
        platform.helper.advance(1s);
        EXPECT_EQ(item().image(), StatusImage::gauge50);
    }
}

TEST_F(MenuBarTest, ShowsTheSmoothedTemperatureBesideTheGaugeWhenThatIsWanted) {
    startAgain();
    EXPECT_EQ(item().title(), "");
    platform.defaults->set("showTempInMenuBar", true);
    platform.helper.advance(2s);
    EXPECT_EQ(item().title(), " 50°");
    platform.helper.mac.holdSensorsAt(64.5F);
    platform.helper.advance(60s);
    EXPECT_EQ(item().title(), " 64°") << "rounded as printf does";
    EXPECT_EQ(item().toolTipText(), "Inactive 64°") << "for those who cannot see the title";
    platform.defaults->set("showTempInMenuBar", false);
    platform.helper.advance(2s);
    EXPECT_EQ(item().title(), "");
}

TEST_F(MenuBarTest, ShowsNoTitleWithoutATemperature) {
    platform.isHelperInstalled = false;
    platform.storedAtFirst = {{"showTempInMenuBar", true}};
    startAgain();
    platform.helper.advance(5s);
    EXPECT_EQ(item().title(), "");
}

TEST_F(MenuBarTest, HoldsSystemAndDisplayForADayWithTheKeepAwakeKeyAndEndsThatWithTheNextPress) {
    startAgain();
    const WallTime pressed = platform.queue.wallTime();
    platform.keyboard->press('k');
    settle();
    EXPECT_EQ(manager().activeKinds(), (Kinds{Kind::system, Kind::display}));
    ASSERT_TRUE(manager().expiresAt());
    EXPECT_EQ(*manager().expiresAt() - pressed, hours(24));
    platform.keyboard->press('k');
    settle();
    EXPECT_THAT(manager().activeKinds(), IsEmpty());
    EXPECT_EQ(manager().expiresAt(), std::nullopt);
}

TEST_F(MenuBarTest, EndsAnySessionWithTheKeepAwakeKey) {
    startAgain();
    manager().apply({Kind::network}, std::nullopt);
    platform.keyboard->press('k');
    settle();
    EXPECT_THAT(manager().activeKinds(), IsEmpty());
}

TEST_F(MenuBarTest, SwitchesTheFansWithTheirKey) {
    startAgain();
    platform.keyboard->press('l');
    settle();
    EXPECT_TRUE(manager().fan().fansEnabled());
    platform.keyboard->press('l');
    settle();
    EXPECT_FALSE(manager().fan().fansEnabled());
}

TEST_F(MenuBarTest, DoesNothingWithTheFansKeyWithoutAHelper) {
    platform.isHelperInstalled = false;
    startAgain();
    platform.keyboard->press('l');
    settle();
    EXPECT_FALSE(manager().fan().fansEnabled());
    EXPECT_FALSE(entry("Fans").isEnabled);
}

TEST_F(MenuBarTest, RegistersNoHotKeysWhenTheyAreSwitchedOff) {
    platform.storedAtFirst = {{"hotkeysEnabled", false}};
    startAgain();
    EXPECT_THAT(platform.keyboard->registered(), IsEmpty());
}

TEST_F(MenuBarTest, RegistersItsHotKeysWhenTheSettingIsNoBoolean) {
    platform.storedAtFirst = {{"hotkeysEnabled", std::string("no")}};
    startAgain();
    EXPECT_THAT(platform.keyboard->registered(), SizeIs(2));
}

TEST_F(MenuBarTest, OffersTheEverydayActionsInItsMenu) {
    startAgain();
    std::vector<std::string> labels;
    for (const StatusMenuEntry& found : item().menu()) {
        labels.push_back(found.label);
    }
    EXPECT_THAT(labels,
                ElementsAre("Open Corvane", "", "Stay awake", "Fans", "Stop everything", "", "Quit Corvane"));

    choose("Open Corvane");
    EXPECT_TRUE(shown.popover->isShown());

    choose("Stay awake");
    EXPECT_EQ(manager().activeKinds(), (Kinds{Kind::system, Kind::display}));
    EXPECT_EQ(entry("Stay awake").isChecked, true);
    choose("Stay awake");
    EXPECT_EQ(entry("Stay awake").isChecked, false);

    EXPECT_FALSE(entry("Stop everything").isEnabled);
    choose("Fans");
    EXPECT_EQ(entry("Fans").isChecked, true);
    EXPECT_TRUE(entry("Stop everything").isEnabled);
    choose("Stop everything");
    EXPECT_FALSE(manager().anythingActive());
}

TEST_F(MenuBarTest, SpeaksGermanInItsMenu) {
    platform.storedAtFirst = {{"appLanguage", std::string("de")}};
    startAgain();
    std::vector<std::string> labels;
    for (const StatusMenuEntry& found : item().menu()) {
        labels.push_back(found.label);
    }
    EXPECT_THAT(labels, ElementsAre("Corvane öffnen", "", "Wach bleiben", "Lüfter", "Alles beenden", "",
                                    "Corvane beenden"));
    EXPECT_EQ(item().toolTipText(), "Inaktiv");
}

TEST_F(MenuBarTest, EndsTheApplicationFromItsMenu) {
    platform.loop.scripted(1s, [this] { choose("Quit Corvane"); });
    startAgain();
    EXPECT_EQ(platform.loop.run(), 0);
}

TEST_F(MenuBarTest, HearsNothingMoreOnceItIsGone) {
    startAgain();
    platform.keyboard->press('k');
    manager().apply({Kind::system}, std::nullopt);
    menuBar.reset();
    settle();
    EXPECT_EQ(manager().activeKinds(), (Kinds{Kind::system})) << "the press came too late";
}

}  // namespace
}  // namespace corvane
