// What the helper and the system report: published, watched for heat, and compared with what is wanted.

#include <algorithm>
#include <cmath>
#include <iterator>

#include <fmt/format.h>

#include "app/fan/FanController.h"
#include "app/fan/FanSettings.h"
#include "app/fan/median.h"

namespace corvane {

using namespace std::chrono_literals;

namespace {

/// A mismatch must last this many status records, so that a request under way is not undone.
constexpr int mismatchesUntilRelease = 5;
/// A fan counts as spun up at this part of its target.
constexpr double spunUpPart = 0.85;
constexpr Duration longestSpinUp = 20s;
/// °C; the alert is given again only after the temperature was below the second.
constexpr double overheatTemp = 95;
constexpr double overheatOverTemp = 88;

bool isSet(const StatusRecord& status, std::string_view key) {
    const bool* value = status.get<bool>(key);
    return value != nullptr && *value;
}

/// None for what is not a number, too: it would poison every median it got into.
std::optional<double> finite(const StatusRecord& status, std::string_view key) {
    const double* value = status.get<double>(key);
    return value != nullptr && std::isfinite(*value) ? std::optional(*value) : std::nullopt;
}

/// The last values, the new one included, in memory of their own size. A QList that is appended to while
/// somebody shares it keeps the room of what was removed in front, and grows with every value.
QList<double> appended(const QList<double>& list, double value, qsizetype limit) {
    QList<double> values;
    values.reserve(limit);
    std::copy(list.cend() - std::min(list.size(), limit - 1), list.cend(), std::back_inserter(values));
    values.append(value);
    return values;
}

std::optional<double> medianOf(const QList<double>& values) {
    return median({values.begin(), values.end()});
}

bool isSpunUp(const FanInfo& fan) {
    return fan.targetRPM > 0 && fan.currentRPM >= static_cast<int>(fan.targetRPM * spunUpPart);
}

bool isThrottling(ThermalState state) {
    return state >= ThermalState::serious;
}

const char* yesOrNo(bool value) {
    return value ? "yes" : "no";
}

}  // namespace

void FanController::applyStatus(const StatusRecord& status) {
    takeFans(status);
    if (const bool* boosted = status.get<bool>(StatusKey::isBoosted)) {
        isBoosted_ = *boosted;
    }
    takeTemperatures(status);
    thermalOverride_ = isSet(status, StatusKey::thermalOverride);
    effectivePercent_ = finite(status, StatusKey::effectivePercent).value_or(0);
    reconcileDaemonState(isSet(status, StatusKey::isBoosted), isSet(status, StatusKey::lidStayAwake));
    evaluateAutoCooling(false);
    checkHeatAlert();
}

void FanController::takeFans(const StatusRecord& status) {
    if (const auto* records = status.get<std::vector<StatusRecord>>(StatusKey::fans)) {
        QList<FanInfo> fans;
        for (const StatusRecord& record : *records) {
            if (const auto fan = FanInfo::fromRecord(record)) {
                fans.append(*fan);
            }
        }
        fans_ = fans;
    }
    endSpinUpIfReached();
}

void FanController::endSpinUpIfReached() {
    if (!spinningUp_ || !spinUpStarted_) {
        return;
    }
    const QList<FanInfo> fans = fans_;
    if (std::ranges::any_of(fans, isSpunUp) || mainLoop_.bootTime() - *spinUpStarted_ > longestSpinUp) {
        endSpinUp();
    }
}

void FanController::takeTemperatures(const StatusRecord& status) {
    if (const auto temp = finite(status, StatusKey::cpuTemp)) {
        cpuTemp_ = temp;
        tempHistory_ = appended(tempHistory_, *temp, tempHistoryLimit);
        cpuTempSmoothed_ = medianOf(tempHistory_);
        tempTrend_ = appended(tempTrend_, *cpuTempSmoothed(), tempTrendLimit);
    }
    const auto gpuTemp = finite(status, StatusKey::gpuTemp);
    gpuTemp_ = gpuTemp;
    if (gpuTemp) {
        gpuHistory_ = appended(gpuHistory_, *gpuTemp, tempHistoryLimit);
        gpuTempSmoothed_ = medianOf(gpuHistory_);
    }
}

void FanController::reconcileDaemonState(bool daemonForcingFans, bool daemonLidLock) {
    const bool areFansIntended = fansEnabled_ || triggerProfile() || autoEngaged_;
    const bool isFanMismatch = daemonForcingFans && !areFansIntended;
    const bool isLidMismatch = daemonLidLock && !intendedLidLock_;
    if (!isFanMismatch && !isLidMismatch) {
        reconcileMismatchTicks_ = 0;
        return;
    }
    if (++reconcileMismatchTicks_ < mismatchesUntilRelease) {
        return;
    }
    reconcileMismatchTicks_ = 0;
    log_.write(fmt::format("Corvane: self-heal — daemon forcing unintended state (fans={} lid={}), releasing",
                           yesOrNo(isFanMismatch), yesOrNo(isLidMismatch)));
    if (isFanMismatch) {
        resetBoost();
    }
    if (isLidMismatch && helperInstalled_) {
        setLidStayAwake(false);
    }
}

bool FanController::heatAlertsEnabled() const {
    return defaults_.get<bool>(FanSettings::heatAlerts).value_or(true);
}

void FanController::checkHeatAlert() {
    if (!heatAlertsEnabled()) {
        return;
    }
    const double temp = cpuTempSmoothed().value_or(0);
    if (temp >= overheatTemp && !overheatNotified_) {
        overheatNotified_ = true;
        notifier_.notify(
            lang_.text("🔥 CPU sehr heiß", "🔥 CPU running very hot"),
            fmt::format(fmt::runtime(lang_.text("Die CPU liegt bei {:.0f} °C.", "The CPU is at {:.0f} °C.")),
                        temp));
    } else if (temp < overheatOverTemp) {
        overheatNotified_ = false;
    }
}

void FanController::updateThermalState() {
    thermalState_ = thermalMonitor_.state();
    const bool throttles = isThrottling(thermalState_);
    if (throttles && !lastThrottleNotified_ && heatAlertsEnabled()) {
        notifier_.notify(lang_.text("⚠️ Mac drosselt", "⚠️ Mac is throttling"),
                         lang_.text("Die thermische Last ist hoch — der Hitzeschutz hält die Lüfter oben.",
                                    "Thermal pressure is high — heat protection is keeping the fans up."));
    }
    lastThrottleNotified_ = throttles;
}

}  // namespace corvane
