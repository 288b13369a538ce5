#pragma once

namespace corvane {

/// Speeds in RPM, as the machine declares them.
struct FanLimits {
    float minimum = 0.0F;
    float maximum = 0.0F;
};

/// How the firmware turns the die's temperature (°C) into a fan speed. Guessed; no vendor publishes it.
struct FirmwareCurve {
    /// A turning fan is stopped below this.
    double stopsBelow = 52.0;
    /// A standing fan is started from this on.
    double startsAt = 66.0;
    /// Minimum speed up to here, then in a straight line ...
    double risesFrom = 75.0;
    /// ... to the maximum here.
    double fullFrom = 102.0;

    /// Fans that stand on a cool machine.
    static constexpr FirmwareCurve laptop() { return {}; }
    /// Fans that never stand.
    static constexpr FirmwareCurve desktop() { return {.stopsBelow = -1000.0, .startsAt = -1000.0}; }
};

/// A fan and the firmware that drives it unless it is forced.
class SimulatedFan {
public:
    /// How fast a fan can change its speed, RPM/s. Guessed; a recorded fan slowed down by 217 at least.
    static constexpr double speedsUpBy = 400.0;
    static constexpr double slowsDownBy = 200.0;

    /// Starts as the firmware has it on a cool machine.
    SimulatedFan(const FanLimits& limits, const FirmwareCurve& curve);

    /// Lets `seconds` pass with the die at `dieTemperature` °C.
    void step(double seconds, double dieTemperature);

    /// Takes the fan from the firmware. It keeps the firmware's target until it is given another.
    void force();
    /// Gives the fan back to the firmware.
    void handBack() { forced_ = false; }
    /// RPM; ignored unless the fan is forced. The fan stands for 0 or less and for NaN, and keeps to its
    /// limits for anything else.
    void setTarget(float target);

    [[nodiscard]] bool isForced() const { return forced_; }
    /// What it really turns at, RPM; 0 when it stands.
    [[nodiscard]] double speed() const { return speed_; }
    /// What is asked of it, RPM: by the firmware, or as it was set.
    [[nodiscard]] float target() const {
        return forced_ ? forcedTarget_ : static_cast<float>(firmwareTarget_);
    }
    [[nodiscard]] const FanLimits& limits() const { return limits_; }

private:
    void followFirmware(double dieTemperature);
    [[nodiscard]] double goal() const;

    FanLimits limits_;
    FirmwareCurve curve_;
    bool firmwareRuns_;
    double firmwareTarget_;
    bool forced_ = false;
    float forcedTarget_ = 0.0F;
    double speed_;
};

}  // namespace corvane
