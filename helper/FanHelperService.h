#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "helper/FanKeys.h"
#include "helper/SafetyTempHistory.h"
#include "platform/FanHelperProtocol.h"
#include "platform/Log.h"
#include "platform/SerialQueue.h"
#include "platform/SystemSleepSetting.h"

namespace corvane {

/// The privileged fan helper: while the application holds a floor it forces every fan to the larger of the
/// floor and the safety curve, and on every doubt it hands them back to the firmware and checks that it did.
///
/// The operations of `FanHelperProtocol` may be called from any thread; they only clamp and enqueue. All
/// other members, and everything that touches the SMC, belong to the queue. Queued work holds the service
/// weakly.
class FanHelperService final : public FanHelperProtocol,
                               public std::enable_shared_from_this<FanHelperService> {
public:
    /// Opens the SMC, learns fans and sensors, hands every fan back and starts the watchdog. The arguments
    /// outlive the service; nothing runs on `queue` yet.
    static std::shared_ptr<FanHelperService> create(SerialQueue& queue, SystemSleepSetting& sleepSetting,
                                                    Log& log);

    void pingWithReply(Reply reply) override;
    void getStatusWithReply(StatusReply reply) override;
    void setFanFloorWithPercentWithReply(double percent, Reply reply) override;
    void stopBoostWithReply(Reply reply) override;
    void setLidStayAwakeWithReply(bool on, Reply reply) override;

    /// Releases everything the helper holds: fans, then the lid setting.
    void emergencyRelease();

    /// Hands the fans back because the computer is about to sleep, and leaves them there until it is awake
    /// again, whatever is asked; the lid setting stays.
    void releaseBeforeSuspend();
    /// Holds the floor that was asked for meanwhile, by a client that heard of the resume earlier, say;
    /// forgets it when its client was not heard for as long as the watchdog waits.
    void resumeAfterSuspend();

private:
    FanHelperService(SerialQueue& queue, SystemSleepSetting& sleepSetting, Log& log);

    // Start-up (FanHelperService.cpp)
    void learnFans();
    void learnUnknownLimits(std::size_t fan);
    void learnSensors();
    [[nodiscard]] std::vector<std::string> discoverTempKeys(bool cpuOnly) const;
    void resetToAutomatic();
    void startWatchdog();
    void checkContact();
    [[nodiscard]] bool isClientSilent() const;
    void dropPendingFloor();

    // The control loop (ControlLoop.cpp)
    void startLoopIfNeeded();
    void applyOnce();
    [[nodiscard]] bool refreshTemperature();
    void forceFans(double effectivePercent, fmt::memory_buffer& outcome);
    void stopLoopAndRestore();
    [[nodiscard]] bool attemptRestore();
    [[nodiscard]] std::optional<double> currentSafetyMaxTemp() const;
    [[nodiscard]] double smoothedSafetyTemp(double raw);
    [[nodiscard]] const char* modeKey(std::size_t fan);

    // Requests (FanHelperService.cpp, StatusReport.cpp, LidStayAwake.cpp)
    /// Queues `work` with the service, or with null when it is gone by then.
    void onQueue(std::function<void(FanHelperService* service)> work);
    void markContact();
    void setFloor(double percent, const Reply& reply);
    [[nodiscard]] StatusRecord statusRecord() const;
    void setLidStayAwake(bool on);
    void clearLidStayAwake();
    void runDisableSleep(bool on);

    SerialQueue& queue_;
    SystemSleepSetting& sleepSetting_;
    Log& log_;

    std::unique_ptr<Timer> loopTimer_;
    std::unique_ptr<Timer> watchdogTimer_;
    double floorPercent_ = 0;
    bool isBoosted_ = false;
    bool lidStayAwake_ = false;
    bool isSuspending_ = false;
    BootTime lastContact_;
    /// A contact mark waits in the queue: one stands for all pings that arrive meanwhile, however many.
    std::atomic<bool> isMarkQueued_ = false;
    /// Learnt at start-up and never changed: `pingWithReply` reads the count on other threads.
    int fanCount_ = 0;
    std::vector<FanKeys> fanKeys_;
    /// RPM, 0 when unknown.
    std::vector<int> minRPMs_;
    std::vector<int> maxRPMs_;
    /// Mode bytes as they were found.
    std::vector<int> originalMode_;
    std::vector<std::string> cpuTempKeys_;
    std::vector<std::string> safetyTempKeys_;
    std::vector<std::string> gpuTempKeys_;
    int applyTickCount_ = 0;
    double cachedTemp_ = 0;
    double lastThermalPct_ = 0;
    double lastEffectivePct_ = 0;
    SafetyTempHistory safetyTempHistory_;
    std::optional<bool> modeKeyIsUppercase_;
};

}  // namespace corvane
