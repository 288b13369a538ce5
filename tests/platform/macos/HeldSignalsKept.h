#pragma once

#include <csignal>

#include <pthread.h>

#include "platform/posix/HeldSignals.h"

namespace corvane {

/// Leaves the program's signals as it found them, and none waiting.
class HeldSignalsKept {
public:
    HeldSignalsKept() {
        pthread_sigmask(SIG_SETMASK, nullptr, &mask_);
        sigaction(SIGPIPE, nullptr, &onPipe_);
    }
    HeldSignalsKept(const HeldSignalsKept&) = delete;
    HeldSignalsKept& operator=(const HeldSignalsKept&) = delete;
    ~HeldSignalsKept() {
        for (const int signal : terminationSignalNumbers) {
            // Forgets what waits.
            std::signal(signal, SIG_IGN);
        }
        pthread_sigmask(SIG_SETMASK, &mask_, nullptr);
        for (const int signal : terminationSignalNumbers) {
            std::signal(signal, SIG_DFL);
        }
        sigaction(SIGPIPE, &onPipe_, nullptr);
    }

private:
    sigset_t mask_{};
    struct sigaction onPipe_ {};
};

}  // namespace corvane
