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
#include "platform/simulated/MacHardware.h"
#include "platform/simulated/MacKeys.h"
#include "platform/simulated/MacModel.h"

namespace corvane {

/// A Mac as its SMC shows it: its hardware, and whatever is made to go wrong with the keys. `SimulatedSmc` is
/// the way to them.
///
/// Its time is the clock's; every call first brings the machine up to the present, in steps of
/// `MacHardware::stepLength`, so that what it does depends on the clock, the seed and what was done to it,
/// never on how often it was asked. What is done to it counts from the step under way. Not thread-safe. Reads
/// and writes do not allocate.
///
/// Functions that take `keys` mean one key ("Tp09") or all that begin alike ("Tp*"), and throw
/// `std::invalid_argument` when the machine has none. They reach vanished keys too.
class SimulatedMac final : public SmcKeyTable {
public:
    using Clock = std::function<BootTime()>;
    /// Hears of every write to a writable key that exists, refused or not; must not call the machine.
    using WriteObserver =
        std::function<void(std::string_view key, std::span<const std::uint8_t> bytes, SmcResult result)>;

    struct Options {
        MacModel model = macBookPro16();
        std::uint64_t seed = 1;
    };

    /// A machine that has been idle at `MacHardware::defaultAmbient` for ever.
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

    /// Brings the hardware up to the present.
    void catchUp();
    /// The hardware, caught up.
    MacHardware& present();

    void forEach(std::string_view keys, const std::function<void(std::size_t)>& change);
    void applyFault(std::size_t key, const std::optional<KeyFault>& fault);
    void listKeys();

    [[nodiscard]] double steadyValue(std::size_t key) const;
    [[nodiscard]] double trueValue(const MacKey& key) const;
    [[nodiscard]] double mode(std::size_t key) const;

    SmcResult take(std::size_t key, std::span<const std::uint8_t> bytes);
    SmcResult setMode(std::size_t key, std::uint8_t mode);
    [[nodiscard]] bool areLimitsKnown(std::size_t fan) const;
    [[nodiscard]] std::optional<double> readableLimit(std::size_t fan, KeyRole role) const;

    MacModel model_;
    Clock clock_;
    MacHardware hardware_;
    bool smcPresent_ = true;

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
