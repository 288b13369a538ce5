#pragma once

#include <functional>
#include <memory>

namespace corvane {

/// The system's notices of sleep and wake, on the main queue. Main thread. Where the system refuses them,
/// nothing ever runs.
class SystemPower {
public:
    /// `beforeSleep` runs before the computer sleeps, which waits for its end, up to 30 s; `afterWake` when
    /// it runs again, as far as a user can tell: not for what it does in its sleep.
    SystemPower(std::function<void()> beforeSleep, std::function<void()> afterWake);
    SystemPower(const SystemPower&) = delete;
    SystemPower& operator=(const SystemPower&) = delete;
    ~SystemPower();

private:
    class Registration;

    std::unique_ptr<Registration> registration_;
};

}  // namespace corvane
