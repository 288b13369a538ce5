#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/installer/AppleScriptSource.h"
#include "app/installer/LaunchdInstaller.h"
#include "app/installer/LaunchdPropertyList.h"
#include "app/installer/LaunchdScript.h"
#include "platform/posix/PosixFileSystem.h"
#include "platform/simulated/MemoryUserDefaults.h"
#include "platform/simulated/SimulatedLocale.h"
#include "tests/app/installer/NotedFiles.h"
#include "tests/app/installer/NotedScripting.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* bundled = "/Applications/It's Corvane.app/Contents/Resources/corvane-helper";
constexpr const char* list = "/tmp/user/de.tavrin.switchyard.smchelper.plist";
constexpr const char* installedHelper = "/Library/PrivilegedHelperTools/de.tavrin.corvane";
constexpr const char* installedList = "/Library/LaunchDaemons/de.tavrin.corvane.smchelper.plist";
constexpr const char* english =
    "Corvane is installing a small helper for fan control. After this, everything runs without further "
    "password prompts.";
constexpr const char* german =
    "Corvane installiert ein Hilfswerkzeug zur Lüftersteuerung. Danach läuft alles ohne weitere "
    "Passwort-Abfragen.";

class LaunchdInstallerTest : public testing::Test {
protected:
    LaunchdInstallerTest() { files.contents[bundled] = "new program"; }

    /// What `done` got; it must come once, before `install` returns.
    InstallResult install() {
        std::vector<InstallResult> results;
        installer.install([&](InstallResult result) { results.push_back(std::move(result)); });
        EXPECT_EQ(results.size(), 1U);
        return results.empty() ? InstallResult::failure("never done") : results.front();
    }

    static AppleScriptResult failure(int number, std::optional<std::string> message) {
        return {AppleScriptResult::Outcome::failure, number, std::move(message)};
    }

    MemoryUserDefaults defaults;
    SimulatedLocale locale;
    Lang lang{defaults, locale};
    Steps steps;
    NotedFiles files{steps};
    NotedScripting scripting{steps, files};
    LaunchdInstaller installer{
        files, scripting, lang, {.bundledHelper = bundled, .temporaryFolder = "/tmp/user"}};
};

TEST_F(LaunchdInstallerTest, IsInstalledWithBothFilesOnly) {
    EXPECT_FALSE(installer.isInstalled());
    files.contents[installedHelper] = "";
    EXPECT_FALSE(installer.isInstalled());
    files.contents[installedList] = "";
    EXPECT_TRUE(installer.isInstalled());
    files.contents.erase(installedHelper);
    EXPECT_FALSE(installer.isInstalled());
}

TEST_F(LaunchdInstallerTest, NeedsAnUpdateWhenTheInstalledProgramIsAnotherOne) {
    files.contents[installedHelper] = "old program";
    EXPECT_FALSE(installer.needsUpdate()) << "not installed";
    files.contents[installedList] = "";
    EXPECT_TRUE(installer.needsUpdate());
    files.contents[installedHelper] = "new program";
    EXPECT_FALSE(installer.needsUpdate());
    files.contents[installedHelper] = "new progral";
    EXPECT_TRUE(installer.needsUpdate());
    files.contents.erase(bundled);
    EXPECT_FALSE(installer.needsUpdate()) << "nothing to compare with";
}

TEST_F(LaunchdInstallerTest, ShowsOnePromptAndRemovesTheTemporaryFileAfterwards) {
    EXPECT_EQ(install(), InstallResult::success());
    EXPECT_THAT(steps, ElementsAre(std::string("write ") + list, "run", std::string("remove ") + list));
    EXPECT_EQ(scripting.seen.at(list), makePlist({}));
    EXPECT_THAT(scripting.sources, ElementsAre(appleScriptSource(launchdScript(bundled, list, {}), english)));
    EXPECT_FALSE(files.contents.contains(list));
}

TEST_F(LaunchdInstallerTest, PromptsInTheLanguageOfTheMoment) {
    defaults.set(Lang::setting, std::string("de"));
    EXPECT_EQ(install(), InstallResult::success());
    defaults.set(Lang::setting, std::string("en"));
    EXPECT_EQ(install(), InstallResult::success());
    const std::string script = launchdScript(bundled, list, {});
    EXPECT_THAT(scripting.sources,
                ElementsAre(appleScriptSource(script, german), appleScriptSource(script, english)));
}

TEST_F(LaunchdInstallerTest, TellsADismissedPromptFromAFailure) {
    scripting.result = failure(-128, "User canceled.");
    EXPECT_EQ(install(), InstallResult::cancelled());
    EXPECT_THAT(steps, ElementsAre(std::string("write ") + list, "run", std::string("remove ") + list));
}

TEST_F(LaunchdInstallerTest, PassesOnWhyTheScriptFailed) {
    scripting.result = failure(1, "cp: No space left on device");
    EXPECT_EQ(install(), InstallResult::failure("cp: No space left on device"));
    scripting.result = failure(-60005, std::nullopt);
    EXPECT_EQ(install(), InstallResult::failure("unknown error"));
    EXPECT_FALSE(files.contents.contains(list));
}

TEST_F(LaunchdInstallerTest, SaysThatTheScriptWasRefusedAndLeavesNothingBehind) {
    scripting.result.outcome = AppleScriptResult::Outcome::notCreated;
    EXPECT_EQ(install(), InstallResult::failure("Failed to create AppleScript"));
    EXPECT_FALSE(files.contents.contains(list));
}

TEST_F(LaunchdInstallerTest, SaysThatItCannotWriteAndAsksNobody) {
    files.writeError = "No space left on device";
    EXPECT_EQ(install(), InstallResult::failure("Could not write plist: No space left on device"));
    EXPECT_THAT(scripting.sources, IsEmpty());
}

TEST_F(LaunchdInstallerTest, WritesNothingWithoutAHelperInTheBundle) {
    files.contents.erase(bundled);
    const auto missing = InstallResult::failure("Standalone helper binary not found in app bundle");
    EXPECT_EQ(install(), missing);
    LaunchdInstaller without(files, scripting, lang,
                             {.bundledHelper = std::nullopt, .temporaryFolder = "/tmp/user"});
    without.install([&](const InstallResult& result) { EXPECT_EQ(result, missing); });
    EXPECT_FALSE(without.needsUpdate());
    EXPECT_THAT(steps, IsEmpty());
}

TEST_F(LaunchdInstallerTest, LeavesNoRealFileBehindWhenThePromptIsDismissed) {
    const TemporaryFolder folder;
    PosixFileSystem real;
    const auto helper = folder.write("bundle/corvane-helper", "program");
    std::filesystem::create_directory(folder / "temporary");
    scripting.result = failure(-128, std::nullopt);
    LaunchdInstaller onDisk(real, scripting, lang,
                            {.bundledHelper = helper, .temporaryFolder = folder / "temporary"});
    std::vector<InstallResult> results;
    onDisk.install([&](const InstallResult& result) { results.push_back(result); });
    EXPECT_THAT(results, ElementsAre(InstallResult::cancelled()));
    EXPECT_THAT(folder.names(), ElementsAre("bundle", "temporary"));
    EXPECT_TRUE(std::filesystem::is_empty(folder / "temporary"));
}

}  // namespace
}  // namespace corvane
