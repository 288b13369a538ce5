#include <filesystem>
#include <fstream>
#include <string>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/desktop/ApplicationUnit.h"
#include "platform/linux/desktop/ProcessApplications.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class ProcessApplicationsTest : public testing::Test {
protected:
    void SetUp() override {
        install("org.blender.Blender", "blender %f");
        folder.write("proc/self/exe", "");
        folder.write("proc/uptime", "1.0 1.0\n");
    }

    /// Until nothing is looked at any more that has not changed.
    void settle() {
        for (int scan = 0; scan < 4; ++scan) {
            static_cast<void>(processes.scan());
        }
    }

    void install(const std::string& identifier, const std::string& command) const {
        folder.write(fmt::format("applications/{}.desktop", identifier),
                     fmt::format("[Desktop Entry]\nType=Application\nExec={}\n", command));
    }

    /// A process that runs this program.
    void run(int number, const std::string& program) const {
        std::filesystem::create_directories(processPath(number, ""));
        std::filesystem::remove(processPath(number, "exe"));
        std::filesystem::create_symlink(program, processPath(number, "exe"));
        write(number, "cmdline", program + '\0');
    }

    void write(int number, const std::string& file, const std::string& content) const {
        folder.write(fmt::format("proc/{}/{}", number, file), content);
    }

    void end(int number) const { std::filesystem::remove_all(processPath(number, "")); }

    [[nodiscard]] std::filesystem::path processPath(int number, const std::string& file) const {
        return folder / fmt::format("proc/{}/{}", number, file);
    }

    static std::string inScope(const std::string& unit) {
        return fmt::format("0::/user.slice/user-1000.slice/user@1000.service/app.slice/{}\n", unit);
    }

    static std::string startedBy(const std::string& path, const std::string& number) {
        return fmt::format(
            "HOME=/home/ann{0}GIO_LAUNCHED_DESKTOP_FILE={1}{0}"
            "GIO_LAUNCHED_DESKTOP_FILE_PID={2}{0}",
            '\0', path, number);
    }

    const TemporaryFolder folder;
    ProcessApplications processes{DesktopFiles({(folder / "applications").string()}),
                                  (folder / "proc").string()};
};

TEST_F(ProcessApplicationsTest, KnowTheControlGroup) {
    run(10, "/usr/bin/anything");
    write(10, "cgroup", inScope("app-gnome-org.gnome.Maps-10.scope"));
    EXPECT_THAT(processes.scan(), ElementsAre("org.gnome.Maps"));
}

TEST_F(ProcessApplicationsTest, KnowTheControlGroupOfOlderSystems) {
    run(10, "/usr/bin/anything");
    write(10, "cgroup",
          "12:pids:/user.slice\n1:name=systemd:/user.slice/app-org.kde.kate@1.service\n0::/user.slice\n");
    EXPECT_THAT(processes.scan(), ElementsAre("org.kde.kate"));
}

TEST_F(ProcessApplicationsTest, KnowTheSandbox) {
    run(10, "/app/bin/main");
    write(10, "cgroup", "0::/user.slice/session-2.scope\n");
    write(10, "root/.flatpak-info", "[Instance]\nname=wrong\n[Application]\nname=org.x.Boxed\nruntime=y\n");
    EXPECT_THAT(processes.scan(), ElementsAre("org.x.Boxed"));
}

TEST_F(ProcessApplicationsTest, KnowWhatADesktopStarted) {
    run(10, "/usr/lib/launcher");
    write(10, "environ", startedBy("/usr/share/applications/kde/org.x.Tool.desktop", "10"));
    run(11, "/usr/lib/child");
    write(11, "environ", startedBy("/usr/share/applications/org.x.Parent.desktop", "10"));
    run(12, "/usr/lib/odd");
    write(12, "environ", startedBy("/tmp/odd.desktop", "12"));
    run(13, "/usr/lib/bad");
    write(13, "environ", startedBy("/tmp/not-a-desktop-file", "13"));
    EXPECT_THAT(processes.scan(), ElementsAre("kde-org.x.Tool", "odd"));
}

TEST_F(ProcessApplicationsTest, KnowTheProgram) {
    run(10, "/opt/somewhere/blender");
    EXPECT_THAT(processes.scan(), ElementsAre("org.blender.Blender"));
}

TEST_F(ProcessApplicationsTest, KnowAProgramThatWasUpdated) {
    run(10, "/usr/bin/blender (deleted)");
    EXPECT_THAT(processes.scan(), ElementsAre("org.blender.Blender"));
}

TEST_F(ProcessApplicationsTest, KnowTheNameThatAProgramRunsUnder) {
    run(10, "/usr/lib/blender-4.2.bin");
    write(10, "cmdline", std::string("/usr/bin/blender\0-b\0", 20));
    EXPECT_THAT(processes.scan(), ElementsAre("org.blender.Blender"));
}

TEST_F(ProcessApplicationsTest, KnowAScript) {
    run(10, "/usr/bin/python3.11");
    write(10, "cmdline", std::string("/usr/bin/python3\0/usr/bin/blender\0", 34));
    EXPECT_THAT(processes.scan(), ElementsAre("org.blender.Blender"));
}

