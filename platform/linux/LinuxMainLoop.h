#pragma once

#include <optional>

#include <asio/executor_work_guard.hpp>
#include <asio/io_context.hpp>
#include <asio/posix/stream_descriptor.hpp>

#include "platform/MainLoop.h"

namespace corvane {

/// The helper's main thread: an event loop that also fetches the held signals.
class LinuxMainLoop final : public MainLoop {
public:
    void holdTerminationSignals() override;
    void onTerminationSignal(std::function<void()> handler) override;
    int run() override;
    void exit(int status) override;

    /// What else runs on the main thread waits here.
    asio::io_context& context() { return context_; }

private:
    void awaitSignal();

    asio::io_context context_{1};
    asio::executor_work_guard<asio::io_context::executor_type> guard_{context_.get_executor()};
    asio::posix::stream_descriptor signals_{context_};
    std::function<void()> handler_;
    std::optional<int> status_;
};

}  // namespace corvane
