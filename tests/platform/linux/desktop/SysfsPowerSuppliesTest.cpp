#include <filesystem>
#include <string>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/linux/desktop/SysfsPowerSupplies.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

constexpr const char* batteryPower = "Battery Power";

class SysfsPowerSuppliesTest : public testing::Test {
protected:
    void write(const std::string& supply, const std::string& attribute, const std::string& value) const {
        sys.write(fmt::format("class/power_supply/{}/{}", supply, attribute), value + "\n");
    }

    void remove(const std::string& path) const {
        std::filesystem::remove_all(sys / ("class/power_supply/" + path));
    }

    void plugIn(const std::string& adapter, const std::string& type, const std::string& online) const {
        write(adapter, "type", type);
        write(adapter, "online", online);
    }

    void insert(const std::string& battery, const std::string& status, const std::string& capacity) const {
        write(battery, "type", "Battery");
        write(battery, "status", status);
        write(battery, "capacity", capacity);
    }

    /// A ThinkPad X1 that runs on its battery; its firmware pads the model's name with NULs.
    void thinkPad() const {
        plugIn("AC", "Mains", "0");
        insert("BAT0", "Discharging", "81");
        write("BAT0", "present", "1");
        write("BAT0", "energy_full", "45070000");
        write("BAT0", "energy_full_design", "47520000");
        write("BAT0", "energy_now", "36580000");
        write("BAT0", "model_name", std::string("LNV-45N1\0\0", 10));
    }

    [[nodiscard]] PowerSourceDescription only() const {
        const auto all = supplies.descriptions();
        EXPECT_EQ(all.size(), 1U);
        return all.size() == 1 ? all.front().value_or(PowerSourceDescription()) : PowerSourceDescription();
    }

    TemporaryFolder sys;
    SysfsPowerSupplies supplies{sys.path().string()};
};

TEST_F(SysfsPowerSuppliesTest, AreNoneOnAComputerWithoutBatteries) {
    EXPECT_THAT(supplies.descriptions(), IsEmpty());
    plugIn("AC", "Mains", "1");
    EXPECT_THAT(supplies.descriptions(), IsEmpty());
}

TEST_F(SysfsPowerSuppliesTest, TellOfABatteryInUse) {
    thinkPad();
    EXPECT_THAT(supplies.descriptions(),
                ElementsAre(Optional(PowerSourceDescription{.currentCapacity = 36'580'000,
                                                            .maxCapacity = 45'070'000,
                                                            .state = batteryPower,
                                                            .isCharging = false})));
}

TEST_F(SysfsPowerSuppliesTest, ReadAfreshEachTime) {
    thinkPad();
    EXPECT_EQ(only().isCharging, false);
    plugIn("AC", "Mains", "1");
    write("BAT0", "status", "Charging");
    write("BAT0", "energy_now", "36590000");
    EXPECT_THAT(supplies.descriptions(),
                ElementsAre(Optional(PowerSourceDescription{.currentCapacity = 36'590'000,
                                                            .maxCapacity = 45'070'000,
                                                            .state = PowerSources::acPower,
                                                            .isCharging = true})));
    remove("BAT0");
    EXPECT_THAT(supplies.descriptions(), IsEmpty());
}

TEST_F(SysfsPowerSuppliesTest, LeaveOutWhatIsNoBatteryOfTheComputer) {
    thinkPad();
    insert("hidpp_battery_0", "Discharging", "5");
    write("hidpp_battery_0", "scope", "Device");
    write("ups", "type", "UPS");
    write("ups", "capacity", "40");
    insert("BAT1", "Unknown", "0");
    write("BAT1", "present", "0");
    write("broken", "status", "Full");
    EXPECT_EQ(only().currentCapacity, 36'580'000);
    write("BAT0", "scope", "System");
    EXPECT_EQ(only().currentCapacity, 36'580'000);
}

TEST_F(SysfsPowerSuppliesTest, ComeInTheOrderOfTheirNames) {
    insert("BAT1", "Discharging", "81");
    insert("BAT0", "Unknown", "5");
    insert("macsmc-battery", "Full", "100");
    const auto all = supplies.descriptions();
    ASSERT_EQ(all.size(), 3U);
    EXPECT_EQ(all[0]->currentCapacity, 5);
    EXPECT_EQ(all[1]->currentCapacity, 81);
    EXPECT_EQ(all[2]->currentCapacity, 100);
}