TEST_F(ProcessApplicationsTest, DoNotTakeAnArgumentForTheProgram) {
    run(10, "/usr/bin/less");
    write(10, "cmdline", std::string("less\0/usr/bin/blender\0", 22));
    EXPECT_THAT(processes.scan(), IsEmpty());
}

TEST_F(ProcessApplicationsTest, FollowStartsAndEnds) {
    EXPECT_THAT(processes.scan(), IsEmpty());
    run(10, "/usr/bin/blender");
    EXPECT_THAT(processes.scan(), ElementsAre("org.blender.Blender"));
    end(10);
    EXPECT_THAT(processes.scan(), IsEmpty());
}

TEST_F(ProcessApplicationsTest, CountAnApplicationUntilItsLastProcessEnds) {
    run(10, "/usr/bin/blender");
    run(11, "/usr/bin/blender");
    EXPECT_THAT(processes.scan(), ElementsAre("org.blender.Blender"));
    end(10);
    EXPECT_THAT(processes.scan(), ElementsAre("org.blender.Blender"));
}

TEST_F(ProcessApplicationsTest, NoticeAnotherProgramInTheSameProcess) {
    run(10, "/usr/bin/bash");
    settle();
    EXPECT_THAT(processes.scan(), IsEmpty());
    run(10, "/usr/bin/blender");
    EXPECT_THAT(processes.scan(), ElementsAre("org.blender.Blender"));
}

TEST_F(ProcessApplicationsTest, NoticeAProcessThatIsPutIntoItsGroupLater) {
    run(10, "/usr/bin/anything");
    write(10, "cgroup", inScope("session-2.scope"));
    EXPECT_THAT(processes.scan(), IsEmpty());
    write(10, "cgroup", inScope("app-org.x.Y-1.scope"));
    EXPECT_THAT(processes.scan(), ElementsAre("org.x.Y"));
}

TEST_F(ProcessApplicationsTest, LookAtASettledProcessNoMore) {
    run(10, "/usr/bin/anything");
    write(10, "cgroup", inScope("app-first-1.scope"));
    settle();
    // In place: nothing about the process itself changes.
    std::filesystem::resize_file(processPath(10, "cgroup"), 0);
    EXPECT_THAT(processes.scan(), ElementsAre("first"));
}

TEST_F(ProcessApplicationsTest, KnowAnApplicationThatIsInstalledWhileItRuns) {
    run(10, "/usr/bin/fresh");
    settle();
    EXPECT_THAT(processes.scan(), IsEmpty());
    install("org.x.Fresh", "fresh");
    EXPECT_THAT(processes.scan(), ElementsAre("org.x.Fresh"));
}

TEST_F(ProcessApplicationsTest, PassOverWhatCannotBeRead) {
    run(10, "/usr/bin/blender");
    folder.write("proc/11/cgroup", inScope("app-zombie-1.scope"));
    folder.write("proc/12", "not even a folder");
    run(13, "/usr/bin/anything");
    write(13, "cgroup", "nonsense");
    write(13, "environ", std::string(1'000'000, '\xff'));
    ASSERT_EQ(mkfifo(processPath(13, "root").c_str(), 0600), 0);
    run(14, "/usr/bin/anything");
    write(14, "root/.flatpak-info", "[Application]\nname=../../etc\n");
    run(15, "/usr/bin/anything");
    std::filesystem::remove(processPath(15, "cmdline"));
    ASSERT_EQ(mkfifo(processPath(15, "cmdline").c_str(), 0600), 0);
    EXPECT_THAT(processes.scan(), ElementsAre("org.blender.Blender"));
}

TEST_F(ProcessApplicationsTest, OfOthersAreNotTheUsers) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can make another user's process";
    }
    run(10, "/usr/bin/blender");
    ASSERT_EQ(chown(processPath(10, "").c_str(), 65534, 65534), 0);
    EXPECT_THAT(processes.scan(), IsEmpty());
}

TEST_F(ProcessApplicationsTest, NeedNotBeThere) {
    EXPECT_THAT(ProcessApplications(DesktopFiles({}), "/no/such/folder").scan(), IsEmpty());
}

std::string controlGroup() {
    std::ifstream file("/proc/self/cgroup");
    std::string line;
    std::getline(file, line);
    return line;
}

TEST(RealProcesses, ShowThisTest) {
    const TemporaryFolder folder;
    const std::string own = std::filesystem::read_symlink("/proc/self/exe").filename().string();
    folder.write("this.test.desktop",
                 fmt::format("[Desktop Entry]\nType=Application\nExec={}\nTryExec={}\n", own, own));
    if (applicationOfControlGroup(controlGroup())) {
        GTEST_SKIP() << "this test was started by an application, and belongs to it";
    }
    ProcessApplications processes(DesktopFiles({folder.path().string()}));
    EXPECT_THAT(processes.scan(), Contains("this.test"));
    EXPECT_THAT(processes.scan(), Contains("this.test"));
}

}  // namespace
}  // namespace corvane
