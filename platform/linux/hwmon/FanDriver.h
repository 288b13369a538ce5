#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// A value that has to be restored, under a short name that the fan's driver understands.
struct FanValue {
    std::string name;
    std::int64_t value = 0;

    bool operator==(const FanValue&) const = default;
};

/// What a fan's attributes held before Corvane touched it.
using FanOriginals = std::vector<FanValue>;

/// The value called `name`; nothing when it is not there or not within [`low`, `high`].
[[nodiscard]] std::optional<std::int64_t> findValue(const FanOriginals& originals, std::string_view name,
                                                    std::int64_t low, std::int64_t high);

/// The speeds between which a fan is driven, in RPM. Unknown unless `max` is above `min`.
struct SpeedRange {
    float min = 0.0F;
    float max = 0.0F;

    [[nodiscard]] bool isKnown() const { return max > min; }
};

/// How one kind of fan is taken from its firmware and given back. Knows the hardware only: who may take which
/// fan, and what is remembered beyond this process, is decided above. One thread.
///
/// `adopt` comes first; everything after it works towards or against the originals adopted last.
class FanDriver {
public:
    FanDriver() = default;
    FanDriver(const FanDriver&) = delete;
    FanDriver& operator=(const FanDriver&) = delete;
    virtual ~FanDriver() = default;

    [[nodiscard]] virtual SpeedRange range() const = 0;

    /// Reads what a hand-back will have to restore. Nothing when it cannot be read, when driving the fan
    /// could cool less than what drives it now, and when the fan is under manual control already: whoever put
    /// it there may be driving it, and nothing tells the mode that it had before.
    [[nodiscard]] virtual std::optional<FanOriginals> observe() = 0;

    /// Takes over `originals`, observed now or remembered from earlier. False when this fan cannot be handed
    /// back by them; then nothing has changed. Where they do not tell what the firmware held the fan at, it
    /// counts as having been held at full speed.
    [[nodiscard]] virtual bool adopt(const FanOriginals& originals) = 0;

    /// Takes the fan and goes on with what it was doing. False when the hardware did not let go of it.
    [[nodiscard]] virtual bool takeOver() = 0;

    /// Whether the fan is under manual control now; nothing when this cannot be read.
    [[nodiscard]] virtual std::optional<bool> isHeld() = 0;

    /// Drives a fan that was taken over at `rpm`, which is finite, or at what it was doing then, whichever is
    /// more. The speed asked of the hardware, or nothing when it refused. Does not allocate.
    [[nodiscard]] virtual std::optional<float> drive(float rpm) = 0;

    /// As hard as it can, for a fan that cannot be handed back.
    virtual void driveFull() = 0;

    /// Restores the originals. True when they read back.
    [[nodiscard]] virtual bool handBack() = 0;

    /// Whether the originals are in force now.
    [[nodiscard]] virtual bool isHandedBack() = 0;
};

}  // namespace corvane
