#include "tests/support/ChildProcess.h"

#include <array>
#include <csignal>
#include <cstdlib>

#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/support/Notes.h"

namespace corvane {

namespace {

/// The form that the system wants; `texts` outlive it.
std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

}  // namespace

ChildProcess::ChildProcess(const std::string& program, const std::vector<std::string>& arguments,
                           const std::map<std::string, std::string>& environment)
    : process_(-1), errorPipe_(-1) {
    std::vector<std::string> words{program};
    words.insert(words.end(), arguments.begin(), arguments.end());
    const char* path = std::getenv("PATH");
    std::vector<std::string> variables{std::string("PATH=") + (path != nullptr ? path : "")};
    for (const auto& [name, value] : environment) {
        variables.push_back(fmt::format("{}={}", name, value));
    }

    std::array<int, 2> ends{-1, -1};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        return;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDERR_FILENO);
    if (posix_spawn(&process_, program.c_str(), &actions, nullptr, pointersTo(words).data(),
                    pointersTo(variables).data()) != 0) {
        process_ = -1;
    }
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    errorPipe_ = ends[0];
}

ChildProcess::~ChildProcess() {
    if (process_ > 0) {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    close(errorPipe_);
}

void ChildProcess::signal(int signal) const {
    if (process_ > 0) {
        kill(process_, signal);
    }
}

bool ChildProcess::readMore() {
    pollfd waiting{errorPipe_, POLLIN, 0};
    const auto patience = std::chrono::milliseconds(testPatience).count();
    if (poll(&waiting, 1, static_cast<int>(patience)) != 1) {
        return false;
    }
    std::array<char, 4096> buffer{};
    const ssize_t size = read(errorPipe_, buffer.data(), buffer.size());
    hasEnded_ = size <= 0;
    if (!hasEnded_) {
        errors_.append(buffer.data(), static_cast<std::size_t>(size));
    }
    return !hasEnded_;
}

bool ChildProcess::waitForError(const std::string& text) {
    while (errors_.find(text) == std::string::npos) {
        if (!readMore()) {
            return false;
        }
    }
    return true;
}

int ChildProcess::wait() {
    while (readMore()) {
    }
    if (!hasEnded_ || process_ < 0) {
        return -1000;
    }
    int status = 0;
    waitpid(process_, &status, 0);
    process_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

std::size_t ChildProcess::countErrors(const std::string& text) const {
    std::size_t count = 0;
    for (std::size_t at = errors_.find(text); at != std::string::npos; at = errors_.find(text, at + 1)) {
        ++count;
    }
    return count;
}

}  // namespace corvane
