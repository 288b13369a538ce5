// The removal script under a real shell, with the system's tools replaced by ones that note what they are
// asked and fail, in a folder that stands for the system's.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/installer/LaunchdRemovalScript.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

using testing::ElementsAre;

class LaunchdRemovalScriptRunTest : public testing::Test {
protected:
    LaunchdRemovalScriptRunTest() {
        for (const char* tool : {"launchctl", "pkgutil"}) {
            folder.writeProgram(std::string("tools/") + tool,
                                "#!/bin/sh\necho \"${0##*/} $*\" >>\"$NOTES\"\necho no >&2\nexit 1\n");
        }
    }

    void install() const {
        for (const char* file : {"it's installed/helper", "it's installed/list", "it's installed/log",
                                 "it's \"my\" $HOME.app/Contents/corvane"}) {
            folder.write(file, "");
        }
    }

    int run() {
        const EnvironmentVariable path("PATH", ((folder / "tools").string() + ":/usr/bin:/bin").c_str());
        const std::string script = launchdRemovalScript(folder / "it's \"my\" $HOME.app",
                                                        {.helper = folder / "it's installed/helper",
                                                         .propertyList = folder / "it's installed/list",
                                                         .log = folder / "it's installed/log"});
        ChildProcess shell("/bin/sh", {"-c", script}, {{"NOTES", (folder / "notes").string()}});
        const int status = shell.wait();
        errors = shell.errors();
        return status;
    }

    TemporaryFolder folder;
    std::string errors;
};

TEST_F(LaunchdRemovalScriptRunTest, RemovesWhatHasQuotesInItsPathThoughTheSystemsToolsFail) {
    install();
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(folder.read("notes"),
              "launchctl bootout system/de.tavrin.corvane.smchelper\n"
              "pkgutil --forget de.tavrin.corvane.pkg\n");
    EXPECT_THAT(folder.names(), ElementsAre("it's installed", "notes", "tools"));
    EXPECT_TRUE(std::filesystem::is_empty(folder / "it's installed"));
    EXPECT_EQ(errors, "");
}

TEST_F(LaunchdRemovalScriptRunTest, SucceedsWhereNothingWasInstalled) {
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(errors, "");
}

TEST_F(LaunchdRemovalScriptRunTest, IsNotHeldUpByWhatCannotBeRemoved) {
    install();
    std::filesystem::remove(folder / "it's installed/helper");
    folder.write("it's installed/helper/a folder in its place", "");
    EXPECT_EQ(run(), 0);
    EXPECT_THAT(folder.names(), ElementsAre("it's installed", "notes", "tools"));
    EXPECT_FALSE(std::filesystem::exists(folder / "it's installed/list"));
    EXPECT_FALSE(std::filesystem::exists(folder / "it's installed/log"));
}

}  // namespace
}  // namespace corvane
