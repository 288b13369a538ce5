#pragma once

#include <string>

#include "tests/app/fan/ReportedMachine.h"

namespace corvane {

/// A fan machine with the real helper's records, at a temperature that asks for no cooling by itself.
class ConnectedMachine : public FanMachine {
public:
    explicit ConnectedMachine(float celsius = 50) { openAt(celsius); }

    void boost(double percent = 60) {
        fan->setCoolingMode(CoolingMode::manual);
        fan->setFansEnabled(true);
        fan->setManualFloor(percent);
        advance(2s);
    }
    [[nodiscard]] std::string message() const { return fan->statusMessage().toStdString(); }
};

}  // namespace corvane
