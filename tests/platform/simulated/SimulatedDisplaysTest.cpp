#include "platform/simulated/SimulatedDisplays.h"
#include "tests/platform/DisplaysContract.h"

namespace corvane {
namespace {

class SimulatedDisplaysRig {
public:
    Displays& displays() { return displays_; }
    void set(const std::vector<Display>& displays) { displays_.set(displays); }
    void fail() { displays_.set(std::nullopt); }
    void settle() {}

private:
    SimulatedDisplays displays_;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, DisplaysContract, SimulatedDisplaysRig);

}  // namespace corvane
