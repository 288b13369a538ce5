#pragma once

#include <array>
#include <filesystem>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "platform/ThermalStateMonitor.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {

/// Shown when a test fails.
inline std::ostream& operator<<(std::ostream& out, ThermalState state) {
    constexpr std::array names = {"nominal", "fair", "serious", "critical"};
    return out << names.at(static_cast<std::size_t>(state));
}

/// The types and temperatures (m°C) of trip points.
using Trips = std::vector<std::pair<std::string, int>>;

/// A folder in place of the kernel's tree, to be filled with thermal zones and cooling devices.
class ThermalTree : public testing::Test {
protected:
    void write(const std::string& path, const std::string& value) const {
        sys.write("class/thermal/" + path, value + "\n");
    }

    void zone(int number, int temperature, const Trips& trips) const {
        const std::string folder = fmt::format("thermal_zone{}", number);
        for (std::size_t i = 0; i < trips.size(); ++i) {
            write(fmt::format("{}/trip_point_{}_type", folder, i), trips[i].first);
            write(fmt::format("{}/trip_point_{}_temp", folder, i), fmt::format("{}", trips[i].second));
        }
        write(folder + "/type", "zone");
        heat(number, temperature);
    }

    /// m°C.
    void heat(int number, int temperature) const {
        write(fmt::format("thermal_zone{}/temp", number), fmt::format("{}", temperature));
    }

    void coolingDevice(int number, const std::string& type, const std::string& state) const {
        write(fmt::format("cooling_device{}/type", number), type);
        write(fmt::format("cooling_device{}/cur_state", number), state);
    }

    void remove(const std::string& path) const {
        std::filesystem::remove_all(sys / ("class/thermal/" + path));
    }

    TemporaryFolder sys;
};

}  // namespace corvane
