#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "platform/SerialQueue.h"
#include "platform/SmcKeyTable.h"
#include "platform/simulated/KeyFault.h"
#include "platform/simulated/MacKeys.h"
#include "platform/simulated/MacModel.h"
#include "platform/simulated/SimulatedFan.h"
#include "platform/simulated/ThermalModel.h"

namespace corvane {

/// A Mac as its SMC shows it: heat, fans, the firmware that drives them, sensors, and whatever is made to go
/// wrong. `SimulatedSmc` is the way to its keys.
///
/// Its time is the clock's; every call first brings the machine up to the present, in steps of `stepLength`,
/// so that what it does depends on the clock, the seed and what was done to it, never on how often it was
/// asked. What is done to it counts from the step under way. Not thread-safe. Reads and writes do not
/// allocate.
///
/// Functions that take `keys` mean one key ("Tp09") or all that begin alike ("Tp*"), and throw
/// `std::invalid_argument` when the machine has none. They reach vanished keys too.
class SimulatedMac final : public SmcKeyTable {
public:
    using Clock = std::function<BootTime()>;
    /// Hears of every write to a writable key that exists, refused or not; must not call the machine.
    using WriteObserver =
        std::function<void(std::string_view key, std::span<const std::uint8_t> bytes, SmcResult result)>;

    static constexpr Duration stepLength = std::chrono::milliseconds(50);
    static constexpr double defaultAmbient = 25.0;
    /// Standard deviations of tachometers (RPM; measured on a real fan) and sensors (°C).
    static constexpr double tachometerNoise = 3.0;
    static constexpr double sensorNoise = 0.1;
    /// What the keys of cores without power read, °C.
    static constexpr double gatedCoreReading = 40.0;
    /// The chip sheds all its heat in a straight line between these temperatures of the die, °C.
    static constexpr double throttlesFrom = 105.0;
    static constexpr double throttledAt = 110.0;
    /// How long a machine with `ForceSwitch::required` goes on refusing once it was first asked.
    static constexpr Duration forcingTakes = std::chrono::milliseconds(3500);

    struct Options {
        MacModel model = macBookPro16();
        std::uint64_t seed = 1;
    };

    /// A machine that has been idle at `defaultAmbient` for ever.
    SimulatedMac(Options options, Clock clock);

    // What is done to it.

    /// Heat the chip gives off, W, 0...300; idle heat to begin with.
    void setLoad(double watts);
    /// °C, -20...60.
    void setAmbient(double celsius);
    /// False: there is no SMC service.
    void setSmcPresent(bool present) { smcPresent_ = present; }

    /// From now on the keys read exactly `value`. For any key, not just sensors.
    void holdSensor(std::string_view keys, float value);
    /// Every temperature key of the machine reads exactly `celsius`.
    void holdSensorsAt(float celsius) { holdSensor("T*", celsius); }
    /// Ends `holdSensor`.
    void releaseSensor(std::string_view keys);

    /// A key has one fault at a time; the last one counts. The same fault again begins anew.
    void setFault(std::string_view keys, const KeyFault& fault);
    void clearFault(std::string_view keys);
    void clearFaults() { clearFault("*"); }

    /// Sets what is done to every key at once, in the order of `allKeys`. A fault that a key has already goes
    /// on, it does not begin anew.
    void setConditions(std::span<const KeyCondition> conditions);

    void onWrite(WriteObserver observer) { observer_ = std::move(observer); }

    // Looking inside. What is true, whatever the keys read. Fans are counted from 0.

    [[nodiscard]] const MacModel& model() const { return model_; }
    /// Vanished ones included; ascending by name.
    [[nodiscard]] std::span<const MacKey> allKeys() const { return allKeys_; }
    [[nodiscard]] bool isSmcPresent() const { return smcPresent_; }
    [[nodiscard]] double dieTemperature();
    [[nodiscard]] double sinkTemperature();
    [[nodiscard]] double fanSpeed(std::size_t fan);
    [[nodiscard]] double fanTarget(std::size_t fan);
    [[nodiscard]] bool isFanForced(std::size_t fan);
    [[nodiscard]] bool isAnyFanForced();
    /// Writes to writable keys that exist, refused ones included.
    [[nodiscard]] std::uint64_t writeCount() const { return writeCount_; }
    /// The last target the fan's key took, whether or not the fan was forced.
    [[nodiscard]] std::optional<float> lastWrittenTarget(std::size_t fan) const { return written_.at(fan); }

    // The key table.

    [[nodiscard]] std::span<const SmcKey> keys() const override { return listed_; }
    SmcResult read(std::size_t index, std::span<std::uint8_t> bytes) override;
    SmcResult write(std::size_t index, std::span<const std::uint8_t> bytes) override;

private:
    static constexpr std::size_t largestValue = 8;

    struct KeyState {
        KeyCondition condition;
        std::array<std::uint8_t, largestValue> staleBytes = {};
        std::uint32_t spikesLeft = 0;
    };

    void catchUp();
    void step();
    [[nodiscard]] double heat() const;

    void forEach(std::string_view keys, const std::function<void(std::size_t)>& change);
    void applyFault(std::size_t key, const std::optional<KeyFault>& fault);
    void listKeys();

    [[nodiscard]] double trueValue(const MacKey& key) const;
    [[nodiscard]] double sensorValue(std::size_t sensor) const;
    [[nodiscard]] double tachometer(std::size_t fan) const;
    [[nodiscard]] double mode(std::size_t key) const;
    [[nodiscard]] double noise(std::uint64_t channel) const;
    [[nodiscard]] double steadyValue(std::size_t key) const;

    SmcResult take(std::size_t key, std::span<const std::uint8_t> bytes);
    SmcResult setForceSwitch(std::uint8_t value);
    SmcResult setMode(std::size_t key, std::uint8_t mode);
    SmcResult force(std::size_t fan);
    [[nodiscard]] bool mayForce();
    [[nodiscard]] bool areLimitsKnown(std::size_t fan) const;
    [[nodiscard]] std::optional<double> knownLimit(std::size_t fan, KeyRole role) const;

    MacModel model_;
    std::uint64_t seed_;
    Clock clock_;
    BootTime start_;
    BootTime now_;
    std::int64_t stepsDone_ = 0;

    double load_;
    double ambient_ = defaultAmbient;
    bool smcPresent_ = true;
    std::vector<SimulatedFan> fans_;
    ThermalModel thermal_;
    std::uint8_t forceSwitch_ = 0;
    /// When forcing was first asked for since the switch was set.
    std::optional<BootTime> forcingAsked_;

    std::vector<MacKey> allKeys_;
    std::vector<KeyState> states_;
    /// The keys that have not vanished, and where each is in `allKeys_`.
    std::vector<SmcKey> listed_;
    std::vector<std::size_t> listedAs_;

    std::uint64_t writeCount_ = 0;
    std::vector<std::optional<float>> written_;
    WriteObserver observer_;
};

}  // namespace corvane
