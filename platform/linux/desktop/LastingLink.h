#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <utility>

#include <asio/io_context.hpp>
#include <asio/post.hpp>
#include <asio/steady_timer.hpp>
#include <sdbus-c++/Error.h>

#include "platform/Lifetime.h"

namespace corvane {

/// A link to a bus that is made anew when the bus went away, or was not there: a `Link` lives on one
/// connection. Belongs to the thread that runs `context`.
template <typename Link>
class LastingLink {
public:
    /// Connects, and waits for the bus in doing so; throws sdbus::Error without one. The link calls `onLost`
    /// once, from its own work, when the bus has gone away.
    using Make = std::function<std::unique_ptr<Link>(std::function<void()> onLost)>;

    /// `onNone` runs each time there is no link any more, or still none; another one is tried `retry` later.
    LastingLink(asio::io_context& context, std::chrono::milliseconds retry, Make make,
                std::function<void()> onNone)
        : context_(context),
          retry_(retry),
          make_(std::move(make)),
          onNone_(std::move(onNone)),
          retryTimer_(context) {}

    /// Called once from outside.
    void start() {
        try {
            // A link must not be destroyed in its own work.
            link_ = make_([this] { asio::post(context_, lifetime_.bound([this] { startLater(); })); });
        } catch (const sdbus::Error&) {
            startLater();
        }
    }

private:
    void startLater() {
        link_.reset();
        onNone_();
        retryTimer_.expires_after(retry_);
        retryTimer_.async_wait(lifetime_.bound([this](const std::error_code& error) {
            if (!error) {
                start();
            }
        }));
    }

    asio::io_context& context_;
    std::chrono::milliseconds retry_;
    Make make_;
    std::function<void()> onNone_;
    Lifetime lifetime_;
    asio::steady_timer retryTimer_;
    std::unique_ptr<Link> link_;
};

}  // namespace corvane
