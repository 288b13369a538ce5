#include "bench/MeasuredProcess.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <system_error>
#include <thread>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace corvane {

namespace {

/// A program that takes longer hangs.
constexpr std::chrono::seconds longestEnd(10);

}  // namespace

MeasuredProcess::MeasuredProcess(std::vector<std::string> command, const Environment& environment) {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (std::string& argument : command) {
        arguments.push_back(argument.data());
    }
    arguments.push_back(nullptr);
    id_ = ::fork();
    if (id_ < 0) {
        throw std::system_error(errno, std::generic_category(), command[0]);
    }
    if (id_ == 0) {
        // Nothing stays behind when this program is killed.
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
        for (const auto& [name, value] : environment) {
            ::setenv(name.c_str(), value.c_str(), 1);
        }
        ::execvp(arguments[0], arguments.data());
        ::_exit(127);
    }
}

MeasuredProcess::~MeasuredProcess() {
    if (id_ > 0) {
        end(SIGTERM);
    }
}

int MeasuredProcess::end(int signal) {
    ::kill(id_, signal);
    const auto deadline = std::chrono::steady_clock::now() + longestEnd;
    int status = 0;
    while (::waitpid(id_, &status, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() > deadline) {
            ::kill(id_, SIGKILL);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    id_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace corvane
