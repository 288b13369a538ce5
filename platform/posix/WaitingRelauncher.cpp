#include "platform/posix/WaitingRelauncher.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <system_error>

#include <fcntl.h>
#include <fmt/format.h>
#include <spawn.h>
#include <unistd.h>

namespace corvane {

namespace {

constexpr const char* shell = "/bin/sh";
/// Nobody ever writes to its standard input, which ends when the application does.
constexpr const char* script = R"(read -r _; exec "$0" "$@" </dev/null)";

std::string describe(int error) {
    return std::generic_category().message(error);
}

/// The wishes for a process, which the system wants made and destroyed by hand.
class SpawnWishes {
public:
    explicit SpawnWishes(const FileDescriptor& input) {
        posix_spawn_file_actions_init(&files_);
        posix_spawn_file_actions_adddup2(&files_, input.get(), STDIN_FILENO);
        posix_spawnattr_init(&attributes_);
        sigset_t none;
        sigemptyset(&none);
        // What the application holds back and ignores would be held back and ignored from the next one too.
        posix_spawnattr_setsigmask(&attributes_, &none);
        sigset_t ignored = none;
        sigaddset(&ignored, SIGPIPE);
        posix_spawnattr_setsigdefault(&attributes_, &ignored);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    SpawnWishes(const SpawnWishes&) = delete;
    SpawnWishes& operator=(const SpawnWishes&) = delete;
    ~SpawnWishes() {
        posix_spawn_file_actions_destroy(&files_);
        posix_spawnattr_destroy(&attributes_);
    }

    [[nodiscard]] const posix_spawn_file_actions_t* files() const { return &files_; }
    [[nodiscard]] const posix_spawnattr_t* attributes() const { return &attributes_; }

private:
    posix_spawn_file_actions_t files_{};
    posix_spawnattr_t attributes_{};
};

}  // namespace

void WaitingRelauncher::relaunch() {
    // Whoever waits to start it can no longer tell anybody.
    if (access(command_.front().c_str(), X_OK) != 0) {
        log_.write(fmt::format("Corvane relaunch failed: {}: {}", command_.front(), describe(errno)));
        return;
    }
    std::array<int, 2> ends{-1, -1};
    if (pipe(ends.data()) != 0) {
        log_.write(fmt::format("Corvane relaunch failed: {}", describe(errno)));
        return;
    }
    for (const int end : ends) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
    }
    const FileDescriptor input(ends[0]);
    // Never closed by hand: the system closes it with the process, after all that an orderly end closes.
    if (const auto problem = startWaiting(input)) {
        close(ends[1]);
        log_.write(fmt::format("Corvane relaunch failed: {}", *problem));
    }
}

std::optional<std::string> WaitingRelauncher::startWaiting(const FileDescriptor& input) {
    const SpawnWishes wishes(input);
    std::vector<std::string> texts = {shell, "-c", script};
    texts.insert(texts.end(), command_.begin(), command_.end());
    std::vector<char*> words;
    for (std::string& text : texts) {
        words.push_back(text.data());
    }
    words.push_back(nullptr);
    pid_t process = -1;
    const int error =
        posix_spawn(&process, shell, wishes.files(), wishes.attributes(), words.data(), environment_);
    return error == 0 ? std::nullopt : std::optional(describe(error));
}

}  // namespace corvane
