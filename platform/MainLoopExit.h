#pragma once

#include <mutex>

#include "platform/SerialQueue.h"

namespace corvane {

/// The way from background work, however late it ends, to the main loop, which need not last that long.
/// Shared by the work and by whoever closes it on the main loop. Any thread.
class MainLoopExit {
public:
    explicit MainLoopExit(SerialQueue& mainLoop) : mainLoop_(&mainLoop) {}

    /// Nobody goes out any more: the main loop may end.
    void close() {
        const std::lock_guard lock(mutex_);
        mainLoop_ = nullptr;
    }

    void toMainLoop(const SerialQueue::Work& work) {
        const std::lock_guard lock(mutex_);
        if (mainLoop_ != nullptr) {
            mainLoop_->async(work);
        }
    }

private:
    std::mutex mutex_;
    SerialQueue* mainLoop_;
};

}  // namespace corvane
