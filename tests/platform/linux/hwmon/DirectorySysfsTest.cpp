#include <algorithm>
#include <filesystem>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "platform/linux/hwmon/DirectorySysfs.h"
#include "platform/linux/hwmon/makeHwmonSmc.h"
#include "smc/csmc.h"
#include "tests/platform/linux/hwmon/HwmonRig.h"
#include "tests/platform/linux/hwmon/TreeOnDisk.h"

namespace corvane {
namespace {

using testing::ElementsAre;
namespace fs = std::filesystem;

TEST(DirectorySysfs, ListsNamesInOrderAndFollowsLinks) {
    TreeOnDisk tree(machines::thinkPadT420());
    DirectorySysfs sysfs(tree.root);
    EXPECT_THAT(sysfs.list("class/hwmon"), ElementsAre("hwmon0", "hwmon1", "hwmon2"));
    EXPECT_THAT(sysfs.list("class/hwmon/hwmon1"),
                ElementsAre("device", "fan1_input", "name", "pwm1", "pwm1_enable"));
    EXPECT_THAT(sysfs.list("class/none"), ElementsAre());
    EXPECT_EQ(sysfs.canonicalPath("class/hwmon/hwmon2/device"), "devices/platform/coretemp.0");
    EXPECT_EQ(sysfs.canonicalPath("class/hwmon/hwmon7"), std::nullopt);
}

TEST(DirectorySysfs, DoesNotNameDevicesOutsideOfItself) {
    TreeOnDisk tree(machines::thinkPadT420());
    fs::create_directory_symlink("/", tree.root + "/class/hwmon/hwmon9");
    DirectorySysfs sysfs(tree.root);
    EXPECT_EQ(sysfs.canonicalPath("class/hwmon/hwmon9"), std::nullopt);
}

TEST(DirectorySysfs, IsBoundByModeBitsEvenAsRoot) {
    TreeOnDisk tree(machines::thinkPadT420());
    tree.write("secret", "1\n", 0200);
    DirectorySysfs sysfs(tree.root);
    EXPECT_EQ(sysfs.open("secret", SysfsAccess::read), nullptr);
    EXPECT_EQ(sysfs.open("class/hwmon/hwmon1/fan1_input", SysfsAccess::readWrite), nullptr);
    EXPECT_NE(sysfs.open("class/hwmon/hwmon1/fan1_input", SysfsAccess::read), nullptr);
    EXPECT_NE(sysfs.open("class/hwmon/hwmon1/pwm1", SysfsAccess::readWrite), nullptr);
    EXPECT_EQ(sysfs.open("class/hwmon", SysfsAccess::read), nullptr) << "a folder is no attribute";
    EXPECT_EQ(sysfs.open("class/hwmon/hwmon1/nothing", SysfsAccess::read), nullptr);
}

TEST(DirectorySysfs, DoesNotHangOnAPipe) {
    TreeOnDisk tree(machines::thinkPadT420());
    ASSERT_EQ(::mkfifo((tree.root + "/pipe").c_str(), 0644), 0);
    DirectorySysfs sysfs(tree.root);
    EXPECT_EQ(sysfs.open("pipe", SysfsAccess::read), nullptr);
}

TEST(DirectorySysfs, ReadsAndWritesFromTheStartEachTime) {
    TreeOnDisk tree(machines::thinkPadT420());
    DirectorySysfs sysfs(tree.root);
    const auto duty = sysfs.open("class/hwmon/hwmon1/pwm1", SysfsAccess::readWrite);
    std::array<char, 8> buffer = {};
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(duty->read(buffer), 4);
        EXPECT_EQ(std::string_view(buffer.data(), 4), "255\n");
    }
    EXPECT_EQ(duty->write("100"), 0);
    EXPECT_EQ(duty->write("200"), 0);
    EXPECT_EQ(tree.firstLine("class/hwmon/hwmon1/pwm1"), "200");
}

/// The connection as the helper uses it, over files.
class HwmonThroughCsmc : public testing::Test {
public:
    ~HwmonThroughCsmc() override { csmc_use_connection(nullptr); }

protected:
    explicit HwmonThroughCsmc(const machines::Machine& machine) : tree(machine) {
        csmc_use_connection(connection.get());
    }
    HwmonThroughCsmc() : HwmonThroughCsmc(board()) {}

