#pragma once

namespace corvane {

/// Heat paths of a computer: the die warms the heat sink, the heat sink warms the air. Guesses, chosen so
/// that die temperature and fan speed come out as published for the machine under a known load.
struct ThermalParameters {
    /// Die to heat sink, K/W.
    double dieToSink = 1.0;
    /// J/K.
    double dieCapacity = 6.0;
    /// J/K.
    double sinkCapacity = 60.0;
    /// Heat sink to air with standing fans, W/K.
    double stillAir = 0.25;
    /// Added by the fans, W/K at 1000 RPM; grows with the 0.8th power of the speed.
    double movedAir = 0.13;
};

/// Temperatures of die and heat sink in °C, integrated in explicit steps.
class ThermalModel {
public:
    /// Starts where `watts` have been turned into heat for ever, fans at `rpm`.
    ThermalModel(const ThermalParameters& parameters, double watts, double ambient, double rpm);

    /// Lets `seconds` pass; more than about a fifth of the die's time constant (dieToSink × dieCapacity) is
    /// too much. `watts` and `rpm` are 0 or more, `ambient` is in °C.
    void step(double seconds, double watts, double ambient, double rpm);

    [[nodiscard]] double dieTemperature() const { return die_; }
    [[nodiscard]] double sinkTemperature() const { return sink_; }

private:
    [[nodiscard]] double sinkToAir(double rpm) const;

    ThermalParameters parameters_;
    double sink_;
    double die_;
};

}  // namespace corvane
