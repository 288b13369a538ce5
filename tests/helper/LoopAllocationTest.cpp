#include "tests/helper/HelperMachine.h"
#include "tests/platform/simulated/AllocationCount.h"

namespace corvane {
namespace {

/// A queue whose timers run when a test says so, and which itself allocates nothing then.
class HandDrivenQueue final : public SerialQueue {
public:
    void async(Work work) override { work(); }
    void sync(const Work& work) override { work(); }
    void syncAhead(const Work& work) override { work(); }
    [[nodiscard]] std::unique_ptr<Timer> after(Duration /*delay*/, Work work) override {
        return add(std::move(work));
    }
    [[nodiscard]] std::unique_ptr<Timer> at(WallTime /*time*/, Work work) override {
        return add(std::move(work));
    }
    [[nodiscard]] std::unique_ptr<Timer> every(Duration /*first*/, Duration /*period*/, Work work) override {
        return add(std::move(work));
    }
    void sleep(Duration /*duration*/) override {}
    [[nodiscard]] BootTime bootTime() const override { return BootTime(1h); }
    [[nodiscard]] WallTime wallTime() const override { return WallTime(1h); }

    /// Timers are counted in the order they were made.
    void fire(std::size_t timer) { works_.at(timer)(); }

private:
    class NoTimer final : public Timer {};

    std::unique_ptr<Timer> add(Work work) {
        works_.push_back(std::move(work));
        return std::make_unique<NoTimer>();
    }

    std::vector<Work> works_;
};

class SilentLog final : public Log {
public:
    void write(std::string_view line) noexcept override { bytesWritten += line.size(); }
    std::size_t bytesWritten = 0;
};

constexpr std::size_t watchdogTimer = 0;
constexpr std::size_t loopTimer = 1;

TEST(LoopAllocation, NoTickAllocates) {
    VirtualTime time;
    SimulatedMac mac({.model = macBookPro16()}, [&] { return time.bootTime(); });
    SimulatedSmc connection(mac);
    csmc_use_connection(&connection);
    HandDrivenQueue queue;
    SimulatedSleepSetting sleepSetting;
    SilentLog log;
    const auto service = FanHelperService::create(queue, sleepSetting, log);
    service->setFanFloorWithPercentWithReply(50.0, [](bool /*ok*/, const std::string& /*text*/) {});
    ASSERT_TRUE(mac.isFanForced(0));

    const std::uint64_t writesBefore = mac.writeCount();
    const std::size_t loggedBefore = log.bytesWritten;
    const std::size_t allocationsBefore = allocationCount();
    for (int tick = 2; tick <= 40; ++tick) {
        queue.fire(loopTimer);
        queue.fire(watchdogTimer);
    }
    EXPECT_EQ(allocationCount(), allocationsBefore);
    EXPECT_EQ(mac.writeCount() - writesBefore, 39U * 5U);
    EXPECT_GT(log.bytesWritten, loggedBefore) << "the reports of ticks 20 and 40 included";
    csmc_use_connection(nullptr);
}

}  // namespace
}  // namespace corvane
