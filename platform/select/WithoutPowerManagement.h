#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/HelperPlatform.h"

namespace corvane {

/// A machine that is never suspended.
class NoSuspend final : public SuspendObserver {
public:
    void observe(std::function<void()> /*beforeSuspend*/, std::function<void()> /*afterResume*/) override {}
};

/// A machine without a lid: there is nothing to set.
class NoLid final : public SystemSleepSetting {
public:
    std::optional<std::string> setSleepDisabled(bool /*disabled*/) override { return std::nullopt; }
};

/// `Machine`, the helper's platform here, but nothing that happens in it reaches this machine's sleep or lid.
template <typename Machine>
class WithoutPowerManagement : public Machine {
public:
    using Machine::Machine;

    std::unique_ptr<SystemSleepSetting> makeSystemSleepSetting() override {
        return std::make_unique<NoLid>();
    }
    std::unique_ptr<SuspendObserver> makeSuspendObserver() override { return std::make_unique<NoSuspend>(); }
};

}  // namespace corvane
