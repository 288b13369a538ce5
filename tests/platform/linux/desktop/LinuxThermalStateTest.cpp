#include <array>
#include <memory>
#include <string>

#include "platform/linux/desktop/LinuxThermalState.h"
#include "platform/simulated/VirtualTime.h"
#include "tests/platform/ThermalStateMonitorContract.h"
#include "tests/platform/linux/desktop/ThermalTree.h"

namespace corvane {
namespace {

using enum ThermalState;
using std::chrono::milliseconds;
using std::chrono::seconds;

/// A zone that is as hot as each state takes, and time for the next reading.
class LinuxThermalStateRig {
public:
    LinuxThermalStateRig() {
        write("trip_point_0_type", "passive");
        write("trip_point_0_temp", "80000");
        write("trip_point_1_type", "critical");
        write("trip_point_1_temp", "110000");
        set(nominal);
        monitor_ = std::make_unique<LinuxThermalState>(mainLoop_, sys_.path().string());
    }

    ThermalStateMonitor& monitor() { return *monitor_; }
    void set(ThermalState state) const {
        constexpr std::array temperatures = {"40000", "85000", "98000", "106000"};
        write("temp", temperatures.at(static_cast<std::size_t>(state)));
    }
    void settle() { time_.advance(seconds(5)); }

private:
    void write(const std::string& name, const char* value) const {
        sys_.write("class/thermal/thermal_zone0/" + name, value);
    }

    const TemporaryFolder sys_;
    VirtualTime time_;
    VirtualQueue mainLoop_{time_};
    std::unique_ptr<LinuxThermalState> monitor_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Linux, ThermalStateMonitorContract, LinuxThermalStateRig);

class LinuxThermalStateTest : public ThermalTree {
protected:
    void SetUp() override { zone(0, 85'000, {{"passive", 80'000}, {"critical", 110'000}}); }

    std::unique_ptr<Observation> note() {
        return thermal().observe([this] { seen.push_back(thermal().state()); });
    }

    /// Made at its first use, when the tree is there.
    LinuxThermalState& thermal() {
        if (!monitor) {
            monitor = std::make_unique<LinuxThermalState>(mainLoop, sys.path().string());
        }
        return *monitor;
    }

    VirtualTime time;
    VirtualQueue mainLoop{time};
    std::vector<ThermalState> seen;
    std::unique_ptr<LinuxThermalState> monitor;
};

TEST_F(LinuxThermalStateTest, IsReadAtOnceAndNotAnnounced) {
    const auto observation = note();
    EXPECT_EQ(thermal().state(), fair);
    time.advance(seconds(60));
    EXPECT_EQ(seen, std::vector<ThermalState>());
}

TEST_F(LinuxThermalStateTest, IsReadEveryFiveSecondsAndAnnouncedWhenItChanges) {
    const auto observation = note();
    heat(0, 106'000);
    time.advance(milliseconds(4999));
    EXPECT_EQ(thermal().state(), fair);
    time.advance(milliseconds(1));
    EXPECT_EQ(thermal().state(), critical);
    EXPECT_EQ(seen, std::vector{critical});
    time.advance(seconds(5));
    EXPECT_EQ(seen.size(), 1U);
    heat(0, 40'000);
    time.advance(seconds(5));
    EXPECT_EQ(seen, (std::vector{critical, nominal}));
}

TEST_F(LinuxThermalStateTest, IsReadOnceAfterASuspend) {
    const auto observation = note();
    heat(0, 40'000);
    time.suspend(std::chrono::hours(8));
    time.settle();
    EXPECT_EQ(seen, std::vector{nominal});
}

TEST_F(LinuxThermalStateTest, IsAnnouncedToAllWhoStillObserve) {
    const auto first = note();
    auto second = note();
    auto third = thermal().observe([&] { second.reset(); });
    heat(0, 40'000);
    time.advance(seconds(5));
    EXPECT_EQ(seen.size(), 2U);
    heat(0, 106'000);
    time.advance(seconds(5));
    EXPECT_EQ(seen.size(), 3U);
}

TEST_F(LinuxThermalStateTest, MayBeEndedByWhoeverHearsOfIt) {
    std::unique_ptr<Observation> once;
    once = thermal().observe([&] {
        seen.push_back(thermal().state());
        once.reset();
    });
    heat(0, 40'000);
    time.advance(seconds(5));
    heat(0, 106'000);
    time.advance(seconds(5));
    EXPECT_EQ(seen, std::vector{nominal});
}

TEST_F(LinuxThermalStateTest, IsReadNoMoreWhenTheMonitorIsGone) {
    const auto observation = note();
    monitor.reset();
    heat(0, 106'000);
    time.advance(seconds(60));
    EXPECT_EQ(seen, std::vector<ThermalState>());
}

}  // namespace
}  // namespace corvane
