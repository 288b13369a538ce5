// The whole application on the platform of a Mac, over fakes of all that it takes of one.

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/application/Application.h"
#include "app/application/MenuBar.h"
#include "app/shell/BuildInfo.h"
#include "platform/HotKeyService.h"
#include "platform/PowerAssertions.h"
#include "platform/macos/AutoreleasePool.h"
#include "platform/select/LaunchdAppPlatform.h"
#include "platform/simulated/VirtualTime.h"
#include "tests/app/application/RecordingViews.h"
#include "tests/platform/macos/fakes/AppKit/FakeApplication.h"
#include "tests/platform/macos/fakes/AppKit/FakeMenuBar.h"
#include "tests/platform/macos/fakes/AppKit/FakeWorkspace.h"
#include "tests/platform/macos/fakes/Carbon/FakeHotKeys.h"
#include "tests/platform/macos/fakes/CoreFoundation/FakeMessagePorts.h"
#include "tests/platform/macos/fakes/CoreGraphics/FakeDisplays.h"
#include "tests/platform/macos/fakes/Foundation/FakeAppleEvents.h"
#include "tests/platform/macos/fakes/Foundation/FakeAppleScript.h"
#include "tests/platform/macos/fakes/Foundation/FakeBundles.h"
#include "tests/platform/macos/fakes/Foundation/FakeLocale.h"
#include "tests/platform/macos/fakes/Foundation/FakeSystemLog.h"
#include "tests/platform/macos/fakes/Foundation/FakeThermalState.h"
#include "tests/platform/macos/fakes/Foundation/FakeUserDefaults.h"
#include "tests/platform/macos/fakes/Foundation/FakeVolumes.h"
#include "tests/platform/macos/fakes/Foundation/FakeWeb.h"
#include "tests/platform/macos/fakes/Foundation/XPC/FakeXpc.h"
#include "tests/platform/macos/fakes/IOKit/FakePowerManagement.h"
#include "tests/platform/macos/fakes/IOKit/FakePowerSources.h"
#include "tests/platform/macos/fakes/ServiceManagement/FakeLoginItems.h"
#include "tests/platform/macos/fakes/UserNotifications/FakeUserNotifications.h"
#include "tests/platform/macos/fakes/dispatch/FakeDispatch.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr std::uint32_t placeOfK = 40;
constexpr std::uint32_t optionCommand = HotKeyModifier::option | HotKeyModifier::command;

class MacApplicationTest : public testing::Test {
protected:
    /// With a user who has seen the introduction of this version and started this build before.
    void start() {
        platform.emplace();
        const auto defaults = platform->makeUserDefaults();
        defaults->set("onboardingSeenVersion", std::string(BuildInfo::version));
        defaults->set("lastLaunchedBuild", std::string(BuildInfo::buildNumber));
        instance = platform->makeSingleInstance();
        ASSERT_EQ(instance->claim([this] { menuBar->openPanel(); }).role, StartRole::first);
        application.emplace(*platform);
        menuBar.emplace(*platform, *application, shown.views());
        menuBar->start();
        settle();
    }
    void settle() { time.advance(1ms); }

    [[nodiscard]] std::vector<std::string> heldAssertions() const {
        std::vector<std::string> types;
        for (const auto& [id, assertion] : power.held()) {
            types.push_back(assertion.type);
        }
        return types;
    }

    TemporaryFolder disk;
    VirtualTime time;
    FakeDispatch dispatch{time};
    FakeSystemLog systemLog;
    FakeApplication appKit;
    FakeMenuBar bar;
    FakeWorkspace workspace;
    FakeHotKeys keyboard;
    FakeMessagePorts ports;
    FakeDisplays displays;
    FakeAppleEvents appleEvents;
    FakeAppleScript scripting;
    FakeBundles bundles{"de.tavrin.corvane", (disk / "Corvane.app").string()};
    FakeLocale locale{{"de-DE", "en"}};
    FakeThermalState heat;
    FakeUserDefaults stored;
    FakeVolumes volumes;
    FakeWeb web;
    FakeXpc xpc;
    FakePowerManagement power;
    FakePowerSources sources;
    FakeLoginItems loginItems;
    FakeUserNotifications notifications;
    /// What is autoreleased goes before the world does that it lives in.
    AutoreleasePool pool;

