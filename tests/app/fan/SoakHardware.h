#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include <fmt/format.h>

#include "tests/app/fan/SoakWorld.h"

namespace corvane {

/// What becomes of the Mac itself: heat, and sensors and fans that break.
class SoakHardware {
public:
    explicit SoakHardware(SoakWorld& world) : world_(world) {}

    void changeHeat() {
        const double watts = static_cast<double>(dice().pick(dice().oneIn(4) ? 120 : 30));
        mac().setLoad(watts);
        if (dice().oneIn(5)) {
            mac().setAmbient(5 + static_cast<double>(dice().pick(40)));
        }
        world_.story.tell("{} W", watts);
    }
    void breakSensors() {
        const std::array faults{KeyFault::vanished(), KeyFault::readFails(), KeyFault::stale(),
                                KeyFault::spike(129, 3), KeyFault::spike(8, 2)};
        const std::size_t fault = dice().pick(faults.size());
        world_.story.tell("sensors broken, kind {}", fault);
        mac().setFault(dice().oneIn(3) ? "Tp*" : "T*", faults.at(fault));
        faultsEnd_ = world_.now() + dice().seconds(60);
        world_.oracle.areSensorsBroken = true;
    }
    /// Whoever drives or reads a fan that is broken like this may get it back later than it should be.
    void breakFans() {
        const std::array faults{KeyFault::writeRefused(),    KeyFault::readFails(),
                                KeyFault::vanished(),        KeyFault::neverAutomatic(1),
                                KeyFault::neverAutomatic(3), KeyFault::stale()};
        const std::size_t fault = dice().pick(faults.size());
        const std::string key = anyFanKey(faults.at(fault).kind == KeyFault::Kind::neverAutomatic);
        world_.story.tell("{} broken, kind {}", key, fault);
        mac().setFault(key, faults.at(fault));
        faultsEnd_ = world_.now() + dice().seconds(60);
        world_.oracle.breakFans();
    }
    void holdSensors() {
        const auto celsius = static_cast<float>(30 + dice().pick(90));
        world_.story.tell("all sensors show {}", celsius);
        mac().holdSensorsAt(celsius);
        holdEnds_ = world_.now() + dice().seconds(60);
        world_.oracle.heldReading = static_cast<double>(celsius);
    }

    /// Ends what has lasted long enough.
    void endDeeds() {
        if (world_.now() >= faultsEnd_) {
            endFaults();
        }
        if (world_.oracle.heldReading && world_.now() >= holdEnds_) {
            releaseSensors();
        }
    }
    void mend() {
        endFaults();
        releaseSensors();
    }

private:
    [[nodiscard]] SoakDice& dice() { return world_.dice; }
    [[nodiscard]] SimulatedMac& mac() { return world_.machine.helper.mac; }

    std::string anyFanKey(bool mustBeMode) {
        constexpr std::array keys{"Ac", "Tg", "Mn", "Mx"};
        const std::size_t count = mac().model().fans.size();
        const bool isMode = mustBeMode || dice().oneIn(2);
        if (isMode) {
            return modeKey(dice().pick(count));
        }
        const char* key = keys.at(dice().pick(keys.size()));
        return fmt::format("F{}{}", dice().pick(count), key);
    }
    std::string modeKey(std::uint64_t fan) {
        return fmt::format("F{}{}", fan, mac().model().modeKeys == ModeKeys::upperCase ? "Md" : "md");
    }
    void endFaults() {
        mac().clearFaults();
        world_.oracle.areSensorsBroken = false;
        world_.oracle.mendFans();
    }
    void releaseSensors() {
        mac().releaseSensor("T*");
        world_.oracle.heldReading.reset();
    }

    SoakWorld& world_;
    Duration faultsEnd_{};
    Duration holdEnds_{};
};

}  // namespace corvane
