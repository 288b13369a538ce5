#pragma once

#include "platform/CommandPlatform.h"

namespace corvane {

/// Pauses that wait for a held termination signal.
class SignalPause final : public InterruptiblePause {
public:
    void holdTerminationSignals() override;
    bool pause(Duration duration) override;
    [[nodiscard]] BootTime bootTime() const override;

private:
    bool isInterrupted_ = false;
};

}  // namespace corvane
