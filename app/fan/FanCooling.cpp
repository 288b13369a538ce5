// What is asked of the helper: the user's choices and the automation's requests, made into one floor.

#include <algorithm>
#include <cmath>

#include <fmt/format.h>

#include "app/fan/FanController.h"
#include "app/fan/FanSettings.h"

namespace corvane {

using namespace std::chrono_literals;

namespace {

using Seconds = std::chrono::duration<double>;

constexpr double fullSpeed = 100;
constexpr double longestBoostSeconds = 3600;
constexpr Duration spinUpCountdown = 5s;
/// Percent. Smaller changes of an automatic floor are not sent, or the helper would be written to every
/// second.
constexpr double deadBand = 2;
/// Automatic mode lets go at the first zero floor beyond this many in a row, so that the fans do not flap at
/// the edge of the curve.
constexpr int zeroFloorsHeld = 5;

Duration fromSeconds(double seconds) {
    return std::chrono::duration_cast<Duration>(Seconds(seconds));
}

/// Whole seconds from `from` to `to`, 0 or more.
int secondsUntil(BootTime to, BootTime from) {
    return static_cast<int>(
        std::max<std::int64_t>(0, std::chrono::duration_cast<std::chrono::seconds>(to - from).count()));
}

}  // namespace

std::optional<std::string> FanController::boostRemainingText() const {
    const std::optional<BootTime> end = boostExpiresAt_;
    if (!end) {
        return std::nullopt;
    }
    const int seconds = secondsUntil(*end, now_);
    return fmt::format("{}:{:02}", seconds / 60, seconds % 60);
}

std::optional<int> FanController::spinUpRemaining() const {
    const std::optional<BootTime> end = spinUpUntil_;
    if (!spinningUp_ || !end) {
        return std::nullopt;
    }
    return secondsUntil(*end, now_);
}

bool FanController::applyBoost(std::optional<double> duration, bool isAutomatic) {
    if (!helperInstalled_) {
        return false;
    }
    connectIfNeeded();
    FanHelperProtocol* helper = remoteProxy();
    if (helper == nullptr) {
        return false;
    }
    const bool wasBoosted = isBoosted_;
    const double percent = targetPercent_;
    isBoosted_ = percent > 0;
    if (percent > 0 && !wasBoosted) {
        beginSpinUp();
    } else if (percent == 0) {
        endSpinUp();
    }
    if (!isAutomatic && percent > 0) {
        manualPercent_ = percent;
    }
    helper->setFanFloorWithPercentWithReply(percent, [this](bool ok, const std::string& text) {
        if (!ok) {
            log_.write(fmt::format("Corvane: the fan helper refused a floor: {}", text));
            isBoosted_ = false;
        }
        setStatusMessage(ok ? "" : lang_.text("Lüfter konnte nicht gesetzt werden.", "Couldn't set fans."));
        refresh();
    });
    if (isAutomatic || percent <= 0) {
        cancelBoostExpiry();
    } else if (duration || !wasBoosted) {
        scheduleBoostExpiry(std::fmin(duration.value_or(boostDuration_), longestBoostSeconds));
    }
    return true;
}

void FanController::boostFor(double seconds) {
    setBoostDuration(seconds);
    if (targetPercent_ <= 0) {
        targetPercent_ = manualPercent_.value();
    }
    applyBoost(seconds, false);
}

void FanController::beginSpinUp() {
    const BootTime start = mainLoop_.bootTime();
    spinUpUntil_ = start + spinUpCountdown;
    spinUpStarted_ = start;
    spinningUp_ = true;
}

void FanController::endSpinUp() {
    spinUpUntil_ = std::nullopt;
    spinUpStarted_.reset();
    spinningUp_ = false;
}

void FanController::scheduleBoostExpiry(double seconds) {
    cancelBoostExpiry();
    requestNotificationPermission();
    const Duration duration = fromSeconds(seconds);
    boostExpiresAt_ = mainLoop_.bootTime() + duration;
    boostExpiryTimer_ = mainLoop_.after(duration, [this] { boostExpired(); });
}

void FanController::cancelBoostExpiry() {
    boostExpiryTimer_.reset();
    boostExpiresAt_ = std::nullopt;
}

void FanController::boostExpired() {
    fansEnabled_ = false;
    resetBoost();
    const bool keepsCooling = triggerProfile().has_value();
    if (keepsCooling) {
        evaluateAutoCooling(true);
    }
    notifier_.notify(
        lang_.text("Lüfter-Boost beendet", "Fan boost finished"),
        keepsCooling ? lang_.text("Der Boost-Timer ist abgelaufen — die Automatik kühlt weiter.",
                                  "The boost timer ended — automation keeps cooling.")
                     : lang_.text("Der Boost-Timer ist abgelaufen — die Lüfter laufen wieder automatisch.",
                                  "The boost timer ended — fans are back on automatic."));
}

bool FanController::resetBoost() {
    targetPercent_ = 0;
    isBoosted_ = false;
    endSpinUp();
    cancelBoostExpiry();
    FanHelperProtocol* helper = remoteProxy();
    if (helper == nullptr) {
        return false;
    }
    helper->stopBoostWithReply([this](bool /*ok*/, const std::string& /*text*/) {
        setStatusMessage("");
        refresh();
    });
    return true;
}

void FanController::setFansEnabled(bool on) {
    if (!helperInstalled_) {
        return;
    }
    fansEnabled_ = on;
    if (!on) {
        setAuto(false);
        if (triggerProfile()) {
            evaluateAutoCooling(true);
        }
        return;
    }
    requestNotificationPermission();
    if (coolingMode_ == CoolingMode::manual) {
        targetPercent_ = manualPercent_;
        applyBoost(boostDuration_, false);
    } else {
        autoActive_ = true;
        evaluateAutoCooling(true);
    }
}

void FanController::setManualFloor(double percent) {
    if (std::isnan(percent) || !helperInstalled_ || !fansEnabled_ || coolingMode_ != CoolingMode::manual) {
        return;
    }
    if (percent <= 0) {
        setFansEnabled(false);
        return;
    }
    manualPercent_ = std::min(percent, fullSpeed);
    if (triggerProfile()) {
        evaluateAutoCooling(true);
    } else {
        targetPercent_ = manualPercent_;
        applyBoost(boostDuration_, false);
    }
}

void FanController::setCoolingMode(CoolingMode mode) {
    if (mode == coolingMode_) {
        return;
    }
    coolingMode_ = mode;
    defaults_.set(FanSettings::coolingMode, std::string(rawValue(mode)));
    coolingModeWasChanged();
}

void FanController::coolingModeWasChanged() {
    if (!fansEnabled_) {
        return;
    }
    if (coolingMode_ == CoolingMode::automatic) {
        // A boost has its time also when the last record did not know of it: what comes after must not end
        // with that, nor may the helper hold what nobody ends any more.
        if (isBoosted_ || boostExpiresAt()) {
            resetBoost();
        }
        setAuto(true);
    } else {
        setAuto(false);
        targetPercent_ = manualPercent_;
        applyBoost(boostDuration_, false);
    }
}

void FanController::setCoolingProfile(ProfileKind kind) {
    coolingProfile_ = kind;
    defaults_.set(FanSettings::coolingProfile, std::string(CoolingProfile::rawValue(kind)));
    if (coolingMode_ == CoolingMode::automatic && autoActive_) {
        evaluateAutoCooling(true);
    }
}

void FanController::setBoostDuration(double seconds) {
    if (seconds > 0) {
        boostDuration_ = seconds;
    }
}

void FanController::setAuto(bool on) {
    autoActive_ = on;
    if (on) {
        requestNotificationPermission();
        evaluateAutoCooling(true);
    } else {
        disengage();
    }
}

double FanController::coolingTemperature() const {
    return std::max(cpuTempSmoothed().value_or(0), gpuTempSmoothed().value_or(0));
}

void FanController::evaluateAutoCooling(bool force) {
    const bool isAutomatic = coolingMode_ == CoolingMode::automatic && autoActive_;
    const std::optional<ProfileKind> trigger = triggerProfile_;
    if (!helperInstalled_ || (!isAutomatic && !trigger)) {
        return;
    }
    const double temp = coolingTemperature();
    if (temp <= 0) {
        return;
    }
    double floor = CoolingProfile::floorPercent(temp, trigger.value_or(coolingProfile_));
    if (fansEnabled_ && coolingMode_ == CoolingMode::manual) {
        floor = std::max(floor, manualPercent_.value());
    }
    autoFloor_ = floor;
    if (floor <= 0) {
        countZeroFloor();
    } else {
        engage(floor, force);
    }
}

void FanController::countZeroFloor() {
    ++autoCoolTicks_;
    if (autoEngaged_ && autoCoolTicks_ > zeroFloorsHeld) {
        disengage();
    }
}

void FanController::engage(double floor, bool force) {
    autoCoolTicks_ = 0;
    if (autoEngaged_ && !force && std::abs(floor - targetPercent_) < deadBand) {
        return;
    }
    autoEngaged_ = true;
    targetPercent_ = floor;
    applyBoost(std::nullopt, true);
}

void FanController::disengage() {
    autoEngaged_ = false;
    autoFloor_ = 0;
    targetPercent_ = 0;
    resetBoost();
}

void FanController::requestCooling(std::optional<ProfileKind> kind, const std::string& source) {
    if (kind) {
        coolingRequests_[source] = *kind;
    } else {
        coolingRequests_.erase(source);
    }
    std::optional<ProfileKind> strongest;
    for (const auto& [requester, requested] : coolingRequests_) {
        strongest = std::max(strongest, std::optional(requested));
    }
    setTriggerCooling(strongest);
}

void FanController::setTriggerCooling(std::optional<ProfileKind> kind) {
    if (kind == triggerProfile()) {
        return;
    }
    triggerProfile_ = kind;
    if (kind) {
        requestNotificationPermission();
        evaluateAutoCooling(true);
    } else if (!fansEnabled_) {
        if (autoEngaged_) {
            disengage();
        }
    } else if (coolingMode_ == CoolingMode::manual) {
        autoEngaged_ = false;
        autoFloor_ = 0;
        targetPercent_ = manualPercent_;
        applyBoost(boostDuration_, false);
    } else {
        evaluateAutoCooling(true);
    }
}

void FanController::setLidStayAwake(bool on) {
    intendedLidLock_ = on;
    connectIfNeeded();
    if (FanHelperProtocol* helper = remoteProxy()) {
        helper->setLidStayAwakeWithReply(on, [](bool /*ok*/, const std::string& /*text*/) {});
    }
}

void FanController::reconcileToOffOnLaunch() {
    intendedLidLock_ = false;
    connectIfNeeded();
    if (FanHelperProtocol* helper = remoteProxy()) {
        helper->stopBoostWithReply([](bool /*ok*/, const std::string& /*text*/) {});
        helper->setLidStayAwakeWithReply(false, [](bool /*ok*/, const std::string& /*text*/) {});
    }
}

void FanController::resumeAfterSuspend() {
    const std::optional<BootTime> end = boostExpiresAt_;
    if (!end) {
        evaluateAutoCooling(true);
        return;
    }
    const Duration left = *end - mainLoop_.bootTime();
    if (left > Duration::zero()) {
        applyBoost(std::chrono::duration_cast<Seconds>(left).count(), false);
    }
}

void FanController::requestNotificationPermission() {
    notifier_.requestAuthorizationIfNeeded();
}

}  // namespace corvane
