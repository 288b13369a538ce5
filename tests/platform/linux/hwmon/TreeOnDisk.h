#pragma once

#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/platform/linux/hwmon/HwmonRig.h"
#include "tests/platform/linux/hwmon/Machines.h"

namespace corvane {

/// A machine's attributes as files and links in a folder.
class TreeOnDisk {
public:
    explicit TreeOnDisk(const machines::Machine& machine) {
        std::filesystem::create_directories(root + "/class/hwmon");
        for (const machines::ChipSpec& chip : machine) {
            plug(chip);
        }
    }

    void plug(const machines::ChipSpec& chip) {
        const std::string hwmon = "hwmon/hwmon" + std::to_string(chip.number);
        std::filesystem::create_directories(root + "/" + chip.device + "/" + hwmon);
        std::filesystem::create_directory_symlink("../../" + chip.device + "/" + hwmon,
                                                  root + "/class/" + hwmon);
        std::filesystem::create_directory_symlink("../..",
                                                  root + "/" + chip.device + "/" + hwmon + "/device");
        write(chip.path("name"), chip.name + "\n", 0444);
        for (const machines::AttributeSpec& attribute : chip.attributes) {
            write(chip.path(attribute.name), attribute.text, attribute.mode);
        }
    }

    void write(const std::string& path, const std::string& text, unsigned mode) {
        std::ofstream(root + "/" + path) << text;
        ASSERT_EQ(::chmod((root + "/" + path).c_str(), mode), 0);
    }

    /// An ordinary file keeps the tail of a longer text that a shorter one is written over: the number it
    /// begins with is what counts.
    [[nodiscard]] std::string firstLine(const std::string& path) const {
        std::ifstream file(root + "/" + path);
        std::string line;
        std::getline(file, line);
        return line;
    }

    TemporaryFolder folder;
    std::string root = folder.path("sys");
};

}  // namespace corvane
