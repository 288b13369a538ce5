// What the simulated desktop promises as every platform's does.

#include "platform/simulated/SimulatedLoginItem.h"
#include "platform/simulated/SimulatedRunningApplications.h"
#include "platform/simulated/SimulatedThermalState.h"
#include "tests/platform/LoginItemContract.h"
#include "tests/platform/RunningApplicationsContract.h"
#include "tests/platform/ThermalStateMonitorContract.h"

namespace corvane {
namespace {

class SimulatedLoginItemRig {
public:
    LoginItem& item() { return item_; }
    void breakDown() { item_.breakDown(); }

private:
    SimulatedLoginItem item_;
};

class SimulatedRunningApplicationsRig {
public:
    RunningApplications& applications() { return applications_; }
    void start(const std::string& identifier) { applications_.start(identifier); }
    void quit(const std::string& identifier) { applications_.quit(identifier); }
    void settle() {}

private:
    SimulatedRunningApplications applications_;
};

class SimulatedThermalStateRig {
public:
    ThermalStateMonitor& monitor() { return monitor_; }
    void set(ThermalState state) { monitor_.set(state); }
    void settle() {}

private:
    SimulatedThermalState monitor_;
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, LoginItemContract, SimulatedLoginItemRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, RunningApplicationsContract, SimulatedRunningApplicationsRig);
INSTANTIATE_TYPED_TEST_SUITE_P(Simulated, ThermalStateMonitorContract, SimulatedThermalStateRig);

}  // namespace corvane
