#include <functional>
#include <future>
#include <optional>

#include <gtest/gtest.h>

#include "platform/linux/desktop/UPowerSources.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/FakeUPower.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/TemporaryFolder.h"

namespace corvane {
namespace {

using std::chrono::milliseconds;

/// The kernel tells 80 %, UPower 57 %.
class UPowerSourcesTest : public testing::Test {
protected:
    void SetUp() override {
        if (bus.problem()) {
            GTEST_SKIP() << *bus.problem();
        }
        sys.write("class/power_supply/BAT0/type", "Battery\n");
        sys.write("class/power_supply/BAT0/status", "Discharging\n");
        sys.write("class/power_supply/BAT0/capacity", "80\n");
        upower.emplace(bus.address());
    }

    void TearDown() override {
        sources.reset();
        upower.reset();
    }

    void comeUpWithABattery() {
        upower->add("battery_BAT0", FakeUPower::battery());
        upower->comeUp();
    }

    void start(UPowerPatience patience = {}) { sources.emplace(thread, sys.path().string(), patience); }

    [[nodiscard]] std::optional<int> charge() const {
        const auto all = sources->descriptions();
        return all.size() == 1 && all.front() ? all.front()->currentCapacity : std::nullopt;
    }

    /// Whether that comes true, sooner or later; the bus thread gets its turn in between.
    bool becomes(const std::function<bool()>& isSo) {
        const auto end = std::chrono::steady_clock::now() + testPatience;
        while (!isSo() && std::chrono::steady_clock::now() < end) {
            std::promise<void> turn;
            thread.post([&] { turn.set_value(); });
            turn.get_future().wait();
        }
        return isSo();
    }

    bool comeFromUPower() {
        return becomes([&] { return charge() == 28'500; });
    }
    bool comeFromTheKernel() {
        return becomes([&] { return charge() == 80; });
    }

    TemporaryFolder sys;
    PrivateBus bus;
    const EnvironmentVariable systemBus{"DBUS_SYSTEM_BUS_ADDRESS", bus.address().c_str()};
    std::optional<FakeUPower> upower;
    BusThread thread;
    std::optional<UPowerSources> sources;
};

TEST_F(UPowerSourcesTest, ComeFromUPower) {
    comeUpWithABattery();
    start();
    EXPECT_TRUE(comeFromUPower());
    EXPECT_EQ(sources->descriptions().front()->state, "Battery Power");
}

TEST_F(UPowerSourcesTest, ComeFromTheKernelAtOnceWhileUPowerHasNotAnswered) {
    upower->setHanging(true);
    comeUpWithABattery();
    start();
    EXPECT_EQ(charge(), 80);
    ASSERT_TRUE(upower->enumerations().waitFor(1));
    EXPECT_EQ(charge(), 80);
}

TEST_F(UPowerSourcesTest, ComeFromTheKernelWithoutUPowerAndWhenItIsGone) {
    start();
    EXPECT_EQ(charge(), 80);
    comeUpWithABattery();
    EXPECT_TRUE(comeFromUPower());
    upower.reset();
    EXPECT_TRUE(comeFromTheKernel());
}

TEST_F(UPowerSourcesTest, ComeFromTheKernelWhenUPowerHangs) {
    comeUpWithABattery();
    start({.answers = milliseconds(50)});
    ASSERT_TRUE(comeFromUPower());
    upower->setHanging(true);
    upower->setOnBattery(false);
    EXPECT_TRUE(comeFromTheKernel());
}

TEST_F(UPowerSourcesTest, ComeFromTheKernelWhileUPowerKnowsNoBattery) {
    upower->comeUp();
    start();
    ASSERT_TRUE(upower->enumerations().waitFor(1));
    EXPECT_EQ(charge(), 80);
    upower->add("battery_BAT0", FakeUPower::battery());
    EXPECT_TRUE(comeFromUPower());
    upower->remove("battery_BAT0");
    EXPECT_TRUE(comeFromTheKernel());
}

TEST_F(UPowerSourcesTest, ComeFromTheKernelWithoutABus) {
    const EnvironmentVariable none("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/no/such/bus");
    start();
    EXPECT_TRUE(becomes([&] { return charge() == 80; }));
}

TEST_F(UPowerSourcesTest, ComeFromTheKernelWhenTheBusHasGoneAway) {
    comeUpWithABattery();
    start();
    ASSERT_TRUE(comeFromUPower());
    upower.reset();
    bus.end();
    EXPECT_TRUE(comeFromTheKernel());
}

TEST_F(UPowerSourcesTest, MayGoWhileAQuestionIsOpen) {
    upower->setHanging(true);
    comeUpWithABattery();
    start();
    ASSERT_TRUE(upower->enumerations().waitFor(1));
    sources.reset();
    start();
    sources.reset();
}

}  // namespace
}  // namespace corvane