    /// Firmware modes of one digit, so that what is written over them reads back from an ordinary file.
    static machines::Machine board() {
        machines::Machine machine = machines::nct6775Board();
        machine.push_back(machines::asusX570()[4]);
        return machine;
    }

    TreeOnDisk tree;
    RecordingLog log;
    std::unique_ptr<SmcConnection> connection =
        makeHwmonSmc({tree.root, tree.folder.path("fans"), FanOwner::helper}, nullptr, log);
};

TEST_F(HwmonThroughCsmc, FindsFansAndSensorsAsTheHelperDoes) {
    EXPECT_EQ(csmc_open(), 0);
    std::uint8_t ok = 0;
    EXPECT_EQ(csmc_read_u8("FNum", &ok), 5);
    EXPECT_EQ(ok, 1);
    std::vector<std::string> sensors;
    char key[5] = {};
    for (std::uint32_t i = 0; i < csmc_key_count(); ++i) {
        ASSERT_EQ(csmc_key_at_index(i, key), 0);
        if (key[0] == 'T') {
            sensors.emplace_back(key);
        }
    }
    EXPECT_THAT(sensors, ElementsAre("Tg00", "Tg01", "Tg02", "Tp00"));
    EXPECT_EQ(csmc_read_flt("Tp00", &ok), 45.0F);
    EXPECT_EQ(csmc_read_flt("F4Ac", nullptr), 750.0F);
}

TEST_F(HwmonThroughCsmc, HoldsAndReleasesAllFansAsTheHelperDoes) {
    for (int tick = 0; tick < 3; ++tick) {
        EXPECT_EQ(csmc_write_u8("Ftst", 1), 0);
        for (const std::string fan : {"F0", "F1", "F2", "F3", "F4"}) {
            EXPECT_EQ(csmc_write_u8((fan + "Md").c_str(), 1), 0);
            EXPECT_EQ(csmc_write_flt((fan + "Tg").c_str(), 1500.0F), 0);
        }
    }
    const std::string chip = machines::nct6775Board()[0].directory();
    EXPECT_EQ(tree.firstLine(chip + "/pwm5"), "128");
    EXPECT_EQ(tree.firstLine(chip + "/pwm5_enable"), "1");
    const std::string journal = tree.folder.read("fans");
    EXPECT_EQ(std::count(journal.begin(), journal.end(), '\n'), 5);

    for (const std::string fan : {"F0", "F1", "F2", "F3", "F4"}) {
        EXPECT_EQ(csmc_write_flt((fan + "Tg").c_str(), 0.0F), 0);
        EXPECT_EQ(csmc_write_u8((fan + "Md").c_str(), 0), 0);
        EXPECT_EQ(csmc_read_u8((fan + "Md").c_str(), nullptr), 0);
    }
    EXPECT_EQ(tree.firstLine(chip + "/pwm5_enable"), "5");
    EXPECT_EQ(tree.folder.read("fans"), "");
}

TEST_F(HwmonThroughCsmc, TakesASpeedInTheOldFormatForNoMoreThanItIs) {
    EXPECT_EQ(csmc_write_u8("F0Md", 1), 0);
    EXPECT_EQ(csmc_write_fpe2("F0Tg", 3000), 0);
    EXPECT_EQ(tree.firstLine(machines::nct6775Board()[0].path("pwm1")), "101") << "what it held";
}

class NoHwmon : public HwmonThroughCsmc {
protected:
    NoHwmon() : HwmonThroughCsmc(machines::Machine{}) {}
};

TEST_F(NoHwmon, IsNoController) {
    EXPECT_EQ(csmc_open(), SmcConnection::noService);
    EXPECT_EQ(csmc_key_count(), 0U);
}

}  // namespace
}  // namespace corvane
