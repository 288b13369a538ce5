#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "platform/PowerSources.h"

namespace corvane {

/// Power sources that say what they are told to; none to begin with. Main loop.
class SimulatedPowerSources final : public PowerSources {
public:
    using Descriptions = std::vector<std::optional<PowerSourceDescription>>;

    [[nodiscard]] Descriptions descriptions() const override { return descriptions_; }

    void set(Descriptions descriptions) { descriptions_ = std::move(descriptions); }

private:
    Descriptions descriptions_;
};

}  // namespace corvane
