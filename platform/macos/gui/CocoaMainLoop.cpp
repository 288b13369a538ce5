#include "platform/macos/gui/CocoaMainLoop.h"

#include <utility>

#include "platform/posix/HeldSignals.h"

namespace corvane {

void CocoaMainLoop::holdTerminationSignals() {
    blockTerminationSignals();
}

void CocoaMainLoop::onTerminationSignal(std::function<void()> handler) {
    signals_.emplace(std::move(handler));
}

}  // namespace corvane
