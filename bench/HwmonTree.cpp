#include "bench/HwmonTree.h"

#include <cerrno>
#include <fstream>
#include <system_error>

#include <fmt/format.h>
#include <stdlib.h>

namespace corvane {

namespace {

namespace fs = std::filesystem;

constexpr auto readOnly = fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read;
constexpr auto writable = readOnly | fs::perms::owner_write;

fs::path makeFolder() {
    std::string name = fs::temp_directory_path() / "corvane-bench-XXXXXX";
    if (::mkdtemp(name.data()) == nullptr) {
        throw std::system_error(errno, std::generic_category(), name);
    }
    return name;
}

void addAttribute(const fs::path& path, int value, fs::perms mode) {
    std::ofstream(path) << value << '\n';
    fs::permissions(path, mode);
}

}  // namespace

HwmonTree::HwmonTree() : folder_(makeFolder()) {
    fs::create_directories(runFolder());
    fs::create_directories(root() + "/class/hwmon");
    addChip(fanDevice, "nct6775");
    addChip(processorDevice, "coretemp");
    for (int fan = 1; fan <= fans; ++fan) {
        addFan(fan);
    }
    for (int sensor = 1; sensor <= sensors; ++sensor) {
        addAttribute(chip(processorDevice) / fmt::format("temp{}_input", sensor), 40000 + 250 * sensor,
                     readOnly);
    }
}

HwmonTree::~HwmonTree() {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

void HwmonTree::addChip(const char* device, const std::string& name) const {
    const fs::path directory = chip(device);
    fs::create_directories(directory);
    fs::create_directory_symlink("../..", directory / "device");
    fs::create_directory_symlink(directory, folder_ / "sys/class/hwmon" / directory.filename());
    std::ofstream(directory / "name") << name << '\n';
}

void HwmonTree::addFan(int number) const {
    const fs::path directory = chip(fanDevice);
    addAttribute(directory / fmt::format("fan{}_input", number), 900, readOnly);
    addAttribute(directory / fmt::format("pwm{}", number), firmwareDuty, writable);
    addAttribute(directory / fmt::format("pwm{}_enable", number), firmwareMode, writable);
}

}  // namespace corvane
