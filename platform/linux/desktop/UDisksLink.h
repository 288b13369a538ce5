#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <asio/io_context.hpp>
#include <asio/steady_timer.hpp>
#include <sdbus-c++/sdbus-c++.h>

#include "platform/Lifetime.h"
#include "platform/linux/BusPump.h"
#include "platform/linux/desktop/UDisksObjects.h"

namespace corvane {

/// How long UDisks and its bus are waited for. Tests have less time.
struct UDisksPatience {
    /// For its answer.
    std::chrono::milliseconds answer = std::chrono::seconds(5);
    /// For news, before it is asked without: a UDisks that hangs, or hung when it was asked, has none.
    std::chrono::milliseconds news = std::chrono::minutes(5);
    /// Before the bus is tried again.
    std::chrono::milliseconds retry = std::chrono::seconds(30);
};

/// Follows UDisks on the system bus, over one connection. Belongs to the thread that runs `context`.
///
/// Drives come and go some times a day, and there are few: whatever changes, everything is read again, one
/// reading at a time. So what is known never is a mixture, nor does it drift.
class UDisksLink {
public:
    using Volumes = std::vector<Volume>;

    using Publish = std::function<void(std::optional<Volumes>)>;

    /// Connects and asks, which starts a UDisks that waits to be asked. Waits for the bus; throws
    /// sdbus::Error without one.
    ///
    /// `publish` runs with what is mounted each time it was read, and with none when that is no longer known:
    /// UDisks is gone, hangs or answered nonsense. `onLost` runs once when the bus has gone away. Neither may
    /// destroy the link.
    UDisksLink(asio::io_context& context, UDisksPatience patience, Publish publish,
               std::function<void()> onLost);
    UDisksLink(const UDisksLink&) = delete;
    UDisksLink& operator=(const UDisksLink&) = delete;
    ~UDisksLink() = default;

private:
    void subscribe();
    void changeOwner(const std::string& owner);
    void refresh();
    void ask();
    void answered(sdbus::MethodReply& reply, const sdbus::Error* error);
    void refreshAfter(std::chrono::milliseconds time);
    void giveUpAfter(std::chrono::milliseconds time);
    void forget();

    Lifetime lifetime_;
    UDisksPatience patience_;
    Publish publish_;
    std::unique_ptr<sdbus::IConnection> connection_;
    std::vector<sdbus::Slot> subscriptions_;
    std::unique_ptr<sdbus::IProxy> manager_;
    sdbus::PendingAsyncCall question_;
    bool isAsking_ = false;
    /// Something changed since it was asked.
    bool isOutdated_ = false;
    /// For the answer while it is asked, else for news.
    asio::steady_timer timer_;
    std::optional<BusPump> pump_;
};

}  // namespace corvane
