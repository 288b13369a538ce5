#pragma once

#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// What the system says of one power source. Members are none when it does not say, or says it in another
/// type.
struct PowerSourceDescription {
    /// Charge now and when full, in one unit of the source's own choice.
    std::optional<int> currentCapacity;
    std::optional<int> maxCapacity;
    /// "AC Power" while the source draws from the mains, something else otherwise.
    std::optional<std::string> state;
    std::optional<bool> isCharging;

    bool operator==(const PowerSourceDescription&) const = default;
};

/// The batteries that feed this computer. Belongs to the main loop and does not block it.
class PowerSources {
public:
    /// The state of a source that draws from the mains.
    static constexpr const char* acPower = "AC Power";

    PowerSources() = default;
    PowerSources(const PowerSources&) = delete;
    PowerSources& operator=(const PowerSources&) = delete;
    virtual ~PowerSources() = default;

    /// In the system's order; none for a source that has no readable description. Empty when there is no
    /// source, or no way to find out.
    [[nodiscard]] virtual std::vector<std::optional<PowerSourceDescription>> descriptions() const = 0;
};

}  // namespace corvane
