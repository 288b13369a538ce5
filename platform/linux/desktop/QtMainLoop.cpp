#include "platform/linux/desktop/QtMainLoop.h"

#include <utility>

#include <sys/signalfd.h>
#include <unistd.h>

#include "platform/posix/HeldSignals.h"

namespace corvane {

void QtMainLoop::holdTerminationSignals() {
    blockTerminationSignals();
}

void QtMainLoop::onTerminationSignal(std::function<void()> handler) {
    handler_ = std::move(handler);
    const int descriptor = signalfd(-1, &terminationSignals(), SFD_NONBLOCK | SFD_CLOEXEC);
    signals_ = std::make_unique<QtDescriptor>(descriptor, [this] { takeSignal(); });
}

void QtMainLoop::takeSignal() {
    signalfd_siginfo signal{};
    if (read(signals_->get(), &signal, sizeof signal) == sizeof signal) {
        handler_();
    }
}

}  // namespace corvane
