#include "platform/posix/HeldSignals.h"

#include <pthread.h>

namespace corvane {

const sigset_t& terminationSignals() {
    static const sigset_t signals = [] {
        sigset_t set;
        sigemptyset(&set);
        for (const int signal : terminationSignalNumbers) {
            sigaddset(&set, signal);
        }
        return set;
    }();
    return signals;
}

void blockTerminationSignals() {
    pthread_sigmask(SIG_BLOCK, &terminationSignals(), nullptr);
    std::signal(SIGPIPE, SIG_IGN);
}

}  // namespace corvane
