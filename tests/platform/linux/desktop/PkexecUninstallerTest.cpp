// The uninstaller with a program in pkexec's place that does what a test says. How it fares with the real one
// is tested on a whole system; how pkexec's ways to end are told, with the installer.

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/desktop/JsonUserDefaults.h"
#include "platform/linux/desktop/PkexecUninstaller.h"
#include "platform/linux/desktop/PrivateBusUninstaller.h"
#include "platform/linux/desktop/XdgLoginItem.h"
#include "platform/posix/PosixFileSystem.h"
#include "platform/simulated/MemoryUserDefaults.h"
#include "platform/simulated/RecordingLog.h"
#include "platform/simulated/SimulatedLoginItem.h"
#include "tests/support/Notes.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// An environment of a test's own.
EnvironmentLookup environmentOf(std::map<std::string, std::string> values) {
    return [values = std::move(values)](const char* name) {
        const auto found = values.find(name);
        return found == values.end() ? nullptr : found->second.c_str();
    };
}

class PkexecUninstallerTest : public testing::Test {
protected:
    ~PkexecUninstallerTest() override {
        // As the end of the application's main loop does.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    /// What runs in pkexec's place: shell commands, in a folder of their own.
    void pkexecDoes(const std::string& commands) const {
        folder.writeProgram("pkexec",
                            fmt::format("#!/bin/sh\ncd '{}'\n{}\n", folder.path().string(), commands));
    }

    [[nodiscard]] std::vector<std::string> namesIn(const std::string& subfolder) const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder / subfolder)) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    InstallResult remove() {
        PkexecUninstaller uninstaller(
            loginItem, defaults, files,
            {.folder = folder / "own", .traces = {folder / "trace"}, .pkexec = folder / "pkexec"});
        std::optional<InstallResult> result;
        QEventLoop loop;
        uninstaller.performPrivilegedRemoval([&](InstallResult last) {
            EXPECT_FALSE(result) << "told twice";
            result = std::move(last);
            loop.quit();
        });
        QTimer::singleShot(testPatience, &loop, &QEventLoop::quit);
        if (!result) {
            loop.exec();
        }
        return result.value_or(InstallResult::failure("never done"));
    }

    int argumentCount = 1;
    char name[5] = "test";
    char* arguments[2] = {name, nullptr};
    QCoreApplication application{argumentCount, arguments};

    TemporaryFolder folder;
    PosixFileSystem files;
    SimulatedLoginItem loginItem;
    MemoryUserDefaults defaults;
};

TEST_F(PkexecUninstallerTest, RunsTheScriptOfItsFolderOnceWithoutAnArgument) {
    pkexecDoes("for word; do echo \"$word\" >>words; done");
    EXPECT_EQ(remove(), InstallResult::success());
    EXPECT_EQ(folder.read("words"),
              fmt::format("--disable-internal-agent\n{}\n", (folder / "own/uninstall").string()));
}

TEST_F(PkexecUninstallerTest, TellsHowTheRemovalEndedInOneLine) {
    pkexecDoes("exit 126");
    EXPECT_EQ(remove(), InstallResult::cancelled());
    pkexecDoes("echo 'a warning' >&2; echo 'dpkg is at work' >&2; exit 1");
    EXPECT_EQ(remove(), InstallResult::failure("dpkg is at work"));
    pkexecDoes("exit 3");
    EXPECT_EQ(remove(), InstallResult::failure("the removal ended with status 3"));
    pkexecDoes("kill -KILL $$");
    EXPECT_EQ(remove(), InstallResult::failure("the removal was interrupted"));
    std::filesystem::remove(folder / "pkexec");
    EXPECT_EQ(remove(), InstallResult::failure("pkexec is not installed"));
}

TEST_F(PkexecUninstallerTest, LeavesTheUsersTracesToTheSecondStep) {
    loginItem.setEnabled(true);
    folder.write("trace/file", "");
    for (const char* end : {"exit 0", "exit 1", "exit 126"}) {
        pkexecDoes(end);
        static_cast<void>(remove());
    }
    EXPECT_TRUE(loginItem.isEnabled());
    EXPECT_FALSE(defaults.isRemoved());
    EXPECT_TRUE(files.isFile(folder / "trace/file"));
}

TEST_F(PkexecUninstallerTest, ClearsTheUsersTracesThoughTheLoginItemCannotBeRemoved) {
    loginItem.setEnabled(true);
    loginItem.breakDown();
    folder.write("trace/deep/file", "");
    folder.write("other", "");
    PkexecUninstaller(loginItem, defaults, files,
                      {.folder = folder / "own", .traces = {folder / "missing", folder / "trace"}})
        .clearUserTraces();
    EXPECT_TRUE(defaults.isRemoved());
    EXPECT_THAT(folder.names(), ElementsAre("other"));
}

TEST_F(PkexecUninstallerTest, LeavesNothingInTheUsersFolders) {
    const EnvironmentLookup home = environmentOf({{"HOME", folder.path().string()}});
    RecordingLog log;
    XdgLoginItem item(files, log, autostartFile(home), "/opt/corvane/bin/corvane");
    JsonUserDefaults settings(settingsPath(home), log);
    item.setEnabled(true);
    settings.set("key", true);
    folder.write(".cache/de.tavrin.corvane/file", "");
    folder.write(".cache/Corvane/qmlcache/file", "");
    folder.write(".cache/other/file", "");
    folder.write(".config/other/settings.json", "");
    PkexecUninstaller uninstaller(item, settings, files,
                                  {.folder = folder / "own", .traces = userTraces(home)});
    const auto isClear = [this] {
        EXPECT_THAT(namesIn(".config"), ElementsAre("autostart", "other"));
        EXPECT_THAT(namesIn(".config/autostart"), IsEmpty());
        EXPECT_THAT(namesIn(".cache"), ElementsAre("other"));
    };
    uninstaller.clearUserTraces();
    isClear();

    folder.write(".config/autostart/de.tavrin.corvane.desktop",
                 "[Desktop Entry]\nType=Application\nHidden=true\n");
    uninstaller.clearUserTraces();
    isClear();
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST(UserTraces, AreWhereTheEnvironmentHasThem) {
    using Traces = std::vector<std::filesystem::path>;
    EXPECT_EQ(userTraces(environmentOf({{"HOME", "/home/me"}})),
              (Traces{"/home/me/.config/autostart/de.tavrin.corvane.desktop",
                      "/home/me/.cache/de.tavrin.corvane", "/home/me/.cache/Corvane"}));
    EXPECT_EQ(userTraces(environmentOf(
                  {{"HOME", "/home/me"}, {"XDG_CONFIG_HOME", "/config"}, {"XDG_CACHE_HOME", "/cache"}})),
              (Traces{"/config/autostart/de.tavrin.corvane.desktop", "/cache/de.tavrin.corvane",
                      "/cache/Corvane"}));
}

TEST(PrivateBusUninstaller, SaysInOneLineThatNothingIsInstalled) {
    std::vector<InstallResult> results;
    PrivateBusUninstaller uninstaller;
    uninstaller.performPrivilegedRemoval([&](InstallResult result) { results.push_back(std::move(result)); });
    EXPECT_THAT(results, ElementsAre(InstallResult::failure(
                             "with a helper on a private bus nothing is installed that could be removed")));
}

}  // namespace
}  // namespace corvane
