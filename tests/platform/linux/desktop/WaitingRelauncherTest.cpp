// The relauncher in an application of its own, whose successor writes down how it was started.

#include <array>
#include <csignal>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <fcntl.h>
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/posix/HeldSignals.h"
#include "platform/posix/WaitingRelauncher.h"
#include "platform/simulated/RecordingLog.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/Notes.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

/// A named pipe that everyone reports to, so that what came first is read first.
class Reports {
public:
    explicit Reports(const std::filesystem::path& path) {
        if (mkfifo(path.c_str(), S_IRUSR | S_IWUSR) == 0) {
            pipe_ = open(path.c_str(), O_RDWR | O_CLOEXEC);
        }
    }
    Reports(const Reports&) = delete;
    Reports& operator=(const Reports&) = delete;
    ~Reports() { close(pipe_); }

    void add(const std::string& text) const {
        EXPECT_EQ(write(pipe_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }

    /// All up to `last`, or what there is when patience is over.
    std::string readUntil(const std::string& last) {
        while (text_.find(last) == std::string::npos) {
            pollfd waiting{pipe_, POLLIN, 0};
            const auto patience = std::chrono::milliseconds(testPatience).count();
            std::array<char, 4096> buffer{};
            if (poll(&waiting, 1, static_cast<int>(patience)) != 1) {
                break;
            }
            const ssize_t size = read(pipe_, buffer.data(), buffer.size());
            text_.append(buffer.data(), size > 0 ? static_cast<std::size_t>(size) : 0);
        }
        return text_;
    }

private:
    int pipe_ = -1;
    std::string text_;
};

class WaitingRelauncherTest : public testing::Test {
protected:
    /// The successor's program, which reports with these commands of the shell.
    std::filesystem::path installSuccessor(const std::string& report) const {
        return folder.writeProgram(
            "successor",
            fmt::format("#!/bin/sh\n{{ echo successor; {}; echo end; }} > \"$REPORTS\"\n", report));
    }

    /// An application that relaunches `program` and then ends as `end` has it.
    pid_t startApplication(const std::filesystem::path& program, const std::function<void()>& end,
                           const std::vector<std::string>& arguments = {}) {
        const pid_t process = fork();
        if (process == 0) {
            // As the application has it.
            pthread_sigmask(SIG_BLOCK, &terminationSignals(), nullptr);
            std::signal(SIGPIPE, SIG_IGN);
            RecordingLog unread;
            std::vector<std::string> command = {program.string()};
            command.insert(command.end(), arguments.begin(), arguments.end());
            WaitingRelauncher(command, environ, unread).relaunch();
            reports.add("relaunched\n");
            end();
            _exit(0);
        }
        return process;
    }

    /// What the successor of an application reports that ends by itself.
    std::string reportedBySuccessor(const std::string& report) {
        const pid_t process =
            startApplication(installSuccessor(report), [this] { reports.add("application ends\n"); });
        std::string all = reports.readUntil("\nend\n");
        waitpid(process, nullptr, 0);
        return all;
    }

    const TemporaryFolder folder;
    Reports reports{folder / "reports"};
    const EnvironmentVariable place{"REPORTS", (folder / "reports").c_str()};
};

TEST_F(WaitingRelauncherTest, StartsTheSuccessorOnceTheApplicationHasEnded) {
    EXPECT_EQ(reportedBySuccessor("true"), "relaunched\napplication ends\nsuccessor\nend\n");
}

TEST_F(WaitingRelauncherTest, StartsTheSuccessorOfAnApplicationThatIsKilled) {
    const pid_t process = startApplication(installSuccessor("true"), [] {
        while (true) {
            pause();
        }
    });
    reports.readUntil("relaunched\n");
    reports.add("kill\n");
    kill(process, SIGKILL);
    EXPECT_EQ(reports.readUntil("\nend\n"), "relaunched\nkill\nsuccessor\nend\n");
    waitpid(process, nullptr, 0);
}

TEST_F(WaitingRelauncherTest, HandsTheEnvironmentOn) {
    const EnvironmentVariable display("WAYLAND_DISPLAY", "wayland-7");
    EXPECT_THAT(reportedBySuccessor(R"(echo "display $WAYLAND_DISPLAY")"), HasSubstr("display wayland-7\n"));
}

TEST_F(WaitingRelauncherTest, GivesTheSuccessorAnEmptyInput) {
    EXPECT_THAT(reportedBySuccessor("echo \"input $(wc -c)\""), HasSubstr("input 0\n"));
}

TEST_F(WaitingRelauncherTest, GivesTheSuccessorNoArgumentsOfItsOwn) {
    EXPECT_THAT(reportedBySuccessor(R"(echo "arguments $#")"), HasSubstr("arguments 0\n"));
}

TEST_F(WaitingRelauncherTest, HandsTheArgumentsOn) {
    const pid_t process = startApplication(installSuccessor(R"(for word; do echo "word $word"; done)"), [] {},
                                           {"-n", "/Applications/An odd $(touch x) 'name'.app"});
    EXPECT_EQ(reports.readUntil("\nend\n"),
              "relaunched\nsuccessor\nword -n\nword /Applications/An odd $(touch x) 'name'.app\nend\n");
    waitpid(process, nullptr, 0);
}

TEST_F(WaitingRelauncherTest, LetsTheSuccessorHearItsSignals) {
    const std::string report = reportedBySuccessor("grep -E '^Sig(Blk|Ign):' /proc/self/status");
    EXPECT_THAT(report, HasSubstr("SigBlk:\t0000000000000000\n"));
    const std::string name = "SigIgn:\t";
    const std::size_t at = report.find(name);
    ASSERT_NE(at, std::string::npos);
    const unsigned long ignored = std::stoul(report.substr(at + name.size()), nullptr, 16);
    EXPECT_EQ(ignored & (1UL << (SIGPIPE - 1)), 0U);
}

TEST_F(WaitingRelauncherTest, TakesAnyPathForTheProgram) {
    const auto program = installSuccessor("true");
    const auto odd = folder / "an odd $(touch x) 'name'";
    std::filesystem::rename(program, odd);
    const pid_t process = startApplication(odd, [] {});
    EXPECT_EQ(reports.readUntil("\nend\n"), "relaunched\nsuccessor\nend\n");
    waitpid(process, nullptr, 0);
}

TEST_F(WaitingRelauncherTest, LogsThatThereIsNothingToStart) {
    RecordingLog log;
    for (const auto& program :
         {folder / "missing", folder.write("no-program", "text"), std::filesystem::path()}) {
        log.clear();
        WaitingRelauncher({program.string()}, environ, log).relaunch();
        EXPECT_THAT(log.lines(), ElementsAre(StartsWith("Corvane relaunch failed: "))) << program;
    }
}

TEST_F(WaitingRelauncherTest, LogsNothingOtherwise) {
    RecordingLog log;
    // Waits for the end of this process then, and reports to nobody.
    WaitingRelauncher({"/bin/true"}, environ, log).relaunch();
    EXPECT_THAT(log.lines(), IsEmpty());
}

}  // namespace
}  // namespace corvane