    RecordingViews shown;
    std::optional<LaunchdAppPlatform> platform;
    std::unique_ptr<SingleInstance> instance;
    std::optional<Application> application;
    std::optional<MenuBar> menuBar;
};

TEST_F(MacApplicationTest, ShowsItsGaugeAndOpensThePanelBelowItInFrontOfAllOthers) {
    start();
    ASSERT_EQ(bar.items().size(), 1U);
    EXPECT_EQ(bar.items().front().image, "gauge.with.dots.needle.bottom.50percent");
    EXPECT_EQ(appKit.presence(), FakeApplication::Presence::accessory);
    bar.placeItemsAt({1000, 876, 24, 24});
    bar.click();
    settle();
    EXPECT_THAT(shown.popover->openings, ElementsAre(QPoint(1012, 24)));
    EXPECT_EQ(appKit.activations(), 1);
    bar.click();
    settle();
    EXPECT_FALSE(shown.popover->isShown());
}

TEST_F(MacApplicationTest, KeepsTheMacAwakeByItsHotKeyUntilTheNextPress) {
    start();
    ASSERT_TRUE(keyboard.press(placeOfK, optionCommand));
    time.advance(1s);
    EXPECT_THAT(heldAssertions(),
                testing::UnorderedElementsAre(PowerAssertions::preventUserIdleSystemSleep,
                                              PowerAssertions::preventUserIdleDisplaySleep));
    EXPECT_EQ(bar.items().front().image, "gauge.with.dots.needle.bottom.100percent");
    ASSERT_TRUE(keyboard.press(placeOfK, optionCommand));
    time.advance(1s);
    EXPECT_THAT(heldAssertions(), IsEmpty());
    EXPECT_EQ(bar.items().front().image, "gauge.with.dots.needle.bottom.50percent");
}

TEST_F(MacApplicationTest, EndsASessionOnTimeAlsoWhenTheMacHasSleptMeanwhile) {
    start();
    application->manager().apply({SleepManager::Kind::system}, time.wallTime() + 1h);
    time.advance(5min);
    dispatch.suspend(50min);
    time.advance(4min);
    EXPECT_THAT(heldAssertions(), ElementsAre(PowerAssertions::preventUserIdleSystemSleep));
    time.advance(2min);
    EXPECT_THAT(heldAssertions(), IsEmpty());
}

TEST_F(MacApplicationTest, SpeaksTheSystemsLanguageInItsMenuAndDoesWhatIsChosen) {
    start();
    std::vector<std::string> labels;
    bar.setMenuUse([&](const FakeMenuBar::OpenMenu& menu) {
        for (const FakeMenuBar::MenuLine& line : menu.lines) {
            labels.push_back(line.label);
        }
        return "Wach bleiben";
    });
    bar.rightClick();
    time.advance(1s);
    EXPECT_THAT(labels, ElementsAre("Corvane öffnen", "", "Wach bleiben", "Lüfter", "Alles beenden", "",
                                    "Corvane beenden"));
    EXPECT_EQ(heldAssertions().size(), 2U);
    EXPECT_THAT(shown.popover->openings, IsEmpty());
}

TEST_F(MacApplicationTest, OpensItsPanelWhenTheUserStartsItOnceMore) {
    start();
    appleEvents.finishLaunching();
    settle();
    appleEvents.reopen();
    settle();
    EXPECT_EQ(shown.popover->openings.size(), 1U);
}

TEST_F(MacApplicationTest, ShowsItsSettingsAsARegularApplication) {
    start();
    menuBar->menu().showSettings();
    settle();
    EXPECT_NE(shown.settingsWindow, nullptr);
    EXPECT_EQ(appKit.presence(), FakeApplication::Presence::regular);
}

