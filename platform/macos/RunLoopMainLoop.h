#pragma once

#include <functional>
#include <optional>

#include "platform/MainLoop.h"
#include "platform/macos/DispatchSerialQueue.h"
#include "platform/macos/TerminationSignals.h"

namespace corvane {

/// The helper's main thread: its run loop, which empties Dispatch's main queue.
class RunLoopMainLoop final : public MainLoop {
public:
    void holdTerminationSignals() override;
    void onTerminationSignal(std::function<void()> handler) override;
    int run() override;
    void exit(int status) override;

private:
    DispatchSerialQueue queue_{DispatchSerialQueue::OfMainThread{}};
    std::optional<TerminationSignals> signals_;
    std::optional<int> status_;
};

}  // namespace corvane
