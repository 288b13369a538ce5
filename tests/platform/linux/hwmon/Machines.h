#pragma once

#include <string>
#include <vector>

namespace corvane::machines {

/// An attribute file as a driver offers it.
struct AttributeSpec {
    std::string name;
    std::string text;
    unsigned mode = 0444;
};

/// A chip with its attributes.
struct ChipSpec {
    std::string device;
    std::string name;
    int number = 0;
    std::vector<AttributeSpec> attributes;
    /// Everything lies with the parent device, as older drivers have it.
    bool isOnParent = false;

    /// The directory of its attributes.
    [[nodiscard]] std::string directory() const {
        return isOnParent ? device : device + "/hwmon/hwmon" + std::to_string(number);
    }
    [[nodiscard]] std::string path(const std::string& attribute) const {
        return directory() + "/" + attribute;
    }
};

using Machine = std::vector<ChipSpec>;

// Machines as they have been seen, reduced to what bears on fans and temperatures.

/// A super I/O chip that offers a duty without saying who sets it.
Machine gigabyteZ170();
/// The fan belongs to a ThinkPad's embedded controller; the temperatures to the processor.
Machine thinkPadT420();
/// A graphics card with a fan, a board controller with a fan that can only be watched.
Machine asusX570();
/// One fan, targets may be written.
Machine macMini();
/// Two fans that stand still, targets may be written.
Machine macBookPro16();
/// The older interface on the parent device.
Machine intelMac();
/// A board with five fans under Smart Fan (mode 5).
Machine nct6775Board();

/// One fan with a duty: `pwm1`, `pwm1_enable` and `fan1_input` of one chip.
ChipSpec pwmChip(const std::string& name, int enable, int duty, int rpm);

}  // namespace corvane::machines
