#pragma once

#include <future>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <utility>

#include <asio/executor_work_guard.hpp>
#include <asio/io_context.hpp>
#include <asio/post.hpp>

#include "platform/linux/DBusHelperListener.h"
#include "tests/support/Notes.h"

namespace corvane {

/// A listener and the thread that is the main thread to it.
class ListenerThread final : public HelperListenerDelegate {
public:
    /// `served` null: connections are refused.
    ListenerThread(std::string bus, std::shared_ptr<FanHelperProtocol> served)
        : served_(std::move(served)), thread_([this] { context_.run(); }) {
        run([&] {
            listener_ = std::make_unique<DBusHelperListener>(
                context_, HelperBus{bus}, [this](const std::string& reason) { losses_.add(reason); });
            failure_ = listener_->resume(*this);
        });
    }
    ListenerThread(const ListenerThread&) = delete;
    ListenerThread& operator=(const ListenerThread&) = delete;
    ~ListenerThread() override {
        endListener();
        guard_.reset();
        thread_.join();
    }

    /// What `resume` returned.
    [[nodiscard]] const std::optional<std::string>& failure() const { return failure_; }
    /// The reasons that the bus was lost for.
    [[nodiscard]] const Notes<std::string>& losses() const { return losses_; }

    /// Destroys the listener; its thread goes on. May be repeated.
    void endListener() {
        run([this] { listener_.reset(); });
    }

    /// Runs `work` on the thread and waits for it.
    template <typename Work>
    void run(const Work& work) {
        std::promise<void> done;
        asio::post(context_, [&] {
            work();
            done.set_value();
        });
        done.get_future().wait();
    }

    std::shared_ptr<FanHelperProtocol> acceptConnection() override { return served_; }

private:
    std::shared_ptr<FanHelperProtocol> served_;
    asio::io_context context_{1};
    asio::executor_work_guard<asio::io_context::executor_type> guard_{context_.get_executor()};
    std::optional<std::string> failure_;
    Notes<std::string> losses_;
    std::unique_ptr<DBusHelperListener> listener_;
    std::thread thread_;
};

}  // namespace corvane
