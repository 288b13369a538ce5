#include "platform/linux/desktop/UserBus.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include <fmt/format.h>
#include <sys/socket.h>
#include <sys/un.h>

#include "platform/posix/FileDescriptor.h"

namespace corvane {

namespace {

/// All others would have to be escaped in a bus address; runtime folders have none of them.
constexpr std::string_view plainCharacters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_/.";

/// Whether somebody listens at the socket. The bus library loses memory with each failed try of its own.
bool isListenedTo(const std::string& path) {
    sockaddr_un address{};
    if (path.empty() || path.size() >= sizeof address.sun_path) {
        return false;
    }
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.data(), path.size());
    const FileDescriptor probe(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    return probe.isOpen() &&
           connect(probe.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

}  // namespace

UserBus::UserBus(const EnvironmentLookup& environment) {
    const char* const folder = environment("XDG_RUNTIME_DIR");
    if (folder != nullptr && *folder == '/') {
        path_ = fmt::format("{}/bus", folder);
    }
    if (path_.find_first_not_of(plainCharacters) != std::string::npos) {
        path_.clear();
    }
}

std::unique_ptr<sdbus::IConnection> UserBus::connect() const {
    return isListenedTo(path_)
               ? sdbus::createSessionBusConnectionWithAddress(fmt::format("unix:path={}", path_))
               : sdbus::createSessionBusConnection();
}

}  // namespace corvane
