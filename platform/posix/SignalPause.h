#pragma once

#include <functional>

#include "platform/CommandPlatform.h"

namespace corvane {

/// Pauses that a held termination signal cuts short. One at a time in a process, whose signals it takes.
class SignalPause final : public InterruptiblePause {
public:
    /// `now` tells the time.
    explicit SignalPause(std::function<BootTime()> now);

    void holdTerminationSignals() override;
    bool pause(Duration duration) override;
    void wait(Duration duration) override;
    [[nodiscard]] BootTime bootTime() const override { return now_(); }

private:
    std::function<BootTime()> now_;
};

}  // namespace corvane
