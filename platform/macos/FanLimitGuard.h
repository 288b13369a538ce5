#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

#include "platform/SmcConnection.h"

namespace corvane {

/// Passes records on to a controller, but the one that would force a fan whose slowest or fastest speed
/// cannot be read or is implausible: such a fan stays with its firmware, and the write is answered with
/// `SmcResult::badArgument`. Limits that were read once are known from then on.
class FanLimitGuard final : public SmcConnection {
public:
    explicit FanLimitGuard(std::unique_ptr<SmcConnection> controller) : controller_(std::move(controller)) {}

    std::int32_t open() override { return controller_->open(); }
    std::int32_t exchange(SmcRecord& record) override;

private:
    [[nodiscard]] bool areLimitsKnown(std::uint32_t fan);
    [[nodiscard]] std::optional<float> readFlt(std::uint32_t key);

    std::unique_ptr<SmcConnection> controller_;
    /// By the digit in a fan's keys.
    std::array<bool, 10> known_{};
};

}  // namespace corvane
