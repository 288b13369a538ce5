#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <asio/io_context.hpp>
#include <asio/steady_timer.hpp>
#include <sdbus-c++/IConnection.h>

#include "platform/Lifetime.h"
#include "platform/linux/BusPump.h"
#include "platform/linux/desktop/UPowerReading.h"

namespace corvane {

/// How long UPower and its bus are waited for. Tests have less time.
struct UPowerPatience {
    /// For its answers to one reading.
    std::chrono::milliseconds answers = std::chrono::seconds(5);
    /// For news, before it is read without: a UPower that hangs has none, and batteries run down.
    std::chrono::milliseconds news = std::chrono::seconds(60);
    /// Before the bus is tried again.
    std::chrono::milliseconds retry = std::chrono::seconds(30);
};

/// Follows UPower on the system bus, over one connection. Belongs to the thread that runs `context`.
///
/// UPower's devices change some times a minute, and there are few: whatever changes, everything is read
/// again, one reading at a time. So what is known never is a mixture, nor does it drift.
class UPowerLink {
public:
    using Batteries = UPowerReading::Batteries;

    using Publish = std::function<void(std::optional<Batteries>)>;

    /// Connects and reads, which starts a UPower that waits to be asked. Later it reads when UPower comes up
    /// or has news, and while something is known after a time without. Waits for the bus; throws sdbus::Error
    /// without one.
    ///
    /// `publish` runs with what is known each time it was read, and with none when it is no longer known:
    /// UPower is gone, hangs or answered nonsense. `onLost` runs once when the bus has gone away. Neither may
    /// destroy the link.
    UPowerLink(asio::io_context& context, UPowerPatience patience, Publish publish,
               std::function<void()> onLost);

private:
    void subscribe();
    void changeOwner(const std::string& newOwner);
    /// Reads now, or again after the reading under way. Within a handler of the connection.
    void refresh();
    void read();
    void finishReading(std::optional<Batteries> result);
    void waitForNews();
    void forget();

    asio::io_context& context_;
    Lifetime lifetime_;
    UPowerPatience patience_;
    Publish publish_;
    std::unique_ptr<sdbus::IConnection> connection_;
    std::vector<sdbus::Slot> subscriptions_;
    std::optional<UPowerReading> reading_;
    /// Something changed since the reading under way began.
    bool isOutdated_ = false;
    asio::steady_timer newsTimer_;
    std::optional<BusPump> pump_;
};

}  // namespace corvane
