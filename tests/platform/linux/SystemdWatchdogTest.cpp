#include <array>
#include <cstring>
#include <filesystem>
#include <string>

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "platform/linux/SystemdWatchdog.h"
#include "tests/support/EnvironmentVariable.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;

/// The service manager's end of the notification socket.
class NotifySocket {
public:
    NotifySocket() : socket_(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        // An abstract name, which leaves no file behind.
        std::memcpy(address.sun_path + 1, name_.data(), name_.size());
        const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name_.size());
        bound_ = bind(socket_, reinterpret_cast<const sockaddr*>(&address), length) == 0;
    }
    NotifySocket(const NotifySocket&) = delete;
    NotifySocket& operator=(const NotifySocket&) = delete;
    ~NotifySocket() { close(socket_); }

    [[nodiscard]] bool isBound() const { return bound_; }
    [[nodiscard]] std::string variable() const { return "@" + name_; }

    /// The next message; empty when there is none.
    [[nodiscard]] std::string receive() const {
        std::array<char, 256> buffer{};
        const ssize_t size = recv(socket_, buffer.data(), buffer.size(), 0);
        return size > 0 ? std::string(buffer.data(), static_cast<std::size_t>(size)) : std::string();
    }

private:
    std::string name_ = fmt::format("corvane-test-{}", getpid());
    int socket_;
    bool bound_ = false;
};

TEST(SystemdWatchdog, WantsToBeFedTwiceInTheTimeTheManagerGives) {
    const EnvironmentVariable time("WATCHDOG_USEC", "3000000");
    const EnvironmentVariable process("WATCHDOG_PID", std::to_string(getpid()).c_str());
    EXPECT_EQ(SystemdWatchdog().interval(), 1500ms);
}

TEST(SystemdWatchdog, IsOffWhenTheManagerKeepsNone) {
    const EnvironmentVariable time("WATCHDOG_USEC", nullptr);
    EXPECT_EQ(SystemdWatchdog().interval(), Duration::zero());
}

TEST(SystemdWatchdog, IsOffWhenTheManagerWatchesAnotherProcess) {
    const EnvironmentVariable time("WATCHDOG_USEC", "3000000");
    const EnvironmentVariable process("WATCHDOG_PID", "1");
    EXPECT_EQ(SystemdWatchdog().interval(), Duration::zero());
}

TEST(SystemdWatchdog, IsOffWhenTheTimeMakesNoSense) {
    for (const char* time : {"0", "", "-1", "soon", "18446744073709551615"}) {
        const EnvironmentVariable variable("WATCHDOG_USEC", time);
        const EnvironmentVariable process("WATCHDOG_PID", nullptr);
        EXPECT_EQ(SystemdWatchdog().interval(), Duration::zero()) << time;
    }
}

TEST(SystemdWatchdog, TellsTheManagerThatItIsAlive) {
    const NotifySocket socket;
    ASSERT_TRUE(socket.isBound());
    const EnvironmentVariable variable("NOTIFY_SOCKET", socket.variable().c_str());
    SystemdWatchdog watchdog;
    EXPECT_EQ(socket.receive(), "");
    watchdog.feed();
    EXPECT_EQ(socket.receive(), "WATCHDOG=1");
    watchdog.feed();
    EXPECT_EQ(socket.receive(), "WATCHDOG=1");
}

TEST(SystemdWatchdog, MayBeFedWithoutAManager) {
    const EnvironmentVariable variable("NOTIFY_SOCKET", nullptr);
    EXPECT_NO_THROW(SystemdWatchdog().feed());
}

}  // namespace
}  // namespace corvane
