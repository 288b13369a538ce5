#include "platform/linux/desktop/UserSingleInstance.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

namespace corvane {

namespace {

using namespace std::chrono_literals;
using SteadyClock = std::chrono::steady_clock;

constexpr const char* lockName = "lock";
constexpr const char* socketName = "open";
constexpr int backlog = 16;
constexpr char answer = '.';
/// Between two tries to reach a first one that is still starting, or ending.
constexpr auto pause = 20ms;

std::string lastError() {
    return std::generic_category().message(errno);
}

/// None when the path is too long for a socket.
std::optional<sockaddr_un> addressOf(const std::string& path) {
    sockaddr_un address{};
    if (path.size() >= sizeof address.sun_path) {
        return std::nullopt;
    }
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.data(), path.size());
    return address;
}

FileDescriptor newSocket() {
    return FileDescriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
}

/// Waits for the byte that answers a connection. False when it has not come by `end`, and when there is
/// nobody to connect to.
bool isAnswered(const std::string& path, SteadyClock::time_point end) {
    const auto address = addressOf(path);
    const FileDescriptor peer = newSocket();
    if (!address || !peer.isOpen() ||
        connect(peer.get(), reinterpret_cast<const sockaddr*>(&*address), sizeof *address) != 0) {
        return false;
    }
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - SteadyClock::now());
    pollfd waiting{peer.get(), POLLIN, 0};
    char byte = 0;
    return poll(&waiting, 1, static_cast<int>(std::max(left, 0ms).count())) == 1 &&
           recv(peer.get(), &byte, sizeof byte, 0) == 1;
}

/// Whether the other end is a process of this user.
bool isOfThisUser(const FileDescriptor& peer) {
    ucred credentials{};
    socklen_t size = sizeof credentials;
    return getsockopt(peer.get(), SOL_SOCKET, SO_PEERCRED, &credentials, &size) == 0 &&
           credentials.uid == geteuid();
}

}  // namespace

Start UserSingleInstance::claim(std::function<void()> openRequested) {
    openRequested_ = std::move(openRequested);
    if (const auto problem = prepareFolder()) {
        log_.write(fmt::format("Other instances go unnoticed: {}: {}", folder_.string(), *problem));
        return {};
    }
    const auto end = SteadyClock::now() + patience_;
    // Over again: the first one may be about to listen, or about to end.
    while (true) {
        switch (lock()) {
            case Lock::ours:
                listen();
                return {};
            case Lock::impossible:
                return {};
            case Lock::others:
                break;
        }
        if (isAnswered(path(socketName), end)) {
            return {.role = StartRole::second, .error = {}};
        }
        if (SteadyClock::now() >= end) {
            return {.role = StartRole::unanswered,
                    .error = "Corvane is already running but does not answer."};
        }
        poll(nullptr, 0, static_cast<int>(std::chrono::milliseconds(pause).count()));
    }
}

/// Makes the folder, and sees to it that nobody else can reach into it: why not, or nothing.
std::optional<std::string> UserSingleInstance::prepareFolder() const {
    if (mkdir(folder_.c_str(), S_IRWXU) != 0 && errno != EEXIST) {
        return lastError();
    }
    struct stat info {};
    // Not where a link leads.
    if (lstat(folder_.c_str(), &info) != 0) {
        return lastError();
    }
    const bool isPrivate =
        S_ISDIR(info.st_mode) && info.st_uid == geteuid() && (info.st_mode & (S_IRWXG | S_IRWXO)) == 0;
    return isPrivate ? std::nullopt : std::optional<std::string>("not a folder of the user alone");
}

UserSingleInstance::Lock UserSingleInstance::lock() {
    // With the sticky bit, which keeps a file in this place from being tidied away.
    FileDescriptor file(open(path(lockName).c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK,
                             S_ISVTX | S_IRUSR | S_IWUSR));
    if (file.isOpen() && flock(file.get(), LOCK_EX | LOCK_NB) == 0) {
        lock_.emplace(std::move(file));
        return Lock::ours;
    }
    if (errno == EWOULDBLOCK || errno == EINTR) {
        return Lock::others;
    }
    log_.write(fmt::format("Other instances go unnoticed: {}: {}", path(lockName), lastError()));
    return Lock::impossible;
}

/// Without a socket later starts still find out that they are not the first, but not why nobody answers.
void UserSingleInstance::listen() {
    const std::string socketPath = path(socketName);
    const auto address = addressOf(socketPath);
    FileDescriptor listening = newSocket();
    // Whoever left it is gone: the lock is ours.
    unlink(socketPath.c_str());
    if (!address || !listening.isOpen() ||
        bind(listening.get(), reinterpret_cast<const sockaddr*>(&*address), sizeof *address) != 0 ||
        ::listen(listening.get(), backlog) != 0) {
        log_.write(fmt::format("Later starts will not be heard: {}: {}", socketPath,
                               address ? lastError() : "the path is too long"));
        return;
    }
    listener_ = std::make_unique<QtDescriptor>(listening.release(), [this] { acceptOne(); });
}

/// One at a time, so that the main loop gets to everything else between two.
void UserSingleInstance::acceptOne() {
    const FileDescriptor peer(accept4(listener_->get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    if (peer.isOpen() && isOfThisUser(peer)) {
        openRequested_();
        // It may have gone meanwhile.
        send(peer.get(), &answer, sizeof answer, MSG_NOSIGNAL);
    }
}

std::filesystem::path instanceFolder(const EnvironmentLookup& environment) {
    const char* const runtime = environment("XDG_RUNTIME_DIR");
    if (runtime != nullptr && *runtime == '/') {
        return std::filesystem::path(runtime) / "corvane";
    }
    const char* const temporary = environment("TMPDIR");
    return std::filesystem::path(temporary != nullptr && *temporary == '/' ? temporary : "/tmp") /
           fmt::format("corvane-{}", geteuid());
}

}  // namespace corvane
