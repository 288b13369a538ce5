#pragma once

#include <filesystem>
#include <string>

namespace corvane {

/// A machine to measure on: a folder that looks like the part of /sys that Corvane uses, with a fan chip and
/// a processor, all of ordinary files. Removed in the end.
class HwmonTree {
public:
    static constexpr int fans = 2;
    static constexpr int sensors = 60;
    /// Duties (of 255) and modes as the firmware has them.
    static constexpr int firmwareDuty = 77;
    static constexpr int firmwareMode = 5;

    /// Throws when the files cannot be made.
    HwmonTree();
    HwmonTree(const HwmonTree&) = delete;
    HwmonTree& operator=(const HwmonTree&) = delete;
    ~HwmonTree();

    /// Stands in for /sys.
    [[nodiscard]] std::string root() const { return folder_ / "sys"; }
    /// A folder for what belongs to the same measurement.
    [[nodiscard]] std::string runFolder() const { return folder_ / "run"; }
    /// The file of the first fan's duty.
    [[nodiscard]] std::string dutyFile() const { return chip(fanDevice) / "pwm1"; }

private:
    static constexpr const char* fanDevice = "devices/platform/nct6775.656/hwmon/hwmon0";
    static constexpr const char* processorDevice = "devices/platform/coretemp.0/hwmon/hwmon1";

    [[nodiscard]] std::filesystem::path chip(const char* device) const { return folder_ / "sys" / device; }
    void addChip(const char* device, const std::string& name) const;
    void addFan(int number) const;

    std::filesystem::path folder_;
};

}  // namespace corvane
