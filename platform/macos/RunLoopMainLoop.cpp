#include "platform/macos/RunLoopMainLoop.h"

#include <utility>

#include <CoreFoundation/CoreFoundation.h>

#include "platform/posix/HeldSignals.h"

namespace corvane {

void RunLoopMainLoop::holdTerminationSignals() {
    blockTerminationSignals();
}

void RunLoopMainLoop::onTerminationSignal(std::function<void()> handler) {
    signals_.emplace(std::move(handler));
}

int RunLoopMainLoop::run() {
    CFRunLoopRun();
    return status_.value_or(0);
}

void RunLoopMainLoop::exit(int status) {
    queue_.async([this, status] {
        if (!status_) {
            status_ = status;
        }
        CFRunLoopStop(CFRunLoopGetMain());
    });
}

}  // namespace corvane
