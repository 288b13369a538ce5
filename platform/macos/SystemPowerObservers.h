#pragma once

#include <functional>
#include <optional>
#include <utility>

#include "platform/ResumeObserver.h"
#include "platform/SuspendObserver.h"
#include "platform/macos/SystemPower.h"

namespace corvane {

/// Holds the computer's sleep up until the helper is ready for it. Main thread.
class SystemPowerSuspendObserver final : public SuspendObserver {
public:
    void observe(std::function<void()> beforeSuspend, std::function<void()> afterResume) override {
        power_.emplace(std::move(beforeSuspend), std::move(afterResume));
    }

private:
    std::optional<SystemPower> power_;
};

/// The same for the application, which only asks for the end of a sleep. Main thread.
class SystemPowerResumeObserver final : public ResumeObserver {
public:
    void observe(std::function<void()> afterResume) override {
        power_.emplace([] {}, std::move(afterResume));
    }

private:
    std::optional<SystemPower> power_;
};

}  // namespace corvane
