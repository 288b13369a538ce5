#include "platform/simulated/SimulatedHotKeyService.h"
#include "tests/platform/HotKeyServiceContract.h"

namespace corvane {
namespace {

class SimulatedHotKeysRig {
public:
    HotKeyService& service() { return service_; }
    void press(char letter) { service_.press(letter); }
    void take(char letter) { service_.take(letter); }

private:
    SimulatedHotKeyService service_;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, HotKeyServiceContract, SimulatedHotKeysRig);

}  // namespace corvane
