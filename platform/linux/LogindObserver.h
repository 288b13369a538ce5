#pragma once

#include <memory>
#include <optional>

#include <asio/io_context.hpp>
#include <sdbus-c++/IConnection.h>
#include <sdbus-c++/IProxy.h>
#include <sdbus-c++/Types.h>

#include "platform/Log.h"
#include "platform/SuspendObserver.h"
#include "platform/linux/BusPump.h"
#include "platform/linux/LogindSignals.h"

namespace corvane {

/// Hears of suspends from the login manager, and delays each with a lock until it was heard. Main thread.
///
/// Without a login manager nothing is ever heard, and one line in the log says so.
class LogindObserver final : public SuspendObserver {
public:
    /// `onRestart` runs when the login manager has come up anew. All arguments outlive the observer.
    LogindObserver(asio::io_context& context, Log& log, std::function<void()> onRestart);

    void observe(std::function<void()> beforeSuspend, std::function<void()> afterResume) override;

private:
    void subscribe();
    [[nodiscard]] bool isPreparingForSleep();
    void takeDelayLock();
    void prepareForSleep(bool isGoingDown);

    asio::io_context& context_;
    Log& log_;
    std::function<void()> onRestart_;
    std::function<void()> beforeSuspend_;
    std::function<void()> afterResume_;
    std::unique_ptr<sdbus::IConnection> connection_;
    std::unique_ptr<sdbus::IProxy> manager_;
    std::optional<LogindSignals> signals_;
    std::unique_ptr<BusPump> pump_;
    sdbus::UnixFd delayLock_;
};

}  // namespace corvane
