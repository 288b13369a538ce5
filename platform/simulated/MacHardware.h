#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/SerialQueue.h"
#include "platform/SmcConnection.h"
#include "platform/simulated/MacModel.h"
#include "platform/simulated/SimulatedFan.h"
#include "platform/simulated/ThermalModel.h"

namespace corvane {

/// Heat, fans, firmware and sensors of a simulated Mac, as they really are.
///
/// Its state changes in steps of `stepLength` and is a function of the time it was brought up to and of what
/// was done to it; noise comes from the seed and the step. Fans and sensors are counted from 0 in the order
/// of the model. Does not allocate once it is made.
class MacHardware {
public:
    static constexpr Duration stepLength = std::chrono::milliseconds(50);
    /// °C.
    static constexpr double defaultAmbient = 25.0;
    /// Standard deviations of tachometers (RPM; measured on a real fan) and sensors (°C).
    static constexpr double tachometerNoise = 3.0;
    static constexpr double sensorNoise = 0.1;
    /// What the sensors of cores without power read, °C.
    static constexpr double gatedCoreReading = 40.0;
    /// The chip sheds all its heat in a straight line between these temperatures of the die, °C.
    static constexpr double throttlesFrom = 105.0;
    static constexpr double throttledAt = 110.0;
    /// How long a machine with `ForceSwitch::required` goes on refusing once it was first asked.
    static constexpr Duration forcingTakes = std::chrono::milliseconds(3500);

    /// Has been idle at `defaultAmbient` for ever at `start`. `model` outlives it.
    MacHardware(const MacModel& model, std::uint64_t seed, BootTime start);

    /// Lets time pass up to `now`, never back.
    void catchUp(BootTime now);

    /// W, 0...300.
    void setLoad(double watts) { load_ = watts; }
    /// °C, -20...60.
    void setAmbient(double celsius) { ambient_ = celsius; }

    /// `SmcResult::badCommand` as long as the machine does not let its fans be forced.
    SmcResult force(std::size_t fan);
    void handBack(std::size_t fan) { fans_.at(fan).handBack(); }
    /// RPM; without effect unless the fan is forced.
    void setTarget(std::size_t fan, float target) { fans_.at(fan).setTarget(target); }
    void setForceSwitch(std::uint8_t value);

    [[nodiscard]] double dieTemperature() const { return thermal_.dieTemperature(); }
    [[nodiscard]] double sinkTemperature() const { return thermal_.sinkTemperature(); }
    [[nodiscard]] const std::vector<SimulatedFan>& fans() const { return fans_; }
    [[nodiscard]] std::uint8_t forceSwitch() const { return forceSwitch_; }
    /// RPM, with noise; exactly 0 when the fan stands.
    [[nodiscard]] double tachometer(std::size_t fan) const;
    /// °C, with noise.
    [[nodiscard]] double sensor(std::size_t sensor) const;

private:
    void step();
    [[nodiscard]] double heat() const;
    [[nodiscard]] bool letsFansBeForced();
    [[nodiscard]] double noise(std::uint64_t channel) const;

    const MacModel& model_;
    std::uint64_t seed_;
    BootTime start_;
    BootTime now_;
    std::int64_t stepsDone_ = 0;
    double load_;
    double ambient_ = defaultAmbient;
    std::vector<SimulatedFan> fans_;
    ThermalModel thermal_;
    std::uint8_t forceSwitch_ = 0;
    /// When forcing was first asked for since the switch was set.
    std::optional<BootTime> forcingAsked_;
};

}  // namespace corvane