TEST_F(SysfsPowerSuppliesTest, TellTheChargeInWhatTheDriverHas) {
    insert("BAT0", "Discharging", "81");
    EXPECT_EQ(only().currentCapacity, 81);
    EXPECT_EQ(only().maxCapacity, 100);
    write("BAT0", "charge_now", "2290000");
    EXPECT_EQ(only().currentCapacity, 81) << "half a pair";
    write("BAT0", "charge_full", "5100000");
    EXPECT_EQ(only().currentCapacity, 2'290'000);
    EXPECT_EQ(only().maxCapacity, 5'100'000);
    write("BAT0", "energy_now", "36580000");
    write("BAT0", "energy_full", "45070000");
    EXPECT_EQ(only().currentCapacity, 36'580'000);
}

TEST_F(SysfsPowerSuppliesTest, PassOnALittleMoreThanFull) {
    insert("BAT0", "Full", "110");
    EXPECT_EQ(only().currentCapacity, 110);
    EXPECT_EQ(only().maxCapacity, 100);
}

TEST_F(SysfsPowerSuppliesTest, TellNoChargeThatCannotBe) {
    insert("BAT0", "Discharging", "81");
    for (const auto& [now, full] :
         {std::pair("36580000", "0"), std::pair("-1", "45070000"), std::pair("36580000", "-45070000"),
          std::pair("4294967295", "45070000"), std::pair("36580000", "4294967295"),
          std::pair("90140002", "45070000"), std::pair("36580000 µWh", "45070000"), std::pair("", "45070000"),
          std::pair("99999999999999999999999", "45070000")}) {
        write("BAT0", "energy_now", now);
        write("BAT0", "energy_full", full);
        EXPECT_EQ(only().currentCapacity, 81) << now << " of " << full;
        EXPECT_EQ(only().maxCapacity, 100) << now << " of " << full;
    }
    for (const char* capacity : {"-5", "65535", "many", "81%", "\0"}) {
        write("BAT0", "capacity", capacity);
        EXPECT_EQ(only().currentCapacity, std::nullopt) << capacity;
        EXPECT_EQ(only().maxCapacity, std::nullopt) << capacity;
        EXPECT_EQ(only().state, batteryPower);
    }
}

TEST_F(SysfsPowerSuppliesTest, AreOnTheMainsWhenAnAdapterIsOnline) {
    insert("BAT0", "Discharging", "81");
    plugIn("AC", "Mains", "1");
    EXPECT_EQ(only().state, PowerSources::acPower) << "beside a weak adapter";
    for (const char* status : {"Charging", "Not charging", "Full", "Unknown", "garbage"}) {
        write("BAT0", "status", status);
        EXPECT_EQ(only().state, PowerSources::acPower) << status;
    }
    remove("BAT0/status");
    EXPECT_EQ(only().state, PowerSources::acPower);
    EXPECT_EQ(only().isCharging, std::nullopt);
}

TEST_F(SysfsPowerSuppliesTest, KnowAllKindsOfAdapters) {
    insert("BAT0", "Discharging", "81");
    for (const char* type : {"Mains", "USB", "USB_PD", "USB_C", "Wireless"}) {
        plugIn("adapter", type, "1");
        EXPECT_EQ(only().state, PowerSources::acPower) << type;
        plugIn("adapter", type, "0");
        EXPECT_EQ(only().state, batteryPower) << type;
    }
    plugIn("adapter", "USB", "2");
    EXPECT_EQ(only().state, PowerSources::acPower) << "at a voltage that was negotiated";
}

TEST_F(SysfsPowerSuppliesTest, AreOnTheMainsWithAnyOfSeveralAdapters) {
    insert("BAT0", "Not charging", "80");
    plugIn("AC", "Mains", "0");
    plugIn("ucsi-source-psy-USBC000:001", "USB", "0");
    plugIn("ucsi-source-psy-USBC000:002", "USB", "1");
    EXPECT_EQ(only().state, PowerSources::acPower);
}

TEST_F(SysfsPowerSuppliesTest, TakeNoAdapterOfAnotherDeviceForTheirOwn) {
    insert("BAT0", "Discharging", "81");
    plugIn("mouse-cradle", "Mains", "1");
    write("mouse-cradle", "scope", "Device");
    EXPECT_EQ(only().state, batteryPower);
}

