// Installation and removal over a Mac's own services: what AppleScript gets, and what its endings come to.

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/installer/AppleScriptSource.h"
#include "app/installer/LaunchdInstaller.h"
#include "app/installer/LaunchdRemovalScript.h"
#include "app/installer/LaunchdScript.h"
#include "app/installer/LaunchdUninstaller.h"
#include "app/shell/Lang.h"
#include "platform/macos/desktop/MacAppleScript.h"
#include "platform/macos/desktop/MacLocale.h"
#include "platform/macos/desktop/MacLoginItem.h"
#include "platform/macos/desktop/MacTrash.h"
#include "platform/macos/desktop/MacUserDefaults.h"
#include "platform/macos/desktop/MainBundle.h"
#include "platform/posix/PosixFileSystem.h"
#include "platform/simulated/RecordingLog.h"
#include "tests/platform/macos/fakes/Foundation/FakeAppleScript.h"
#include "tests/platform/macos/fakes/Foundation/FakeBundles.h"
#include "tests/platform/macos/fakes/Foundation/FakeLocale.h"
#include "tests/platform/macos/fakes/Foundation/FakeTrash.h"
#include "tests/platform/macos/fakes/Foundation/FakeUserDefaults.h"
#include "tests/platform/macos/fakes/ServiceManagement/FakeLoginItems.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;
using Error = FakeAppleScript::Error;

class LaunchdInstallationTest : public testing::Test {
protected:
    InstallResult install() {
        LaunchdInstaller installer(
            files, scripting, lang,
            {.bundledHelper = MainBundle::resource("corvane-helper"), .temporaryFolder = folder.path()});
        std::optional<InstallResult> result;
        installer.install([&](InstallResult ended) { result = std::move(ended); });
        return result.value_or(InstallResult::failure("not ended"));
    }

    LaunchdUninstaller makeUninstaller() {
        return LaunchdUninstaller(
            {scripting, lang, loginItem, defaults, files, trash},
            {.bundle = MainBundle::path(), .home = folder / "home", .identifier = MainBundle::identifier()});
    }
    InstallResult remove() {
        std::optional<InstallResult> result;
        makeUninstaller().performPrivilegedRemoval([&](InstallResult ended) { result = std::move(ended); });
        return result.value_or(InstallResult::failure("not ended"));
    }

    const TemporaryFolder folder;
    const fs::path bundle = folder / "Jürgen's \"Corvane\".app";
    const fs::path helper =
        folder.write("Jürgen's \"Corvane\".app/Contents/Resources/corvane-helper", "program");
    FakeBundles bundles{"de.tavrin.corvane", bundle.string()};
    FakeUserDefaults storedSettings;
    FakeLocale languages{{"de-CH"}};
    FakeAppleScript system;
    FakeLoginItems loginItems;
    FakeTrash trashed;

    RecordingLog log;
    MacUserDefaults defaults{log};
    MacLocale locale;
    Lang lang{defaults, locale};
    PosixFileSystem files;
    MacAppleScript scripting;
    MacLoginItem loginItem{log};
    MacTrash trash;
};

TEST_F(LaunchdInstallationTest, RunsTheScriptThatInstallsTheHelper) {
    const fs::path list = folder / "de.tavrin.switchyard.smchelper.plist";
    bool isListThere = false;
    system.whileRunning([&] { isListThere = fs::exists(list); });
    EXPECT_EQ(install(), InstallResult::success());
    EXPECT_THAT(system.sources(),
                ElementsAre(appleScriptSource(
                    launchdScript(helper, list, {}),
                    "Corvane installiert ein Hilfswerkzeug zur Lüftersteuerung. Danach läuft alles ohne "
                    "weitere Passwort-Abfragen.")));
    EXPECT_TRUE(isListThere);
    EXPECT_FALSE(fs::exists(list));
}

TEST_F(LaunchdInstallationTest, TellsHowTheInstallationEnded) {
    system.endWith(Error{.number = -128, .message = "User canceled."});
    EXPECT_EQ(install(), InstallResult::cancelled());
    system.endWith(Error{.number = 1, .message = "cp: Zugriff verweigert"});
    EXPECT_EQ(install(), InstallResult::failure("cp: Zugriff verweigert"));
    system.endWith(Error{.number = 1});
    EXPECT_EQ(install(), InstallResult::failure("unknown error"));
    system.endWith(Error{.isMissing = true});
    EXPECT_EQ(install(), InstallResult::failure("unknown error"));
    system.refuseSources();
    EXPECT_EQ(install(), InstallResult::failure("Failed to create AppleScript"));
}

TEST_F(LaunchdInstallationTest, AsksNobodyWithoutAHelperInTheBundle) {
    fs::remove(helper);
    EXPECT_EQ(install(), InstallResult::failure("Standalone helper binary not found in app bundle"));
    EXPECT_THAT(system.sources(), IsEmpty());
}

TEST_F(LaunchdInstallationTest, RunsTheScriptThatRemovesEverything) {
    EXPECT_EQ(remove(), InstallResult::success());
    EXPECT_THAT(system.sources(),
                ElementsAre(appleScriptSource(
                    launchdRemovalScript(bundle, {}),
                    "Corvane entfernt sein Hintergrund-Hilfswerkzeug und sich selbst vollständig.")));
}

TEST_F(LaunchdInstallationTest, TellsHowTheRemovalEnded) {
    system.endWith(Error{.number = -128});
    EXPECT_EQ(remove(), InstallResult::cancelled());
    system.endWith(Error{.number = 1});
    EXPECT_EQ(remove(), InstallResult::failure("unbekannter Fehler"));
    system.refuseSources();
    EXPECT_EQ(remove(), InstallResult::failure("AppleScript konnte nicht erstellt werden"));
}

TEST_F(LaunchdInstallationTest, ClearsWhatTheUserHasOfIt) {
    EXPECT_TRUE(loginItem.setEnabled(true));
    defaults.set("onboardingSeenVersion", std::string("1.0"));
    defaults.set("heatAlerts", true);
    static_cast<void>(folder.write("home/Library/Caches/de.tavrin.corvane/file", "text"));
    static_cast<void>(folder.write("home/Library/Preferences/de.tavrin.corvane.plist", "text"));
    static_cast<void>(folder.write("home/Library/Preferences/org.example.other.plist", "text"));
    makeUninstaller().clearUserTraces();
    EXPECT_FALSE(loginItem.isEnabled());
    EXPECT_THAT(storedSettings.storedKeys("de.tavrin.corvane"), IsEmpty());
    EXPECT_FALSE(fs::exists(folder / "home/Library/Caches/de.tavrin.corvane"));
    EXPECT_FALSE(fs::exists(folder / "home/Library/Preferences/de.tavrin.corvane.plist"));
    EXPECT_TRUE(fs::exists(folder / "home/Library/Preferences/org.example.other.plist"));
    EXPECT_THAT(trashed.contents(), ElementsAre(bundle.string()));
}

}  // namespace
}  // namespace corvane
