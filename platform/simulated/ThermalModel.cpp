#include "platform/simulated/ThermalModel.h"

#include <cmath>

namespace corvane {

ThermalModel::ThermalModel(const ThermalParameters& parameters, double watts, double ambient, double rpm)
    : parameters_(parameters),
      sink_(ambient + watts / sinkToAir(rpm)),
      die_(sink_ + watts * parameters.dieToSink) {}

void ThermalModel::step(double seconds, double watts, double ambient, double rpm) {
    const double intoSink = (die_ - sink_) / parameters_.dieToSink;
    const double intoAir = (sink_ - ambient) * sinkToAir(rpm);
    die_ += (watts - intoSink) / parameters_.dieCapacity * seconds;
    sink_ += (intoSink - intoAir) / parameters_.sinkCapacity * seconds;
}

/// W/K.
double ThermalModel::sinkToAir(double rpm) const {
    return parameters_.stillAir + parameters_.movedAir * std::pow(rpm / 1000.0, 0.8);
}

}  // namespace corvane
