#include "platform/simulated/SimulatedSmc.h"
#include "platform/simulated/VirtualTime.h"
#include "tests/platform/SmcConnectionContract.h"

namespace corvane {
namespace {

class SimulatedSmcRig {
public:
    SmcConnection& connection() { return connection_; }

    std::int32_t openWithoutController() {
        mac_.setSmcPresent(false);
        return connection_.open();
    }

private:
    VirtualTime time_;
    SimulatedMac mac_{{}, [this] { return time_.bootTime(); }};
    SimulatedSmc connection_{mac_};
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(SimulatedSmc, SmcConnectionContract, SimulatedSmcRig);

}  // namespace corvane
