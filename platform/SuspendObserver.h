#pragma once

#include <functional>

namespace corvane {

/// Tells before the computer is suspended, and holds the suspend up until it was heard.
class SuspendObserver {
public:
    SuspendObserver() = default;
    SuspendObserver(const SuspendObserver&) = delete;
    SuspendObserver& operator=(const SuspendObserver&) = delete;
    virtual ~SuspendObserver() = default;

    /// Runs `beforeSuspend` on the main loop each time before the computer is suspended, which waits until it
    /// returns, up to the system's own limit (a few seconds), and `afterResume` when it runs again. Called
    /// once, on the main loop's thread; runs `beforeSuspend` at once where the system tells that it is about
    /// to suspend already. Where the system does not tell, nothing ever runs.
    virtual void observe(std::function<void()> beforeSuspend, std::function<void()> afterResume) = 0;
};

}  // namespace corvane
