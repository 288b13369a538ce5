#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include "platform/macos/PmsetSleepSetting.h"
#include "tests/platform/macos/HeldSignalsKept.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

/// A tool of the test's own, which notes what it is asked.
class PmsetSleepSettingTest : public testing::Test {
protected:
    std::string toolThat(const std::string& does) {
        const std::filesystem::path tool = folder.path() / "tool";
        std::ofstream(tool) << fmt::format("#!/bin/sh\n{}\n", does);
        std::filesystem::permissions(tool, std::filesystem::perms::owner_all);
        return tool;
    }

    [[nodiscard]] std::string noted() const {
        std::ifstream file(folder.path() / "noted");
        return {std::istreambuf_iterator<char>(file), {}};
    }

    [[nodiscard]] std::string noteInto() const { return fmt::format(">> {}/noted", folder.path().string()); }

    TemporaryFolder folder;
};

std::size_t openDescriptors() {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}));
}

/// No descriptor can be opened while it lives.
class NoMoreDescriptors {
public:
    NoMoreDescriptors() {
        getrlimit(RLIMIT_NOFILE, &usual_);
        const rlimit none{0, usual_.rlim_max};
        setrlimit(RLIMIT_NOFILE, &none);
    }
    NoMoreDescriptors(const NoMoreDescriptors&) = delete;
    NoMoreDescriptors& operator=(const NoMoreDescriptors&) = delete;
    ~NoMoreDescriptors() { setrlimit(RLIMIT_NOFILE, &usual_); }

private:
    rlimit usual_{};
};

TEST_F(PmsetSleepSettingTest, RunsTheSystemsTool) {
    EXPECT_STREQ(PmsetSleepSetting::systemTool, "/usr/bin/pmset");
}

TEST_F(PmsetSleepSettingTest, RunsTheToolEachTimeWithItsThreeArguments) {
    PmsetSleepSetting setting(toolThat("echo $# \"$@\" " + noteInto()));
    EXPECT_EQ(setting.setSleepDisabled(true), std::nullopt);
    EXPECT_EQ(setting.setSleepDisabled(true), std::nullopt);
    EXPECT_EQ(setting.setSleepDisabled(false), std::nullopt);
    EXPECT_EQ(noted(), "3 -a disablesleep 1\n3 -a disablesleep 1\n3 -a disablesleep 0\n");
}

TEST_F(PmsetSleepSettingTest, DoesNotLookAtTheToolsStatus) {
    PmsetSleepSetting setting(toolThat("exit 3"));
    EXPECT_EQ(setting.setSleepDisabled(true), std::nullopt);
}

TEST_F(PmsetSleepSettingTest, TellsWhyTheToolCannotBeStarted) {
    PmsetSleepSetting setting(folder.path() / "nowhere");
    EXPECT_EQ(setting.setSleepDisabled(true), "No such file or directory");
}

TEST_F(PmsetSleepSettingTest, StartsTheToolWithoutTheHelpersHeldSignals) {
    const HeldSignalsKept kept;
    blockTerminationSignals();
    std::signal(SIGTERM, SIG_IGN);
    PmsetSleepSetting setting(toolThat("kill -TERM $$; echo lived " + noteInto()));
    EXPECT_EQ(setting.setSleepDisabled(true), std::nullopt);
    EXPECT_EQ(noted(), "");
}

TEST_F(PmsetSleepSettingTest, EndsAToolByForceThatOutlastsItsPatience) {
    PmsetSleepSetting setting(toolThat("exec sleep 3600"), std::chrono::milliseconds(0));
    EXPECT_EQ(setting.setSleepDisabled(true), "the tool did not end in time");
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "it still runs, or nobody took note of its end";
    EXPECT_EQ(errno, ECHILD);
}

TEST_F(PmsetSleepSettingTest, HasLessPatienceThanTheHelperHasWithASilentApplication) {
    EXPECT_LT(PmsetSleepSetting::usualPatience, std::chrono::seconds(6));
}

TEST_F(PmsetSleepSettingTest, LeavesNoDescriptorOpenHoweverTheToolEnds) {
    const std::size_t before = openDescriptors();
    PmsetSleepSetting(toolThat("exit 0")).setSleepDisabled(true);
    EXPECT_EQ(openDescriptors(), before);
    PmsetSleepSetting(folder.path() / "nowhere").setSleepDisabled(true);
    EXPECT_EQ(openDescriptors(), before);
    PmsetSleepSetting(toolThat("exec sleep 3600"), std::chrono::milliseconds(0)).setSleepDisabled(true);
    EXPECT_EQ(openDescriptors(), before);
}

TEST_F(PmsetSleepSettingTest, HandsTheToolNothingOfItsPipeButStandardInput) {
    PmsetSleepSetting setting(
        toolThat("pipe=$(readlink /proc/$$/fd/0)\n"
                 "for each in /proc/$$/fd/*; do\n"
                 "    [ \"$(readlink $each)\" != \"$pipe\" ] || echo ${each##*/} " +
                 noteInto() + "\ndone"));
    EXPECT_EQ(setting.setSleepDisabled(true), std::nullopt);
    EXPECT_EQ(noted(), "0\n");
}

TEST_F(PmsetSleepSettingTest, TellsThatThereAreNoDescriptorsLeft) {
    PmsetSleepSetting setting(folder.path() / "nowhere");
    // Fails before as well: UBSan looks at an object of a class that it has not seen by way of a pipe.
    ASSERT_EQ(setting.setSleepDisabled(true), "No such file or directory");
    const NoMoreDescriptors none;
    EXPECT_EQ(setting.setSleepDisabled(true), "Too many open files");
}

}  // namespace
}  // namespace corvane
