#include <gtest/gtest.h>

#include "platform/linux/hwmon/AttributeName.h"
#include "platform/linux/hwmon/ChipAttribute.h"
#include "platform/linux/hwmon/TemperatureFamily.h"

namespace corvane {
namespace {

TEST(TemperatureFamily, IsTheProcessorForItsDriversAndZones) {
    for (const char* chip : {"coretemp", "k10temp", "k8temp", "zenpower", "via_cputemp", "cpu_thermal",
                             "cpu0_thermal", "bigcore1_thermal", "soc_thermal"}) {
        EXPECT_EQ(temperatureFamilyOf(chip, ""), TemperatureFamily::cpu) << chip;
    }
}

TEST(TemperatureFamily, IsTheGraphicsForItsDriversAndZones) {
    for (const char* chip : {"amdgpu", "radeon", "nouveau", "i915", "xe", "gpu_thermal"}) {
        EXPECT_EQ(temperatureFamilyOf(chip, "edge"), TemperatureFamily::gpu) << chip;
    }
}

TEST(TemperatureFamily, IsNeitherForDrivesBatteriesRadiosAndBoards) {
    for (const char* chip : {"nvme", "drivetemp", "acpitz", "iwlwifi_1", "BAT0", "macsmc_hwmon", "nct6775",
                             "asusec", "dell_smm", "jc42", "cpu", "spd5118"}) {
        EXPECT_EQ(temperatureFamilyOf(chip, "CPU"), TemperatureFamily::other) << chip;
    }
}

TEST(TemperatureFamily, IsToldByTheLabelWhereSensorsLieAllOverTheMachine) {
    EXPECT_EQ(temperatureFamilyOf("thinkpad", "CPU"), TemperatureFamily::cpu);
    EXPECT_EQ(temperatureFamilyOf("thinkpad", "GPU"), TemperatureFamily::gpu);
    EXPECT_EQ(temperatureFamilyOf("thinkpad", ""), TemperatureFamily::other);
    EXPECT_EQ(temperatureFamilyOf("applesmc", "TC0P"), TemperatureFamily::cpu);
    EXPECT_EQ(temperatureFamilyOf("applesmc", "TG0D"), TemperatureFamily::gpu);
    EXPECT_EQ(temperatureFamilyOf("applesmc", "TB0T"), TemperatureFamily::other);
}

TEST(AttributeName, GivesItsChannel) {
    EXPECT_EQ(channelOf("fan2_input", "fan", "_input"), 2);
    EXPECT_EQ(channelOf("fan12_input", "fan", "_input"), 12);
    for (const char* name : {"fan_input", "fan0_input", "fan100_input", "fan-1_input", "fan1x_input",
                             "fan1_max", "temp1_input", "fan"}) {
        EXPECT_EQ(channelOf(name, "fan", "_input"), std::nullopt) << name;
    }
}

TEST(AttributeNumber, IsReadToTheEndsOf64Bits) {
    EXPECT_EQ(parseNumber("9223372036854775807\n"), 9223372036854775807);
    EXPECT_EQ(parseNumber("9223372036854775808\n"), std::nullopt);
    EXPECT_EQ(parseNumber("-5"), -5);
}

}  // namespace
}  // namespace corvane
