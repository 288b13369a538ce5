#pragma once

#include <memory>
#include <string_view>

#include "bench/CountingSysfs.h"
#include "bench/HandTurnedQueue.h"
#include "bench/HwmonTree.h"
#include "helper/FanHelperService.h"
#include "platform/Log.h"
#include "platform/SmcConnection.h"
#include "platform/simulated/SimulatedMac.h"
#include "platform/simulated/SimulatedSleepSetting.h"

namespace corvane {

/// A fan helper with its control loop running, whose ticks happen when asked for. One at a time: the SMC
/// layer has one connection.
class TickRig {
public:
    TickRig(const TickRig&) = delete;
    TickRig& operator=(const TickRig&) = delete;
    virtual ~TickRig();

    /// The next two ticks, 0.4 s each: one takes the temperature and drives the fans, one drives them only.
    void twoTicks() {
        queue_.turn(tickPeriod);
        queue_.turn(tickPeriod);
    }

    /// A status request, answered at once.
    [[nodiscard]] StatusRecord status();

    /// Attribute use so far; all zero where there are no attributes.
    [[nodiscard]] const SysfsUse& sysfsUse() const { return sysfsUse_; }

protected:
    TickRig() = default;

    [[nodiscard]] HandTurnedQueue& queue() { return queue_; }
    [[nodiscard]] Log& log() { return log_; }
    [[nodiscard]] SysfsUse& mutableSysfsUse() { return sysfsUse_; }

    /// Starts the helper on `smc` and holds the fans at 40 %. Throws unless it then sees two fans and 60
    /// sensors and holds the fans.
    void start(std::unique_ptr<SmcConnection> smc);
    /// To be called before anything that the connection needs goes away.
    void stop();

private:
    static constexpr Duration tickPeriod = std::chrono::milliseconds(400);

    struct NoLog final : Log {
        void write(std::string_view /*line*/) noexcept override {}
    };

    HandTurnedQueue queue_;
    SimulatedSleepSetting sleepSetting_;
    NoLog log_;
    SysfsUse sysfsUse_;
    std::unique_ptr<SmcConnection> smc_;
    std::shared_ptr<FanHelperService> service_;
};

/// On a simulated Mac, which goes on living between the ticks.
class SimulatedTickRig final : public TickRig {
public:
    SimulatedTickRig();
    ~SimulatedTickRig() override { stop(); }

private:
    SimulatedMac mac_;
};

/// On attribute files.
class HwmonTickRig final : public TickRig {
public:
    HwmonTickRig();
    ~HwmonTickRig() override { stop(); }

    [[nodiscard]] const HwmonTree& tree() const { return tree_; }

private:
    HwmonTree tree_;
};

}  // namespace corvane
