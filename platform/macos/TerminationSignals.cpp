#include "platform/macos/TerminationSignals.h"

#include <csignal>
#include <utility>

#include <dispatch/dispatch.h>

#include "platform/posix/HeldSignals.h"

namespace corvane {

class TerminationSignals::Source {
public:
    Source(int signal, const std::function<void()>& handler)
        : signal_(signal),
          handler_(handler),
          source_(dispatch_source_create(DISPATCH_SOURCE_TYPE_SIGNAL, static_cast<std::uintptr_t>(signal), 0,
                                         dispatch_get_main_queue())) {
        dispatch_set_context(source_, this);
        dispatch_source_set_registration_handler_f(
            source_, [](void* self) { static_cast<Source*>(self)->takeWaiting(); });
        dispatch_source_set_event_handler_f(source_,
                                            [](void* self) { static_cast<Source*>(self)->handler_(); });
        dispatch_resume(source_);
    }
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;
    ~Source() {
        dispatch_source_cancel(source_);
        dispatch_release(source_);
    }

private:
    /// The kernel tells the source from now on. What came earlier was blocked and waits in the process.
    void takeWaiting() {
        sigset_t waiting;
        sigpending(&waiting);
        const bool isWaiting = sigismember(&waiting, signal_) == 1;
        // Forgets what waits. The source is told nevertheless.
        std::signal(signal_, SIG_IGN);
        if (isWaiting) {
            handler_();
        }
    }

    int signal_;
    const std::function<void()>& handler_;
    dispatch_source_t source_;
};

TerminationSignals::TerminationSignals(std::function<void()> handler) : handler_(std::move(handler)) {
    for (const int signal : terminationSignalNumbers) {
        sources_.push_back(std::make_unique<Source>(signal, handler_));
    }
}

TerminationSignals::~TerminationSignals() = default;

}  // namespace corvane
