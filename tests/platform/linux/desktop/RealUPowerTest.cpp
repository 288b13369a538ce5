// The real UPower, on a private bus, of a laptop that is made of files.

#include <filesystem>
#include <optional>
#include <string>

#include <dlfcn.h>
#include <fmt/format.h>
#include <gtest/gtest.h>

#include "platform/linux/desktop/UPowerClient.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/Notes.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

constexpr const char* daemonProgram = "/usr/libexec/upowerd";
/// Shows a program another /sys, the one in $UMOCKDEV_DIR.
constexpr const char* mockedSys = "libumockdev-preload.so.0";
constexpr const char* device = "sys/devices/platform/laptop/power_supply";

class RealUPowerTest : public testing::Test {
protected:
    void SetUp() override {
        if (bus.problem()) {
            GTEST_SKIP() << *bus.problem();
        }
        if (!std::filesystem::exists(daemonProgram)) {
            GTEST_SKIP() << "upower is not installed";
        }
        if (!isInstalled(mockedSys)) {
            GTEST_SKIP() << "umockdev is not installed";
        }
        std::filesystem::create_directories(machine / "sys/bus");
        plugIn("AC", {{"type", "Mains"}});
        plugIn("BAT0", {{"type", "Battery"},
                        {"present", "1"},
                        {"technology", "Li-ion"},
                        {"energy_full", "45070000"},
                        {"energy_full_design", "47520000"},
                        {"voltage_now", "11660000"},
                        {"power_now", "5002000"}});
    }

    static bool isInstalled(const char* library) {
        void* handle = dlopen(library, RTLD_LAZY | RTLD_LOCAL);
        if (handle != nullptr) {
            dlclose(handle);
        }
        return handle != nullptr;
    }

    void plugIn(const std::string& supply, const std::map<std::string, std::string>& attributes) const {
        write(supply, "uevent", "POWER_SUPPLY_NAME=" + supply);
        for (const auto& [attribute, value] : attributes) {
            write(supply, attribute, value);
        }
        std::filesystem::create_directories(machine / "sys/class/power_supply");
        std::filesystem::create_directory_symlink(fmt::format("../../../{}/{}", device, supply),
                                                  machine / ("sys/class/power_supply/" + supply));
        std::filesystem::create_directory_symlink("../../../../../class/power_supply",
                                                  machine / fmt::format("{}/{}/subsystem", device, supply));
    }

    void write(const std::string& supply, const std::string& attribute, const std::string& value) const {
        machine.write(fmt::format("{}/{}/{}", device, supply, attribute), value + "\n");
    }

    /// In place of the one that runs, which is killed: on its own it would leave notes on this machine.
    void startUPower() {
        upower.reset();
        upower.emplace(daemonProgram, std::vector<std::string>(),
                       std::map<std::string, std::string>{{"LD_PRELOAD", mockedSys},
                                                          {"UMOCKDEV_DIR", machine.path().string()},
                                                          {"DBUS_SYSTEM_BUS_ADDRESS", bus.address()}});
    }

    /// False when that is not what UPower tells in the time a test waits.
    bool becomes(const PowerSourceDescription& expected) {
        const auto end = std::chrono::steady_clock::now() + testPatience;
        const auto isSo = [&] { return known == UPowerClient::Batteries{expected}; };
        while (!isSo() && std::chrono::steady_clock::now() < end) {
            context.restart();
            context.run_one_for(std::chrono::milliseconds(100));
        }
        return isSo();
    }

    TemporaryFolder machine;
    PrivateBus bus;
    const EnvironmentVariable systemBus{"DBUS_SYSTEM_BUS_ADDRESS", bus.address().c_str()};
    std::optional<ChildProcess> upower;
    asio::io_context context{1};
    std::optional<UPowerClient::Batteries> known;
    UPowerClient client{context, {}, [this](auto batteries) { known = std::move(batteries); }};
};

TEST_F(RealUPowerTest, TellsOfABatteryInUseAndThenOnTheMains) {
    write("AC", "online", "0");
    write("BAT0", "status", "Discharging");
    write("BAT0", "energy_now", "36580000");
    write("BAT0", "capacity", "81");
    client.start();
    startUPower();
    EXPECT_TRUE(becomes(
        {.currentCapacity = 36'580, .maxCapacity = 45'070, .state = "Battery Power", .isCharging = false}));

    write("AC", "online", "1");
    write("BAT0", "status", "Charging");
    write("BAT0", "energy_now", "36600000");
    startUPower();
    EXPECT_TRUE(becomes({.currentCapacity = 36'600,
                         .maxCapacity = 45'070,
                         .state = PowerSources::acPower,
                         .isCharging = true}));
}

}  // namespace
}  // namespace corvane
