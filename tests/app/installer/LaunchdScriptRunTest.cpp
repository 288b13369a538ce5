// The installation script under a real shell, with the system's tools replaced by ones that note what they
// are asked, in a folder that stands for the system's.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/installer/LaunchdScript.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class LaunchdScriptRunTest : public testing::Test {
protected:
    LaunchdScriptRunTest() {
        for (const char* tool : {"launchctl", "chown", "chmod", "mkdir", "sleep"}) {
            replace(tool, "exit 0");
        }
    }

    /// From now on `tool` notes its call and then does what `body` says.
    void replace(const std::string& tool, const std::string& body) {
        folder.writeProgram("tools/" + tool, "#!/bin/sh\necho \"${0##*/} $*\" >>\"$NOTES\"\n" + body + '\n');
    }

    int run() {
        const EnvironmentVariable path("PATH", (tools.string() + ":/usr/bin:/bin").c_str());
        const std::string script =
            launchdScript(helper, list, {.helper = installedHelper, .propertyList = installedList});
        ChildProcess shell("/bin/sh", {"-c", script}, {{"NOTES", (folder / "notes").string()}});
        return shell.wait();
    }

    [[nodiscard]] std::string calls() const { return folder.read("notes"); }

    TemporaryFolder folder;
    std::filesystem::path tools = folder / "tools";
    std::filesystem::path helper = folder.write("it's an \"odd\" `place`/$HOME/helper", "new program");
    std::filesystem::path list = folder.write("it's temporary/list", "new list");
    std::filesystem::path installedHelper = folder.write("system's/helper", "old program");
    std::filesystem::path installedList = folder / "system's/list";
};

constexpr const char* reload =
    "launchctl bootout system/de.tavrin.corvane.smchelper\n"
    "sleep 1\n";

TEST_F(LaunchdScriptRunTest, InstallsFromAndToPathsWithQuotes) {
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(folder.read("system's/helper"), "new program");
    EXPECT_EQ(folder.read("system's/list"), "new list");
    const std::string at = folder.path().string();
    EXPECT_EQ(calls(),
              "mkdir -p /Library/PrivilegedHelperTools\n"
              "chown root:wheel " +
                  at +
                  "/system's/helper\n"
                  "chmod 755 " +
                  at +
                  "/system's/helper\n"
                  "chown root:wheel " +
                  at +
                  "/system's/list\n"
                  "chmod 644 " +
                  at + "/system's/list\n" + reload + "launchctl bootstrap system " + at +
                  "/system's/list\n"
                  "launchctl enable system/de.tavrin.corvane.smchelper\n"
                  "launchctl print system/de.tavrin.corvane.smchelper\n"
                  "launchctl kickstart system/de.tavrin.corvane.smchelper\n");
}

TEST_F(LaunchdScriptRunTest, FinishesAndTriesAgainThoughEveryStepOfLaunchctlFails) {
    replace("launchctl", "echo 'no such process' >&2; exit 3");
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(folder.read("system's/helper"), "new program");
    const std::string bootstrap = "launchctl bootstrap system " + installedList.string() + '\n';
    EXPECT_THAT(calls(), HasSubstr("launchctl print system/de.tavrin.corvane.smchelper\nsleep 1\n" +
                                   bootstrap + "launchctl kickstart system/de.tavrin.corvane.smchelper\n"));
}

TEST_F(LaunchdScriptRunTest, EndsBeforeItTouchesTheServiceWhenACopyFails) {
    std::filesystem::remove(list);
    EXPECT_NE(run(), 0);
    EXPECT_THAT(calls(), testing::Not(HasSubstr("launchctl")));
}

TEST_F(LaunchdScriptRunTest, EndsBeforeItTouchesTheServiceWhenAnOwnerCannotBeSet) {
    replace("chown", "exit 1");
    EXPECT_NE(run(), 0);
    EXPECT_THAT(calls(), StartsWith("mkdir"));
    EXPECT_THAT(calls(), testing::Not(HasSubstr("launchctl")));
}

}  // namespace
}  // namespace corvane
