#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/installer/AppleScriptSource.h"
#include "app/installer/LaunchdRemovalScript.h"
#include "app/installer/LaunchdUninstaller.h"
#include "platform/simulated/MemoryUserDefaults.h"
#include "platform/simulated/SimulatedLocale.h"
#include "tests/app/installer/NotedFiles.h"
#include "tests/app/installer/NotedScripting.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class NotedLoginItem final : public LoginItem {
public:
    explicit NotedLoginItem(Steps& steps) : steps_(steps) {}

    [[nodiscard]] bool isEnabled() const override { return true; }
    bool setEnabled(bool on) override {
        steps_.emplace_back(on ? "login item on" : "login item off");
        return false;
    }

private:
    Steps& steps_;
};

class NotedDefaults final : public UserDefaults {
public:
    explicit NotedDefaults(Steps& steps) : steps_(steps) {}

    [[nodiscard]] std::optional<DefaultsValue> value(std::string_view /*key*/) const override {
        return std::nullopt;
    }
    void set(std::string_view key, DefaultsValue /*value*/) override {
        steps_.push_back(fmt::format("set {}", key));
    }
    void remove(std::string_view key) override { steps_.push_back(fmt::format("forget {}", key)); }
    void removeAll() override { steps_.emplace_back("forget all settings"); }

private:
    Steps& steps_;
};

class NotedTrash final : public Trash {
public:
    explicit NotedTrash(Steps& steps) : steps_(steps) {}

    void moveThere(const std::filesystem::path& path) override { steps_.push_back("trash " + path.string()); }

private:
    Steps& steps_;
};

constexpr const char* appBundle = "/Applications/It's Corvane.app";

class LaunchdUninstallerTest : public testing::Test {
protected:
    [[nodiscard]] LaunchdUninstaller uninstaller(std::optional<std::string> identifier) {
        return {{.scripting = scripting,
                 .lang = lang,
                 .loginItem = loginItem,
                 .defaults = defaults,
                 .files = files,
                 .trash = trash},
                {.bundle = appBundle, .home = "/Users/me", .identifier = std::move(identifier)}};
    }

    /// What `done` got; it must come once, before the removal returns.
    InstallResult remove() {
        std::vector<InstallResult> results;
        uninstaller("de.tavrin.corvane").performPrivilegedRemoval([&](InstallResult result) {
            results.push_back(std::move(result));
        });
        EXPECT_EQ(results.size(), 1U);
        return results.empty() ? InstallResult::failure("never done") : results.front();
    }

    static AppleScriptResult failure(int number, std::optional<std::string> message) {
        return {AppleScriptResult::Outcome::failure, number, std::move(message)};
    }

    MemoryUserDefaults language;
    SimulatedLocale locale;
    Lang lang{language, locale};
    Steps steps;
    NotedFiles files{steps};
    NotedScripting scripting{steps, files};
    NotedLoginItem loginItem{steps};
    NotedDefaults defaults{steps};
    NotedTrash trash{steps};
};

TEST(LaunchdRemovalScript, RemovesEachThingWhateverBecomesOfTheOthers) {
    EXPECT_EQ(launchdRemovalScript("/Applications/Corvane.app", {}),
              "launchctl bootout system/de.tavrin.corvane.smchelper 2>/dev/null || true\n"
              "rm -f '/Library/PrivilegedHelperTools/de.tavrin.corvane'\n"
              "rm -f '/Library/LaunchDaemons/de.tavrin.corvane.smchelper.plist'\n"
              "rm -f '/var/log/corvane-smchelper.log'\n"
              "pkgutil --forget de.tavrin.corvane.pkg 2>/dev/null || true\n"
              "rm -rf '/Applications/Corvane.app' 2>/dev/null || true\n"
              "exit 0");
}

TEST(LaunchdRemovalScript, QuotesThePathOfTheBundle) {
    EXPECT_THAT(launchdRemovalScript(appBundle, {}),
                testing::HasSubstr(R"(rm -rf '/Applications/It'"'"'s Corvane.app' 2>/dev/null || true)"));
}

TEST_F(LaunchdUninstallerTest, ShowsOnePromptInTheLanguageOfTheMoment) {
    const std::string script = launchdRemovalScript(appBundle, {});
    language.set(Lang::setting, std::string("de"));
    EXPECT_EQ(remove(), InstallResult::success());
    language.set(Lang::setting, std::string("en"));
    EXPECT_EQ(remove(), InstallResult::success());
    EXPECT_THAT(
        scripting.sources,
        ElementsAre(
            appleScriptSource(script,
                              "Corvane entfernt sein Hintergrund-Hilfswerkzeug und sich selbst vollständig."),
            appleScriptSource(script, "Corvane will remove its background helper and itself completely.")));
    EXPECT_THAT(steps, ElementsAre("run", "run")) << "nothing else is done to the machine";
}

TEST_F(LaunchdUninstallerTest, TellsADismissedPromptFromAFailure) {
    scripting.result = failure(-128, "User canceled.");
    EXPECT_EQ(remove(), InstallResult::cancelled());
    EXPECT_THAT(steps, ElementsAre("run")) << "the user's traces stay";
}

TEST_F(LaunchdUninstallerTest, SaysWhatFailedInGermanWhereTheSystemHasNoWords) {
    language.set(Lang::setting, std::string("en"));
    scripting.result = failure(1, "The script timed out.");
    EXPECT_EQ(remove(), InstallResult::failure("The script timed out."));
    scripting.result = failure(-60005, std::nullopt);
    EXPECT_EQ(remove(), InstallResult::failure("unbekannter Fehler"));
    scripting.result.outcome = AppleScriptResult::Outcome::notCreated;
    EXPECT_EQ(remove(), InstallResult::failure("AppleScript konnte nicht erstellt werden"));
}

TEST_F(LaunchdUninstallerTest, ClearsTheUsersTracesInOrderWhateverFails) {
    uninstaller("de.tavrin.corvane").clearUserTraces();
    EXPECT_THAT(steps,
                ElementsAre("login item off", "forget all settings", "forget onboardingSeenVersion",
                            "forget loginChoiceMade",
                            "remove all of /Users/me/Library/Preferences/de.tavrin.corvane.plist",
                            "remove all of /Users/me/Library/Caches/de.tavrin.corvane",
                            "remove all of /Users/me/Library/HTTPStorages/de.tavrin.corvane",
                            "remove all of /Users/me/Library/HTTPStorages/de.tavrin.corvane.binarycookies",
                            "remove all of /Users/me/Library/WebKit/de.tavrin.corvane",
                            std::string("trash ") + appBundle));
    EXPECT_THAT(scripting.sources, IsEmpty()) << "nobody is asked for a password";
}

TEST_F(LaunchdUninstallerTest, LeavesWhatIsNamedAfterAnIdentifierThatItDoesNotKnow) {
    uninstaller(std::nullopt).clearUserTraces();
    EXPECT_THAT(steps, ElementsAre("login item off", "forget onboardingSeenVersion", "forget loginChoiceMade",
                                   std::string("trash ") + appBundle));
}

}  // namespace
}  // namespace corvane
