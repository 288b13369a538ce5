#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/ThermalStateMonitor.h"
#include "platform/linux/hwmon/DirectorySysfs.h"

namespace corvane {

/// How hot the computer is by the kernel's thermal zones and cooling devices, under class/thermal. One
/// thread.
///
/// A zone is, from its trip points on:
///
/// | fair     | the lowest passive trip                                                      |
/// | serious  | the lowest hot trip; without one, midway from passive to the critical trip   |
/// | critical | 5 °C below the lowest critical trip                                          |
///
/// and stays so until it is more than 3 °C below that, so that a temperature at a trip does not make the
/// state flicker. The state is that of the hottest zone, and at least fair while the kernel slows the
/// processor down. Without zones it is nominal.
///
/// What cannot be true is ignored: readings outside of 0 to 200 °C exclusive (-44 and -273.25 are seen from
/// sensors that are off), and trip points outside of 40 to 200 °C: 0 and less stand for none, and some boards
/// have a critical trip at 20.8 °C over a zone that reads 16.8 °C for ever.
class ThermalZones {
public:
    /// `root` is an absolute path, normally "/sys".
    explicit ThermalZones(std::string root);

    /// Reads everything anew; takes as long as the drivers take to answer.
    [[nodiscard]] ThermalState read();

private:
    [[nodiscard]] bool isProcessorSlowed(const std::vector<std::string>& names);

    DirectorySysfs sysfs_;
    /// What each zone was at the last reading, by name.
    std::map<std::string, ThermalState> levels_;
};

}  // namespace corvane
