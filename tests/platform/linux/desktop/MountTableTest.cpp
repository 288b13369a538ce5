#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/desktop/MountTable.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* laptop =
    "21 28 0:19 / /sys rw,nosuid shared:7 - sysfs sysfs rw\n"
    "28 1 259:2 / / rw,relatime shared:1 - ext4 /dev/nvme0n1p2 rw\n"
    "41 28 0:35 / /run/user/1000 rw - tmpfs tmpfs rw,size=1k\n"
    "42 28 7:0 / /snap/core/1 ro,nodev shared:9 - squashfs /dev/loop0 ro\n"
    "43 28 259:1 / /boot/efi rw - vfat /dev/nvme0n1p1 rw\n"
    "44 28 259:3 / /home rw - ext4 /dev/nvme0n1p3 rw\n"
    "45 28 8:1 / /media/anna/My\\040Drive rw,nosuid shared:10 master:2 - ext4 /dev/sda1 rw\n"
    "46 28 8:17 / /run/media/anna/Photos rw - fuseblk /dev/sdb1 rw,user_id=0\n"
    "47 28 0:51 / /mnt/nas rw - nfs4 nas:/export rw\n"
    "48 28 0:52 / /media/ram rw - tmpfs tmpfs rw\n"
    "49 28 0:53 / /mnt/later rw - autofs systemd-1 rw\n"
    "50 28 8:33 / /mnt/disk rw - xfs /dev/sdc1 rw\n"
    "51 28 8:34 / /mediatheque rw - xfs /dev/sdc2 rw\n";

TEST(MountTableTest, TellsThePathTypeAndSourceOfEachMount) {
    const auto mounts = parseMountTable(laptop);
    ASSERT_EQ(mounts.size(), 13U);
    EXPECT_EQ(mounts[6].path, "/media/anna/My Drive");
    EXPECT_EQ(mounts[6].type, "ext4");
    EXPECT_EQ(mounts[6].source, "/dev/sda1");
}

TEST(MountTableTest, DecodesWhatTheKernelEscapes) {
    const auto mounts = parseMountTable(
        "1 1 8:1 / /a\\011b\\012c\\134d\\040\\303\\244 rw - ext4 /dev/x rw\n2 1 8:1 / /e\\08\\ rw - ext4 "
        "/dev/y rw");
    ASSERT_EQ(mounts.size(), 2U);
    EXPECT_EQ(mounts[0].path, "/a\tb\nc\\d ä");
    EXPECT_EQ(mounts[1].path, "/e\\08\\");
}

TEST(MountTableTest, PassesOverLinesThatMakeNoSense) {
    EXPECT_THAT(parseMountTable(""), IsEmpty());
    EXPECT_THAT(
        parseMountTable("\n\n \n-\n- - - -\n1 2 3 4\n1 2 3 4 /a\n1 2 3 4 /a rw -\n1 2 3 4 a rw - x y"),
        IsEmpty());
}

TEST(MountTableTest, KnowsWhereSomethingIsMounted) {
    EXPECT_TRUE(isMountPoint(laptop, "/media/anna/My Drive"));
    EXPECT_TRUE(isMountPoint(laptop, "/mnt/nas"));
    EXPECT_FALSE(isMountPoint(laptop, "/media/anna"));
    EXPECT_FALSE(isMountPoint(laptop, "/media/anna/My Drive/below"));
    EXPECT_FALSE(isMountPoint(laptop, ""));
    EXPECT_FALSE(isMountPoint(laptop, "/mnt/later")) << "nothing is there yet";
}

TEST(MountTableTest, TakesBlockDevicesWhereUsersMountThemForExternalVolumes) {
    const auto volume = [](const char* path) { return Volume{path, std::nullopt, false, true}; };
    EXPECT_THAT(volumesInTable(laptop), ElementsAre(volume("/media/anna/My Drive"),
                                                    volume("/run/media/anna/Photos"), volume("/mnt/disk")));
}

TEST(MountTableTest, IsEmptyWithoutATable) {
    const TemporaryFolder folder;
    EXPECT_EQ(readMountTable(folder / "none"), "");
    EXPECT_EQ(readMountTable(folder.write("some", laptop)), laptop);
}

}  // namespace
}  // namespace corvane