TEST_F(MacApplicationTest, OffersTheNewerVersionThatItsFeedTellsOf) {
    if (*BuildInfo::updateFeed == '\0') {
        GTEST_SKIP() << "built without a feed";
    }
    web.set(BuildInfo::updateFeed, {.body = {R"({"shortVersion":"999.0"})"}});
    start();
    EXPECT_THAT(web.asked(), ElementsAre(BuildInfo::updateFeed));
    EXPECT_EQ(application->manager().updates().latestVersion(), "999.0");
}

/// Its assertions the system takes back with the process.
TEST_F(MacApplicationTest, GivesItsPlacesBackAtItsEnd) {
    start();
    EXPECT_EQ(keyboard.registered().size(), 2U);
    menuBar.reset();
    application.reset();
    EXPECT_THAT(bar.items(), IsEmpty());
    EXPECT_THAT(keyboard.registered(), IsEmpty());
    EXPECT_EQ(appKit.observers(), 0);
}

TEST_F(MacApplicationTest, InstallsTheHelperOfItsBundleBehindAPromptInTheUsersLanguage) {
    const auto helper = disk.write("Corvane.app/Contents/Resources/corvane-helper", "the helper");
    platform.emplace();
    std::optional<InstallResult> result;
    platform->makeHelperInstaller()->install([&](const InstallResult& ended) { result = ended; });
    EXPECT_EQ(result, InstallResult::success());
    ASSERT_EQ(scripting.sources().size(), 1U);
    EXPECT_THAT(scripting.sources().front(), HasSubstr("cp '" + helper.string() + "' "));
    EXPECT_THAT(scripting.sources().front(),
                HasSubstr("with prompt \"Corvane installiert ein Hilfswerkzeug zur Lüftersteuerung."));
}

TEST_F(MacApplicationTest, RemovesItsBundle) {
    platform.emplace();
    const auto loginItem = platform->makeLoginItem();
    const auto defaults = platform->makeUserDefaults();
    platform->makeUninstaller(*loginItem, *defaults)->performPrivilegedRemoval([](const auto&) {});
    ASSERT_EQ(scripting.sources().size(), 1U);
    EXPECT_THAT(scripting.sources().front(), HasSubstr("rm -rf '" + (disk / "Corvane.app").string() + "' "));
}

class UnbundledMacApplicationTest : public testing::Test {
protected:
    TemporaryFolder disk;
    VirtualTime time;
    FakeDispatch dispatch{time};
    FakeSystemLog systemLog;
    FakeAppleScript scripting;
    FakeBundles bundles{std::nullopt, disk.path().string()};
    FakeUserDefaults stored;
    FakeLoginItems loginItems;
    LaunchdAppPlatform platform;
};

TEST_F(UnbundledMacApplicationTest, RemovesNothingOfWhatItLiesAmong) {
    const auto loginItem = platform.makeLoginItem();
    const auto defaults = platform.makeUserDefaults();
    const auto uninstaller = platform.makeUninstaller(*loginItem, *defaults);
    uninstaller->performPrivilegedRemoval([](const auto&) {});
    ASSERT_EQ(scripting.sources().size(), 1U);
    EXPECT_THAT(scripting.sources().front(), Not(HasSubstr(disk.path().string())));
    uninstaller->clearUserTraces();
    EXPECT_TRUE(std::filesystem::exists(disk.path()));
}

TEST_F(UnbundledMacApplicationTest, HasNoHelperToInstall) {
    std::optional<InstallResult> result;
    platform.makeHelperInstaller()->install([&](const InstallResult& ended) { result = ended; });
    EXPECT_EQ(result, InstallResult::failure("Standalone helper binary not found in app bundle"));
    EXPECT_THAT(scripting.sources(), IsEmpty());
}

}  // namespace
}  // namespace corvane
