#pragma once

#include <optional>
#include <string_view>

#include "platform/PowerAssertions.h"

namespace corvane {

/// The assertions of a Mac's power management. Their names have at most 128 characters there.
class IoKitPowerAssertions final : public PowerAssertions {
public:
    [[nodiscard]] std::optional<Id> create(std::string_view type, std::string_view name) override;
    void release(Id id) override;
};

}  // namespace corvane
