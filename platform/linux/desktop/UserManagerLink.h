#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <asio/io_context.hpp>
#include <asio/steady_timer.hpp>
#include <sdbus-c++/sdbus-c++.h>

#include "platform/Lifetime.h"
#include "platform/RunningApplications.h"
#include "platform/linux/BusPump.h"

namespace corvane {

/// How long the user's service manager is waited for. Tests have less time.
struct UserManagerPatience {
    /// For its answer.
    std::chrono::milliseconds answer = std::chrono::seconds(5);
    /// Before it, or its bus, is tried again after it failed.
    std::chrono::milliseconds retry = std::chrono::seconds(30);
};

/// Follows the applications that the user's service manager runs, over one connection. Belongs to the thread
/// that runs `context`.
///
/// Whenever one of their units comes, goes or changes its state, all of them are read again, one reading at
/// a time: there are few, and what is known neither drifts nor is a mixture. An application runs while its
/// unit is active.
class UserManagerLink {
public:
    using Identifiers = RunningApplications::Identifiers;
    using Publish = std::function<void(std::optional<Identifiers>)>;

    /// `publish` gets what runs each time it was read, and none when that is no longer known: the manager is
    /// gone, hangs or answered nonsense. `onLost` runs once when the bus has gone away. Neither may destroy
    /// the link. Throws sdbus::Error; waits for the bus.
    UserManagerLink(asio::io_context& context, std::unique_ptr<sdbus::IConnection> connection,
                    UserManagerPatience patience, Publish publish, std::function<void()> onLost);

    /// Called once.
    void start();

private:
    // As the manager lists it: name, description, load state, active state, sub state, following, object,
    // job number, job type, job.
    using Unit = sdbus::Struct<std::string, std::string, std::string, std::string, std::string, std::string,
                               sdbus::ObjectPath, std::uint32_t, std::string, sdbus::ObjectPath>;

    void subscribe();
    void follow();
    void refresh();
    void read();
    void finishReading(std::optional<Identifiers> result);
    void wait(std::chrono::milliseconds time, std::function<void()> work);
    [[nodiscard]] static Identifiers runningAmong(const std::vector<Unit>& units);

    UserManagerPatience patience_;
    Publish publish_;
    Lifetime lifetime_;
    /// The number of the reading under way, or of the last one.
    std::uint64_t reading_ = 0;
    bool isReading_ = false;
    /// Something changed since the reading under way began.
    bool isOutdated_ = false;
    asio::steady_timer timer_;
    // Destroyed from the last to the first: what uses the connection before it.
    std::unique_ptr<sdbus::IConnection> connection_;
    std::vector<sdbus::Slot> subscriptions_;
    std::unique_ptr<sdbus::IProxy> manager_;
    BusPump pump_;
};

}  // namespace corvane
