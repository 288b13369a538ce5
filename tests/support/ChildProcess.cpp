#include "tests/support/ChildProcess.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <utility>

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

/// The end to read and the end to write; -1 each when there is none to be had. A Mac cannot close them on
/// exec from the first moment on.
std::array<int, 2> makePipe() {
    std::array<int, 2> ends{-1, -1};
    if (pipe(ends.data()) != 0) {
        return {-1, -1};
    }
    for (const int end : ends) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
    }
    return ends;
}

}  // namespace

ChildProcess::ChildProcess(const std::string& program, const std::vector<std::string>& arguments,
                           const std::map<std::string, std::string>& environment) {
    std::vector<std::string> words{program};
    words.insert(words.end(), arguments.begin(), arguments.end());
    const char* path = std::getenv("PATH");
    std::vector<std::string> variables{std::string("PATH=") + (path != nullptr ? path : "")};
    for (const auto& [name, value] : environment) {
        variables.push_back(fmt::format("{}={}", name, value));
    }

    const std::array<int, 2> output = makePipe();
    const std::array<int, 2> errors = makePipe();
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, errors[1], STDERR_FILENO);
    if (posix_spawn(&process_, program.c_str(), &actions, nullptr, pointersTo(words).data(),
                    pointersTo(variables).data()) != 0) {
        process_ = -1;
    }
    posix_spawn_file_actions_destroy(&actions);
    close(output[1]);
    close(errors[1]);
    output_.pipe = output[0];
    errors_.pipe = errors[0];
}

ChildProcess::~ChildProcess() {
    if (process_ > 0) {
        kill(process_, SIGKILL);
        waitpid(process_, nullptr, 0);
    }
    close(output_.pipe);
    close(errors_.pipe);
}

void ChildProcess::signal(int signal) const {
    if (process_ > 0) {
        kill(process_, signal);
    }
}

void ChildProcess::Stream::read() {
    std::array<char, 4096> buffer{};
    const ssize_t size = ::read(pipe, buffer.data(), buffer.size());
    if (size > 0) {
        text.append(buffer.data(), static_cast<std::size_t>(size));
    } else {
        close(std::exchange(pipe, -1));
    }
}

bool ChildProcess::readMore() {
    std::array<pollfd, 2> waiting{{{output_.pipe, POLLIN, 0}, {errors_.pipe, POLLIN, 0}}};
    const auto patience = std::chrono::milliseconds(testPatience).count();
    if (hasEnded() || poll(waiting.data(), waiting.size(), static_cast<int>(patience)) < 1) {
        return false;
    }
    if (waiting[0].revents != 0) {
        output_.read();
    }
    if (waiting[1].revents != 0) {
        errors_.read();
    }
    return !hasEnded();
}

bool ChildProcess::waitForError(const std::string& text) {
    while (errors_.text.find(text) == std::string::npos) {
        if (!readMore()) {
            return errors_.text.find(text) != std::string::npos;
        }
    }
    return true;
}

int ChildProcess::wait() {
    while (readMore()) {
    }
    if (!hasEnded() || process_ < 0) {
        return -1000;
    }
    int status = 0;
    waitpid(process_, &status, 0);
    process_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

std::size_t ChildProcess::countErrors(const std::string& text) const {
    std::size_t count = 0;
    const std::string& errors = errors_.text;
    for (std::size_t at = errors.find(text); at != std::string::npos; at = errors.find(text, at + 1)) {
        ++count;
    }
    return count;
}

}  // namespace corvane
