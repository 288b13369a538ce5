// The installer with a program in pkexec's place that does what a test says. How it fares with the real one
// is tested on a whole system.

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QFileSystemWatcher>
#include <QTimer>
#include <cerrno>
#include <csignal>
#include <map>
#include <optional>
#include <vector>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pthread.h>

#include "platform/linux/desktop/PkexecInstaller.h"
#include "platform/posix/HeldSignals.h"
#include "platform/posix/PosixFileSystem.h"
#include "tests/support/Notes.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// What the application does with its signals, for as long as it lasts.
class HeldSignals {
public:
    HeldSignals() {
        pthread_sigmask(SIG_SETMASK, nullptr, &mask_);
        for (const int signal : {SIGTERM, SIGINT, SIGHUP, SIGPIPE}) {
            handlers_[signal] = std::signal(signal, SIG_DFL);
        }
        blockTerminationSignals();
    }
    HeldSignals(const HeldSignals&) = delete;
    HeldSignals& operator=(const HeldSignals&) = delete;
    ~HeldSignals() {
        for (const auto& [signal, handler] : handlers_) {
            std::signal(signal, handler);
        }
        pthread_sigmask(SIG_SETMASK, &mask_, nullptr);
    }

private:
    sigset_t mask_{};
    std::map<int, void (*)(int)> handlers_;
};

class PkexecInstallerTest : public testing::Test {
protected:
    PkexecInstallerTest() {
        folder.write("own/corvane-helper", "new program");
        pkexecDoes("exit 0");
    }

