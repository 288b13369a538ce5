#include "tests/support/PrivateBus.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace corvane {

namespace {

constexpr const char* configuration = R"(<busconfig>
  <type>session</type>
  <listen>unix:path={0}/bus</listen>
  <auth>EXTERNAL</auth>
  <servicedir>{0}</servicedir>
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
    <allow user="*"/>
  </policy>
  <limit name="max_completed_connections">5000</limit>
  <limit name="max_incomplete_connections">5000</limit>
  <limit name="max_connections_per_user">5000</limit>
  <limit name="max_replies_per_connection">50000</limit>
</busconfig>
)";

std::string makeFolder() {
    std::string folder = (std::filesystem::temp_directory_path() / "corvane-bus-XXXXXX").string();
    return mkdtemp(folder.data()) == nullptr ? std::string() : folder;
}

std::string firstLineFrom(int descriptor) {
    std::string line;
    char next = 0;
    while (read(descriptor, &next, 1) == 1 && next != '\n') {
        line += next;
    }
    return line;
}

/// Runs in the forked child, where only plain system calls are safe.
[[noreturn]] void becomeDaemon(const char* config, int addressTo, pid_t parent) {
    // A test that crashes takes its bus with it.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) {
        _exit(1);
    }
    // A test may hold signals; its bus is not to.
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    dup2(addressTo, STDOUT_FILENO);
    execlp("dbus-daemon", "dbus-daemon", config, "--nofork", "--print-address=1", nullptr);
    _exit(1);
}

}  // namespace

PrivateBus::PrivateBus() : folder_(makeFolder()) {
    if (folder_.empty()) {
        problem_ = "no temporary folder for a message bus";
        return;
    }
    std::ofstream(folder_ + "/bus.conf") << fmt::format(configuration, folder_);
    start();
}

void PrivateBus::start() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        problem_ = fmt::format("no pipe for a message bus: {}", std::strerror(errno));
        return;
    }
    const std::string config = "--config-file=" + folder_ + "/bus.conf";
    const pid_t parent = getpid();
    daemon_ = fork();
    if (daemon_ == 0) {
        becomeDaemon(config.c_str(), ends[1], parent);
    }
    close(ends[1]);
    address_ = daemon_ < 0 ? std::string() : firstLineFrom(ends[0]);
    if (address_.empty()) {
        problem_ = "dbus-daemon is not installed or does not start";
    }
    close(ends[0]);
}

PrivateBus::~PrivateBus() {
    end();
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

void PrivateBus::offer(const std::string& name, const std::string& command) const {
    // The daemon looks for files that it does not know yet when it is asked for a name.
    std::ofstream(fmt::format("{}/{}.service", folder_, name))
        << fmt::format("[D-BUS Service]\nName={}\nExec={}\n", name, command);
}

void PrivateBus::freeze() const {
    kill(daemon_, SIGSTOP);
    // Stopped, not just told to.
    waitpid(daemon_, nullptr, WUNTRACED);
}

void PrivateBus::end() {
    if (daemon_ > 0) {
        kill(daemon_, SIGKILL);
        waitpid(daemon_, nullptr, 0);
        daemon_ = -1;
    }
}

}  // namespace corvane
