#pragma once

#include <deque>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

#include <asio/executor_work_guard.hpp>
#include <asio/io_context.hpp>

#include "platform/SerialQueue.h"

namespace corvane {

/// A serial queue on a thread of its own. Between two pieces of `async` work due timers get their turn.
class AsioSerialQueue final : public SerialQueue {
public:
    /// `label` names the thread, as far as the system's 15 characters go.
    explicit AsioSerialQueue(std::string_view label);
    /// Ends after the work under way; work that waits is dropped.
    ~AsioSerialQueue() override;

    void async(Work work) override;
    void sync(const Work& work) override;
    void syncAhead(const Work& work) override;
    [[nodiscard]] std::unique_ptr<Timer> after(Duration delay, Work work) override;
    [[nodiscard]] std::unique_ptr<Timer> at(WallTime time, Work work) override;
    [[nodiscard]] std::unique_ptr<Timer> every(Duration first, Duration period, Work work) override;
    void sleep(Duration duration) override;
    [[nodiscard]] BootTime bootTime() const override;
    [[nodiscard]] WallTime wallTime() const override;

private:
    void runNext();

    asio::io_context context_{1};
    asio::executor_work_guard<asio::io_context::executor_type> guard_{context_.get_executor()};
    std::mutex mutex_;
    std::deque<Work> waiting_;
    std::thread thread_;
};

}  // namespace corvane
