#include <memory>

#include "platform/macos/desktop/MacThermalState.h"
#include "platform/simulated/VirtualTime.h"
#include "tests/platform/ThermalStateMonitorContract.h"
#include "tests/platform/macos/fakes/Foundation/FakeThermalState.h"

namespace corvane {
namespace {

class MacThermalStateRig {
public:
    ThermalStateMonitor& monitor() { return monitor_; }
    void set(ThermalState state) { system_.set(static_cast<int>(state)); }
    void settle() { time_.settle(); }

private:
    VirtualTime time_;
    FakeDispatch dispatch_{time_};
    FakeThermalState system_;
    MacThermalState monitor_{dispatch_.mainQueue()};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Mac, ThermalStateMonitorContract, MacThermalStateRig);

class MacThermalStateTest : public testing::Test {
protected:
    VirtualTime time;
    FakeDispatch dispatch{time};
    FakeThermalState system;
    std::unique_ptr<MacThermalState> monitor = std::make_unique<MacThermalState>(dispatch.mainQueue());
};

TEST_F(MacThermalStateTest, TakesAStateThatIsNotKnownYetForTheHottest) {
    system.set(4);
    EXPECT_EQ(monitor->state(), ThermalState::critical);
}

TEST_F(MacThermalStateTest, TellsTheStateBeforeItsNoticeHasArrived) {
    system.set(2);
    EXPECT_EQ(monitor->state(), ThermalState::serious);
}

TEST_F(MacThermalStateTest, AnnouncesOnTheMainThreadWhatTheSystemPostsOnAnother) {
    bool isOnMainThread = false;
    const auto observation = monitor->observe([&] { isOnMainThread = dispatch.isOnMainThread(); });
    system.set(2);
    time.settle();
    EXPECT_TRUE(isOnMainThread);
}

TEST_F(MacThermalStateTest, IsSilentOnceItIsGoneThoughANoticeIsOnItsWay) {
    int changes = 0;
    const auto observation = monitor->observe([&] { ++changes; });
    system.set(3);
    monitor.reset();
    time.settle();
    EXPECT_EQ(changes, 0);
}

TEST_F(MacThermalStateTest, MayEndWhileItAnnounces) {
    const auto observation = monitor->observe([&] { monitor.reset(); });
    system.set(3);
    time.settle();
    EXPECT_EQ(monitor, nullptr);
}

}  // namespace
}  // namespace corvane
