// The program as the application, in a process of its own: loaded, run to a signal, and refused where it is
// not installed.

#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/ChildProcess.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

using Arguments = std::vector<std::string>;

constexpr const char* builtProgram = CORVANE_PROGRAM;

class ApplicationProgramTest : public testing::Test {
protected:
    void SetUp() override {
        if (bus.problem()) {
            GTEST_SKIP() << *bus.problem();
        }
    }

    [[nodiscard]] std::map<std::string, std::string> environment() const {
        return {{"CORVANE_SMC", "simulated"},
                {"CORVANE_HELPER_BUS", bus.address()},
                {"DBUS_SESSION_BUS_ADDRESS", bus.address()},
                {"DBUS_SYSTEM_BUS_ADDRESS", bus.address()},
                {"XDG_CONFIG_HOME", folder.path().string()},
                {"XDG_RUNTIME_DIR", folder.path().string()},
                {"QT_QPA_PLATFORM", "offscreen"}};
    }

    /// A copy of the executable where no module is.
    [[nodiscard]] std::string lonelyProgram() const {
        const auto copy = folder.path() / "bin" / "corvane";
        std::filesystem::create_directory(copy.parent_path());
        std::filesystem::copy_file(builtProgram, copy);
        return copy.string();
    }

    PrivateBus bus;
    TemporaryFolder folder;
};

TEST_F(ApplicationProgramTest, RunsUntilATerminationSignalEndsItWell) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        SCOPED_TRACE(strsignal(signal));
        ChildProcess application(builtProgram, {}, environment());
        ASSERT_TRUE(application.waitForError("Corvane: there is no fan helper to connect to"))
            << application.errors();
        application.signal(signal);
        EXPECT_EQ(application.wait(), 0) << application.errors();
    }
}

TEST_F(ApplicationProgramTest, IsWhatEveryUnknownArgumentAsksFor) {
    for (const Arguments& arguments : {Arguments{"--Daemon"}, {"--help"}, {"--smc-write", "F0Md"}}) {
        ChildProcess application(builtProgram, arguments, environment());
        EXPECT_TRUE(application.waitForError("Corvane: the fan helper is ")) << application.errors();
        application.signal(SIGTERM);
        EXPECT_EQ(application.wait(), 0) << application.errors();
    }
}

TEST_F(ApplicationProgramTest, SaysThatItIsNotInstalledWithoutItsModule) {
    ChildProcess application(lonelyProgram(), {}, environment());
    EXPECT_EQ(application.wait(), 1);
    EXPECT_THAT(
        application.errors(),
        StartsWith("corvane: the application is not installed: there is no libcorvane-app.so beside "));
    EXPECT_THAT(application.errors(), EndsWith("/lib/corvane\n"));
}

TEST_F(ApplicationProgramTest, SaysWhyAModuleCannotBeLoaded) {
    const std::string copy = lonelyProgram();
    std::ofstream(folder.path() / "bin" / "libcorvane-app.so") << "no module";
    ChildProcess application(copy, {}, environment());
    EXPECT_EQ(application.wait(), 1);
    EXPECT_THAT(application.errors(), StartsWith("corvane: the application cannot be loaded: "));
    EXPECT_THAT(application.errors(), HasSubstr("libcorvane-app.so"));
}

TEST_F(ApplicationProgramTest, FindsItsModuleInTheLibraryFolderOfItsPrefix) {
    const std::string copy = lonelyProgram();
    const auto library = folder.path() / "lib" / "corvane";
    std::filesystem::create_directories(library);
    std::filesystem::copy_file(CORVANE_MODULE, library / "libcorvane-app.so");
    ChildProcess application(copy, {}, environment());
    EXPECT_TRUE(application.waitForError("Corvane: the fan helper is ")) << application.errors();
    application.signal(SIGTERM);
    EXPECT_EQ(application.wait(), 0) << application.errors();
}

TEST_F(ApplicationProgramTest, SaysThatThereIsNoDisplay) {
    std::map<std::string, std::string> blind = environment();
    blind["QT_QPA_PLATFORM"] = "";
    blind["DISPLAY"] = "";
    blind["WAYLAND_DISPLAY"] = "";
    ChildProcess application(builtProgram, {}, blind);
    EXPECT_EQ(application.wait(), 1);
    EXPECT_EQ(application.errors(),
              "corvane: there is no display to show anything on: neither DISPLAY nor "
              "WAYLAND_DISPLAY leads to one\n");
}

TEST_F(ApplicationProgramTest, EndsAtOnceWhenItRunsAlready) {
    ChildProcess first(builtProgram, {}, environment());
    ASSERT_TRUE(first.waitForError("Corvane: the fan helper is ")) << first.errors();
    ChildProcess second(builtProgram, {}, environment());
    EXPECT_EQ(second.wait(), 0) << second.errors();
    EXPECT_EQ(second.errors(), "");
    first.signal(SIGTERM);
    EXPECT_EQ(first.wait(), 0) << first.errors();
    ChildProcess third(builtProgram, {}, environment());
    EXPECT_TRUE(third.waitForError("Corvane: the fan helper is ")) << "the first one has left";
    third.signal(SIGTERM);
    EXPECT_EQ(third.wait(), 0);
}

}  // namespace
}  // namespace corvane
