#include "platform/posix/SignalPause.h"

#include <algorithm>
#include <csignal>
#include <ctime>
#include <thread>
#include <utility>

#include <sys/select.h>

#include "platform/posix/HeldSignals.h"

namespace corvane {

namespace {

volatile std::sig_atomic_t hasArrived = 0;

extern "C" void noteArrival(int /*signal*/) {
    hasArrived = 1;
}

timespec toTimespec(Duration duration) {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(duration);
    return {seconds.count(), (duration - seconds).count()};
}

}  // namespace

SignalPause::SignalPause(std::function<BootTime()> now) : now_(std::move(now)) {
    hasArrived = 0;
}

void SignalPause::holdTerminationSignals() {
    blockTerminationSignals();
    struct sigaction noting {};
    noting.sa_handler = noteArrival;
    for (const int signal : terminationSignalNumbers) {
        sigaction(signal, &noting, nullptr);
    }
}

bool SignalPause::pause(Duration duration) {
    // Let through for the length of the wait alone: none is missed between looking and waiting.
    sigset_t held;
    pthread_sigmask(SIG_SETMASK, nullptr, &held);
    for (const int signal : terminationSignalNumbers) {
        sigdelset(&held, signal);
    }
    const BootTime end = now_() + duration;
    while (hasArrived == 0) {
        const timespec wait = toTimespec(std::max(end - now_(), Duration::zero()));
        if (pselect(0, nullptr, nullptr, nullptr, &wait, &held) == 0) {
            return hasArrived == 0;
        }
    }
    return false;
}

void SignalPause::wait(Duration duration) {
    // Goes on after a signal that is not held.
    std::this_thread::sleep_for(duration);
}

}  // namespace corvane