    ~PkexecInstallerTest() override {
        installer.reset();
        // As the end of the application's main loop does.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    /// What runs in pkexec's place: shell commands, in a folder of their own.
    void pkexecDoes(const std::string& commands) const {
        folder.writeProgram("pkexec",
                            fmt::format("#!/bin/sh\ncd '{}'\n{}\n", folder.path().string(), commands));
    }

    [[nodiscard]] PkexecInstaller::Paths paths() const {
        return {.folder = folder / "own",
                .installed = {folder / "installed/program", folder / "installed/activation"},
                .packaged = {folder / "packaged/program", folder / "packaged/activation"},
                .pkexec = folder / "pkexec"};
    }

    void begin() {
        installer->install([this](InstallResult result) {
            results.push_back(std::move(result));
            if (loop_ != nullptr) {
                loop_->quit();
            }
        });
    }

    /// Runs the main loop until a result has come.
    void awaitResult() {
        QEventLoop loop;
        loop_ = &loop;
        QTimer::singleShot(testPatience, &loop, &QEventLoop::quit);
        if (results.empty()) {
            loop.exec();
        }
        loop_ = nullptr;
    }

    InstallResult install() {
        results.clear();
        begin();
        awaitResult();
        EXPECT_EQ(results.size(), 1U);
        return results.empty() ? InstallResult::failure("never done") : results.front();
    }

    /// Runs the main loop until a file is there.
    bool awaitFile(const std::string& awaited) {
        QEventLoop loop;
        QFileSystemWatcher watcher({QString::fromStdString(folder.path().string())});
        QObject::connect(&watcher, &QFileSystemWatcher::directoryChanged, [&] {
            if (files.isFile(folder / awaited)) {
                loop.quit();
            }
        });
        QTimer::singleShot(testPatience, &loop, &QEventLoop::quit);
        if (!files.isFile(folder / awaited)) {
            loop.exec();
        }
        return files.isFile(folder / awaited);
    }

    int argumentCount = 1;
    char name[5] = "test";
    char* arguments[2] = {name, nullptr};
    QCoreApplication application{argumentCount, arguments};

    TemporaryFolder folder;
    PosixFileSystem files;
    std::unique_ptr<PkexecInstaller> installer = std::make_unique<PkexecInstaller>(files, paths());
    std::vector<InstallResult> results;

private:
    QEventLoop* loop_ = nullptr;
};

TEST_F(PkexecInstallerTest, IsInstalledWithBothFilesOfOneKind) {
    EXPECT_FALSE(installer->isInstalled());
    for (const std::string kind : {"installed", "packaged"}) {
        folder.write(kind + "/program", "");
        EXPECT_FALSE(installer->isInstalled());
        folder.write(kind + "/activation", "");
        EXPECT_TRUE(installer->isInstalled());
        std::filesystem::remove(folder / (kind + "/program"));
        EXPECT_FALSE(installer->isInstalled());
    }
    folder.write("installed/program", "");
    std::filesystem::remove(folder / "installed/activation");
    EXPECT_FALSE(installer->isInstalled()) << "a program of one kind and an activation of the other";
}

TEST_F(PkexecInstallerTest, NeedsAnUpdateWhenTheInstalledProgramIsAnotherOne) {
    folder.write("installed/program", "old program");
    EXPECT_FALSE(installer->needsUpdate()) << "not installed";
    folder.write("installed/activation", "");
    EXPECT_TRUE(installer->needsUpdate());
    folder.write("installed/program", "new program");
    EXPECT_FALSE(installer->needsUpdate());
    folder.write("installed/program", "new progral");
    EXPECT_TRUE(installer->needsUpdate());
    std::filesystem::remove(folder / "own/corvane-helper");
    EXPECT_FALSE(installer->needsUpdate()) << "nothing to compare with";
}

TEST_F(PkexecInstallerTest, LeavesUpdatesOfAPackagedHelperToThePackageManager) {
    folder.write("packaged/program", "old program");
    folder.write("packaged/activation", "");
    EXPECT_TRUE(installer->isInstalled());
    EXPECT_FALSE(installer->needsUpdate());
    folder.write("installed/program", "old program");
    folder.write("installed/activation", "");
    EXPECT_TRUE(installer->needsUpdate()) << "the installed one is the one that runs";
}

TEST_F(PkexecInstallerTest, RunsTheScriptOfItsFolderOnceWithoutAnArgument) {
    pkexecDoes("for word; do echo \"$word\" >>words; done");
    EXPECT_EQ(install(), InstallResult::success());
    EXPECT_EQ(folder.read("words"),
              fmt::format("--disable-internal-agent\n{}\n", (folder / "own/install-helper").string()));
}

TEST_F(PkexecInstallerTest, PassesOnAnyPathAsItIs) {
    pkexecDoes("echo \"$2\" >script");
    auto odd = paths();
    odd.folder = folder / "it's an \"odd\" $PATH `x`; \\ ü";
    folder.write(odd.folder.filename().string() + "/corvane-helper", "");
    installer = std::make_unique<PkexecInstaller>(files, odd);
    EXPECT_EQ(install(), InstallResult::success());
    EXPECT_EQ(folder.read("script"), (odd.folder / "install-helper").string() + '\n');
}

TEST_F(PkexecInstallerTest, TellsHowPkexecEnded) {
    pkexecDoes("exit 126");
    EXPECT_EQ(install(), InstallResult::cancelled());
    pkexecDoes("exit 127");
    EXPECT_EQ(install(), InstallResult::failure("Not authorized"));
    pkexecDoes("echo 'some output'; echo 'a warning' >&2; echo 'the disk is full' >&2; exit 1");
    EXPECT_EQ(install(), InstallResult::failure("the disk is full"));
    pkexecDoes("kill -KILL $$");
    EXPECT_EQ(install(), InstallResult::failure("the installation was interrupted"));
    pkexecDoes("exit 0");
    EXPECT_EQ(install(), InstallResult::success());
}

TEST_F(PkexecInstallerTest, LeavesPkexecTheSignalsThatTheApplicationHolds) {
    const HeldSignals held;
    for (const char* signal : {"TERM", "INT", "HUP", "PIPE"}) {
        pkexecDoes(fmt::format("kill -{} $$", signal));
        EXPECT_EQ(install(), InstallResult::failure("the installation was interrupted")) << signal;
    }
}

TEST_F(PkexecInstallerTest, KeepsNoMoreThanTheEndOfWhatIsWritten) {
    pkexecDoes("head -c 3000000 /dev/zero | tr '\\0' x >&2; echo >&2; echo 'the reason' >&2; exit 1");
    EXPECT_EQ(install(), InstallResult::failure("the reason"));
    pkexecDoes("head -c 3000000 /dev/zero | tr '\\0' x >&2; exit 1");
    EXPECT_EQ(install(), InstallResult::failure(std::string(200, 'x') + "…"));
}

TEST_F(PkexecInstallerTest, SaysThatPkexecIsMissing) {
    std::filesystem::remove(folder / "pkexec");
    EXPECT_EQ(install(), InstallResult::failure("pkexec is not installed"));
    EXPECT_EQ(install(), InstallResult::failure("pkexec is not installed"));
}

TEST_F(PkexecInstallerTest, AsksNobodyWithoutAHelperToInstall) {
    std::filesystem::remove(folder / "own/corvane-helper");
    pkexecDoes("touch ran");
    EXPECT_EQ(install(), InstallResult::failure("Standalone helper binary not found in app bundle"));
    EXPECT_FALSE(files.isFile(folder / "ran"));
}

TEST_F(PkexecInstallerTest, ReturnsWhileThePromptIsUp) {
    pkexecDoes("echo >started; while [ ! -e answer ]; do sleep 0.01; done");
    begin();
    ASSERT_TRUE(awaitFile("started"));
    EXPECT_THAT(results, IsEmpty());
    folder.write("answer", "");
    awaitResult();
    EXPECT_THAT(results, ElementsAre(InstallResult::success()));
}

TEST_F(PkexecInstallerTest, TakesThePromptAwayWhenItIsDestroyed) {
    pkexecDoes("echo $$ >starting; mv starting started; exec sleep 1000");
    begin();
    ASSERT_TRUE(awaitFile("started"));
    installer.reset();
    EXPECT_EQ(kill(std::stoi(folder.read("started")), 0), -1);
    EXPECT_EQ(errno, ESRCH);
    QCoreApplication::processEvents();
    EXPECT_THAT(results, IsEmpty());
}

TEST_F(PkexecInstallerTest, MayBeDestroyedByItsResult) {
    std::optional<InstallResult> result;
    QEventLoop loop;
    installer->install([&](InstallResult last) {
        installer.reset();
        result = std::move(last);
        loop.quit();
    });
    QTimer::singleShot(testPatience, &loop, &QEventLoop::quit);
    loop.exec();
    EXPECT_EQ(result, InstallResult::success());
}

}  // namespace
}  // namespace corvane
