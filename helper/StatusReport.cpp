// The status record of FanHelperService.

#include <algorithm>
#include <span>

#include "core/ThermalCurve.h"
#include "helper/FanHelperService.h"
#include "smc/SmcReading.h"
#include "smc/csmc.h"

namespace corvane {

namespace {

/// Readings at or below this are power-gated or broken sensors.
constexpr float coldestReportedC = 20.0F;
constexpr float hottestGpuReadingC = 130.0F;

/// How far, in percent, the curve must exceed the floor before heat is said to override it.
constexpr double overrideMargin = 1.0;

/// Sum, count and maximum of the readings that count.
struct Readings {
    double sum = 0;
    double maximum = 0;
    int count = 0;

    void add(double celsius) {
        maximum = count == 0 ? celsius : std::max(maximum, celsius);
        sum += celsius;
        ++count;
    }

    [[nodiscard]] double average() const { return sum / count; }
};

template <typename IsValid>
Readings readAll(std::span<const std::string> keys, const IsValid& isValid) {
    Readings readings;
    for (const std::string& key : keys) {
        if (const std::optional<float> value = readFinite(key.c_str()); value && isValid(*value)) {
            readings.add(static_cast<double>(*value));
        }
    }
    return readings;
}

StatusRecord fanRecord(int index, const FanKeys& keys, int minRPM, int maxRPM) {
    StatusRecord fan;
    fan.set(StatusKey::index, index);
    fan.set(StatusKey::currentRPM, readRpm(keys.current.c_str()).value_or(0));
    fan.set(StatusKey::minRPM, minRPM);
    fan.set(StatusKey::maxRPM, maxRPM);
    fan.set(StatusKey::targetRPM, readRpm(keys.target.c_str()).value_or(0));
    // Always the upper-case spelling here, also on machines whose loop writes the other one: clients have
    // come to read this field that way.
    fan.set(StatusKey::mode, static_cast<std::int32_t>(csmc_read_u8(keys.modeUpperCase.c_str(), nullptr)));
    return fan;
}

}  // namespace

StatusRecord FanHelperService::statusRecord() const {
    std::vector<StatusRecord> fans;
    for (std::size_t fan = 0; fan < fanKeys_.size(); ++fan) {
        fans.push_back(fanRecord(static_cast<int>(fan), fanKeys_[fan], minRPMs_[fan], maxRPMs_[fan]));
    }

    StatusRecord status;
    status.set(StatusKey::fans, std::move(fans));
    status.set(StatusKey::floorPercent, isBoosted_ ? floorPercent_ : 0.0);
    status.set(StatusKey::isBoosted, isBoosted_);
    status.set(StatusKey::tempSensorCount, static_cast<std::int32_t>(cpuTempKeys_.size()));
    status.set(StatusKey::effectivePercent, lastEffectivePct_);
    status.set(StatusKey::thermalOverride, isBoosted_ && ThermalCurve::isGenuineHeat(cachedTemp_) &&
                                               lastThermalPct_ > floorPercent_ + overrideMargin);
    status.set(StatusKey::lidStayAwake, lidStayAwake_);

    const Readings cpu = readAll(cpuTempKeys_, [](float celsius) { return celsius > coldestReportedC; });
    if (cpu.count > 0) {
        status.set(StatusKey::cpuTemp, cpu.average());
        status.set(StatusKey::cpuTempMax, cpu.maximum);
    }
    const Readings gpu = readAll(gpuTempKeys_, [](float celsius) {
        return celsius > coldestReportedC && celsius < hottestGpuReadingC;
    });
    if (gpu.count > 0) {
        status.set(StatusKey::gpuTemp, gpu.average());
    }
    return status;
}

}  // namespace corvane
