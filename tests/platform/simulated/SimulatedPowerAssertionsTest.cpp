#include "platform/simulated/SimulatedPowerAssertions.h"
#include "tests/platform/PowerAssertionsContract.h"

namespace corvane {
namespace {

class SimulatedPowerAssertionsRig {
public:
    PowerAssertions& assertions() { return assertions_; }

    [[nodiscard]] std::vector<std::pair<std::string, std::string>> held() const {
        std::vector<std::pair<std::string, std::string>> all;
        for (const auto& [id, assertion] : assertions_.held()) {
            all.emplace_back(assertion.type, assertion.name);
        }
        return all;
    }

    void refuse() { assertions_.refuse(PowerAssertions::preventUserIdleSystemSleep); }

private:
    SimulatedPowerAssertions assertions_;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, PowerAssertionsContract, SimulatedPowerAssertionsRig);

}  // namespace corvane
