#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/simulated/SensorSpec.h"
#include "platform/simulated/SimulatedFan.h"
#include "platform/simulated/ThermalModel.h"

namespace corvane {

/// How a machine spells its fans' mode keys.
enum class ModeKeys : std::uint8_t {
    upperCase,  ///< F0Md
    lowerCase,  ///< F0md
};

/// What the key Ftst does on a machine.
enum class ForceSwitch : std::uint8_t {
    absent,    ///< there is no such key
    ignored,   ///< it takes any value and changes nothing
    required,  ///< fans are forced only while it is 1, and not at once; 0 hands all of them back
};

/// Everything that makes one kind of simulated Mac differ from another.
struct MacModel {
    /// What it is called in a control file.
    std::string name;
    /// What it is called by people.
    std::string title;
    ThermalParameters thermal;
    FirmwareCurve firmware;
    /// Heat with nothing to do.
    double idleWatts = 2.0;
    /// Below this heat the cores behind `SensorSource::gatedCore` keys have no power.
    double gatingWatts = 8.0;
    /// At most 10: a fan's number is one digit of its keys.
    std::vector<FanLimits> fans;
    ModeKeys modeKeys = ModeKeys::upperCase;
    ForceSwitch forceSwitch = ForceSwitch::ignored;
    /// No two with the same name; in any order.
    std::vector<SensorSpec> sensors;
};

MacModel macBookPro16();    ///< two fans, upper-case mode keys; the default
MacModel macBookPro13();    ///< one fan
MacModel macMini();         ///< one fan that never stands
MacModel macBookAir();      ///< no fan
MacModel macBookPro14M4();  ///< two fans that need Ftst
MacModel macBookPro14M5();  ///< one fan, lower-case mode keys, no Ftst

/// For exact arithmetic: one fan from 1000 to 5000 RPM and the one sensor Tp09, which reads the die.
MacModel tinyMac();

/// The models a control file can name, the default first.
std::span<const MacModel> macModels();

/// Null when there is no model of that name.
const MacModel* findMacModel(std::string_view name);

}  // namespace corvane