TEST_F(SysfsPowerSuppliesTest, DoubtAnAdapterThatDoesNotSayThatItIsOnline) {
    insert("BAT0", "Discharging", "81");
    write("AC", "type", "Mains");
    for (const char* online : {"", "-1", "yes"}) {
        write("AC", "online", online);
        EXPECT_EQ(only().state, batteryPower) << online;
    }
    remove("AC/online");
    EXPECT_EQ(only().state, batteryPower);
}

TEST_F(SysfsPowerSuppliesTest, BelieveABatteryThatChargesThoughNoAdapterIsOnline) {
    insert("BAT0", "Charging", "81");
    plugIn("AC", "Mains", "0");
    EXPECT_EQ(only().state, PowerSources::acPower);
    for (const char* status : {"Full", "Not charging", "Unknown", "Discharging", "garbage"}) {
        write("BAT0", "status", status);
        EXPECT_EQ(only().state, batteryPower) << status;
    }
}

TEST_F(SysfsPowerSuppliesTest, JudgeByTheBatteryWhereNoAdapterIsKnown) {
    insert("BAT0", "Charging", "81");
    for (const char* status : {"Charging", "Full", "Not charging"}) {
        write("BAT0", "status", status);
        EXPECT_EQ(only().state, PowerSources::acPower) << status;
    }
    for (const char* status : {"Discharging", "Unknown", "garbage"}) {
        write("BAT0", "status", status);
        EXPECT_EQ(only().state, batteryPower) << status;
    }
}

TEST_F(SysfsPowerSuppliesTest, CountAnIdleBatteryAsInUseWhileAnotherDischarges) {
    insert("BAT0", "Not charging", "100");
    insert("BAT1", "Discharging", "60");
    for (const auto& battery : supplies.descriptions()) {
        EXPECT_EQ(battery->state, batteryPower);
    }
    write("BAT0", "status", "Charging");
    for (const auto& battery : supplies.descriptions()) {
        EXPECT_EQ(battery->state, batteryPower) << "one battery charges the other";
    }
}

TEST_F(SysfsPowerSuppliesTest, HaveNoDescriptionOfABatteryThatTellsNothing) {
    write("BAT0", "type", "Battery");
    insert("BAT1", "Discharging", "60");
    const auto all = supplies.descriptions();
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[0], std::nullopt);
    EXPECT_EQ(all[1]->currentCapacity, 60);
}

TEST_F(SysfsPowerSuppliesTest, FollowLinksAsTheKernelLaysThem) {
    sys.write("devices/PNP0C0A:00/power_supply/BAT0/type", "Battery\n");
    sys.write("devices/PNP0C0A:00/power_supply/BAT0/status", "Full\n");
    std::filesystem::create_directories(sys / "class/power_supply");
    std::filesystem::create_directory_symlink("../../devices/PNP0C0A:00/power_supply/BAT0",
                                              sys / "class/power_supply/BAT0");
    EXPECT_EQ(only().state, PowerSources::acPower);
}

TEST_F(SysfsPowerSuppliesTest, ReadNoMoreThanTheyNeed) {
    insert("BAT0", "Discharging", "81");
    write("BAT0", "status", std::string(1 << 20, 'x'));
    EXPECT_EQ(only().isCharging, std::nullopt) << "no state is that long";
    write("BAT0", "type", "Battery" + std::string(4096, ' '));
    EXPECT_THAT(supplies.descriptions(), IsEmpty());

    for (int i = 0; i < 100; ++i) {
        insert(fmt::format("BAT{}", i), "Full", "100");
    }
    EXPECT_EQ(supplies.descriptions().size(), 64U);
}

TEST_F(SysfsPowerSuppliesTest, DoNotHangOnWhatIsNoFile) {
    insert("BAT0", "Discharging", "81");
    remove("BAT0/status");
    ASSERT_EQ(mkfifo((sys / "class/power_supply/BAT0/status").c_str(), 0600), 0);
    std::filesystem::create_directory(sys / "class/power_supply/BAT0/energy_now");
    EXPECT_EQ(only().isCharging, std::nullopt);
    EXPECT_EQ(only().currentCapacity, 81);
}

}  // namespace
}  // namespace corvane
