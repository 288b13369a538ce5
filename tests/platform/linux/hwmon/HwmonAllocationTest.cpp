#include <gmock/gmock.h>

#include "platform/linux/hwmon/makeHwmonSmc.h"
#include "tests/platform/linux/hwmon/HwmonRig.h"
#include "tests/platform/linux/hwmon/TreeOnDisk.h"
#include "tests/platform/simulated/AllocationCount.h"

namespace corvane {
namespace {

using testing::Optional;

TEST(HwmonConnection, AllocatesNothingWhileFansAreHeld) {
    TreeOnDisk tree(machines::nct6775Board());
    RecordingLog log;
    SmcClient smc(makeHwmonSmc({tree.root, tree.folder.path("fans"), FanOwner::helper}, nullptr, log));
    ASSERT_EQ(smc.open(), 0);
    ASSERT_EQ(smc.writeUi8("F0Md", 1), SmcResult::success);

    const std::size_t before = allocationCount();
    const bool isHeld = smc.writeUi8("F0Md", 1) == SmcResult::success;
    const bool isDriven = smc.writeFlt("F0Tg", 2000.0F) == SmcResult::success;
    const std::optional<float> temperature = smc.flt("Tp00");
    const std::optional<float> speed = smc.flt("F0Ac");
    const std::optional<int> mode = smc.ui8("F0Md");
    EXPECT_EQ(allocationCount(), before);

    EXPECT_TRUE(isHeld);
    EXPECT_TRUE(isDriven);
    EXPECT_THAT(temperature, Optional(45.0F));
    EXPECT_THAT(speed, Optional(710.0F));
    EXPECT_THAT(mode, Optional(1));
    EXPECT_GT(allocationCount(), 0U) << "they are counted";
}

}  // namespace
}  // namespace corvane
