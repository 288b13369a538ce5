#include "platform/linux/hwmon/HwmonSmc.h"
#include "tests/platform/SmcConnectionContract.h"
#include "tests/platform/linux/hwmon/HwmonRig.h"

namespace corvane {
namespace {

/// A board whose fans the firmware drives by duty.
class HwmonSmcRig {
public:
    SmcConnection& connection() { return connection_; }

    std::int32_t openWithoutController() {
        HwmonRig nothing({});
        return nothing.connectUnopened().open();
    }

private:
    HwmonRig rig_{machines::nct6775Board()};
    HwmonSmc connection_{rig_.hardware.view(), rig_.journalPath, FanOwner::helper, &rig_.queue, rig_.log};
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(HwmonSmc, SmcConnectionContract, HwmonSmcRig);

}  // namespace corvane
