#pragma once

#include <optional>
#include <vector>

#include "platform/PowerSources.h"

namespace corvane {

/// What a Mac's system says of its batteries, and of others that feed it. A description is readable when all
/// of its keys are strings.
class IoKitPowerSources final : public PowerSources {
public:
    [[nodiscard]] std::vector<std::optional<PowerSourceDescription>> descriptions() const override;
};

}  // namespace corvane
