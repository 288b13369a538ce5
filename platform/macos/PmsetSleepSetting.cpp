#include "platform/macos/PmsetSleepSetting.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <optional>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/posix/FileDescriptor.h"
#include "platform/posix/HeldSignals.h"

namespace corvane {

namespace {

std::string errorText(int error) {
    return std::generic_category().message(error);
}

/// How the tool starts: no signal held or ignored, as a person would start it.
class ToolAttributes {
public:
    ToolAttributes() {
        posix_spawnattr_init(&attributes_);
        sigset_t none;
        sigemptyset(&none);
        posix_spawnattr_setsigmask(&attributes_, &none);
        posix_spawnattr_setsigdefault(&attributes_, &terminationSignals());
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ToolAttributes(const ToolAttributes&) = delete;
    ToolAttributes& operator=(const ToolAttributes&) = delete;
    ~ToolAttributes() { posix_spawnattr_destroy(&attributes_); }

    [[nodiscard]] const posix_spawnattr_t* get() const { return &attributes_; }

private:
    posix_spawnattr_t attributes_{};
};

/// Tells when the tool has ended: by a pipe whose other end is the tool's standard input, which it never
/// reads.
class ToolsEnd {
public:
    ToolsEnd() {
        std::array<int, 2> ends{-1, -1};
        error_ = pipe(ends.data()) == 0 ? 0 : errno;
        ours_.emplace(ends[0]);
        tools_.emplace(ends[1]);
        for (const int end : ends) {
            fcntl(end, F_SETFD, FD_CLOEXEC);
        }
    }

    /// An error number, 0 for none.
    [[nodiscard]] int error() const { return error_; }
    [[nodiscard]] int tools() const { return tools_->get(); }

    /// False when the tool still ran when patience was over. Once, after its start.
    bool await(std::chrono::milliseconds patience) {
        tools_.reset();
        pollfd watched{ours_->get(), POLLIN, 0};
        int ready = 0;
        do {
            ready = poll(&watched, 1, static_cast<int>(patience.count()));
        } while (ready < 0 && errno == EINTR);
        return ready != 0;
    }

private:
    int error_ = 0;
    std::optional<FileDescriptor> ours_;
    std::optional<FileDescriptor> tools_;
};

/// An error number, 0 for none.
int startTool(const std::string& tool, const char* value, int standardInput, pid_t& process) {
    const std::array<const char*, 5> arguments{tool.c_str(), "-a", "disablesleep", value, nullptr};
    char* const environment[] = {nullptr};
    const ToolAttributes attributes;
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, standardInput, STDIN_FILENO);
    const int error = posix_spawn(&process, tool.c_str(), &files, attributes.get(),
                                  const_cast<char* const*>(arguments.data()), environment);
    posix_spawn_file_actions_destroy(&files);
    return error;
}

}  // namespace

std::optional<std::string> PmsetSleepSetting::setSleepDisabled(bool disabled) {
    ToolsEnd end;
    pid_t process = 0;
    const int error =
        end.error() != 0 ? end.error() : startTool(tool_, disabled ? "1" : "0", end.tools(), process);
    if (error != 0) {
        return errorText(error);
    }
    const bool hasEnded = end.await(patience_);
    if (!hasEnded) {
        kill(process, SIGKILL);
    }
    while (waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
    }
    return hasEnded ? std::nullopt : std::optional<std::string>("the tool did not end in time");
}

}  // namespace corvane
