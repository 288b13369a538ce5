#pragma once

#include <functional>
#include <string_view>
#include <thread>

#include <asio/executor_work_guard.hpp>
#include <asio/io_context.hpp>

namespace corvane {

/// The thread that the application's bus traffic runs on, so that no bus, however slow, holds up the main
/// loop.
///
/// Connections, their pumps, proxies and objects belong to this thread: they are made, used and destroyed in
/// work posted to it. Such work may block, which delays other bus traffic only. Results go to the main loop
/// with `SerialQueue::async`, so the main loop's queue outlives this thread. A service on the main loop keeps
/// what lives here in one shared object that only posted work touches, and lets go of it by posting it away.
class BusThread {
public:
    /// `label` names the thread, as far as the system's 15 characters go.
    explicit BusThread(std::string_view label = "bus");
    BusThread(const BusThread&) = delete;
    BusThread& operator=(const BusThread&) = delete;
    /// Does what was posted before, then ends the thread and waits for it. Called on the thread that made it,
    /// after the services that post here are gone.
    ~BusThread();

    /// Runs on the thread. Any thread may post to it; it lives as long as this object.
    [[nodiscard]] asio::io_context& context() { return context_; }

    /// Runs `work` on the thread, after what was posted before; returns at once. Any thread. `work` must not
    /// throw.
    void post(std::function<void()> work);

private:
    asio::io_context context_{1};
    asio::executor_work_guard<asio::io_context::executor_type> guard_{context_.get_executor()};
    std::thread thread_;
};

}  // namespace corvane
