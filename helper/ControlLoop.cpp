// The control loop of FanHelperService and its hand-back to the firmware.

#include <algorithm>
#include <iterator>

#include "core/ThermalCurve.h"
#include "helper/DaemonLog.h"
#include "helper/FanHelperService.h"
#include "smc/SmcReading.h"
#include "smc/csmc.h"

namespace corvane {

namespace {

using namespace std::chrono_literals;

constexpr Duration firstTickAfter = 100ms;
constexpr Duration tickPeriod = 400ms;
/// Every how many ticks the loop reports what it does: 8 s.
constexpr int ticksPerReport = 20;

constexpr int restoreAttempts = 5;
constexpr Duration restorePause = 120ms;

// Readings outside are broken sensors.
constexpr float coldestReadingC = 5.0F;
constexpr float hottestReadingC = 130.0F;

constexpr std::uint32_t automatic = 0;
constexpr std::uint32_t manual = 1;

int targetRpm(double percent, int minRPM, int maxRPM) {
    const int range = std::max(0, maxRPM - minRPM);
    return minRPM + static_cast<int>(percent * range / 100);
}

}  // namespace

void FanHelperService::startLoopIfNeeded() {
    if (loopTimer_) {
        return;
    }
    isBoosted_ = true;
    loopTimer_ = queue_.every(firstTickAfter, tickPeriod, [weak = weak_from_this()] {
        if (const auto service = weak.lock()) {
            service->applyOnce();
        }
    });
    logDaemon(log_, ": loop started");
}

void FanHelperService::applyOnce() {
    if (!(floorPercent_ > 0)) {
        return;
    }
    if (safetyTempKeys_.empty()) {
        logDaemon(log_, ": no temp sensors — refusing manual control for safety");
        stopLoopAndRestore();
        return;
    }
    const std::int32_t ftstCode = csmc_write_u8("Ftst", 1);
    ++applyTickCount_;
    if (!refreshTemperature()) {
        logDaemon(log_, ": lost all temp readings — releasing to Apple");
        stopLoopAndRestore();
        return;
    }
    const double temp = cachedTemp_;
    if (ThermalCurve::isCritical(temp)) {
        logDaemon(log_, ": CRITICAL temp {:.0f}° ≥ {:.0f}° — releasing FULL control to Apple", temp,
                  ThermalCurve::criticalReleaseC);
        stopLoopAndRestore();
        return;
    }
    lastThermalPct_ = ThermalCurve::requiredPercent(temp);
    lastEffectivePct_ = std::max(floorPercent_, lastThermalPct_);

    fmt::memory_buffer outcome;
    forceFans(lastEffectivePct_, outcome);
    if (applyTickCount_ == 1 || applyTickCount_ % ticksPerReport == 0) {
        logDaemon(log_, ": #{} Ftst={} temp={:.0f}° floor={:.0f}% eff={:.0f}% {}", applyTickCount_, ftstCode,
                  temp, floorPercent_, lastEffectivePct_, std::string_view(outcome.data(), outcome.size()));
    }
}

/// Takes a fresh temperature on every odd tick. False when no sensor gave one.
bool FanHelperService::refreshTemperature() {
    if (applyTickCount_ % 2 == 0) {
        return true;
    }
    const std::optional<double> hottest = currentSafetyMaxTemp();
    if (hottest) {
        cachedTemp_ = smoothedSafetyTemp(*hottest);
    }
    return hottest.has_value();
}

/// Writes mode and target of every fan. Refused writes do not stop the loop; their codes are told in
/// `outcome`.
void FanHelperService::forceFans(double effectivePercent, fmt::memory_buffer& outcome) {
    for (std::size_t fan = 0; fan < fanKeys_.size(); ++fan) {
        learnUnknownLimits(fan);
        const int target = targetRpm(effectivePercent, minRPMs_[fan], maxRPMs_[fan]);
        const std::int32_t modeCode = csmc_write_u8(modeKey(fan), manual);
        const std::int32_t targetCode =
            csmc_write_flt(fanKeys_[fan].target.c_str(), static_cast<float>(target));
        fmt::format_to(std::back_inserter(outcome), "{}F{}:Md={},Tg={}/{}", fan == 0 ? "" : " ", fan,
                       modeCode, target, targetCode);
    }
}

void FanHelperService::stopLoopAndRestore() {
    loopTimer_.reset();
    isBoosted_ = false;
    floorPercent_ = 0;
    applyTickCount_ = 0;
    lastThermalPct_ = 0;
    lastEffectivePct_ = 0;
    safetyTempHistory_.clear();

    for (int attempt = 1; attempt <= restoreAttempts; ++attempt) {
        if (attemptRestore()) {
            logDaemon(log_, ": released to Apple-auto (verified, attempt {})", attempt);
            return;
        }
        queue_.sleep(restorePause);
    }
    logDaemon(
        log_,
        ": WARNING — could not verify auto mode after retries; loop is stopped so firmware will reclaim "
        "shortly");
}

/// One hand-back of every fan. True when every fan's mode then reads automatic; a mode that cannot be read
/// counts as automatic.
bool FanHelperService::attemptRestore() {
    for (std::size_t fan = 0; fan < fanKeys_.size(); ++fan) {
        csmc_write_flt(fanKeys_[fan].target.c_str(), 0.0F);
        csmc_write_u8(modeKey(fan), automatic);
    }
    csmc_write_u8("Ftst", 0);
    bool verified = true;
    for (std::size_t fan = 0; fan < fanKeys_.size(); ++fan) {
        verified = csmc_read_u8(modeKey(fan), nullptr) == automatic && verified;
    }
    return verified;
}

std::optional<double> FanHelperService::currentSafetyMaxTemp() const {
    std::optional<double> hottest;
    for (const std::string& key : safetyTempKeys_) {
        const std::optional<float> value = readFinite(key.c_str());
        if (value && *value > coldestReadingC && *value < hottestReadingC) {
            hottest = std::max(hottest.value_or(0.0), static_cast<double>(*value));
        }
    }
    return hottest;
}

double FanHelperService::smoothedSafetyTemp(double raw) {
    safetyTempHistory_.append(raw);
    return safetyTempHistory_.median();
}

/// The spelling is found out once per process, on first need.
const char* FanHelperService::modeKey(std::size_t fan) {
    if (!modeKeyIsUppercase_) {
        modeKeyIsUppercase_ = csmc_key_info("F0Md", nullptr, nullptr, nullptr) == 0;
    }
    return (*modeKeyIsUppercase_ ? fanKeys_[fan].modeUpperCase : fanKeys_[fan].modeLowerCase).c_str();
}

}  // namespace corvane
