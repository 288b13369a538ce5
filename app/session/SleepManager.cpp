#include "app/session/SleepManager.h"

#include <algorithm>
#include <array>
#include <utility>

#include <fmt/format.h>

#include "app/awake/LowBatteryAutoStop.h"
#include "app/awake/PowerSource.h"
#include "app/shell/LocalTime.h"
#include "app/shell/RelativeDate.h"

namespace corvane {

using namespace std::chrono_literals;

namespace {

constexpr WallTime::duration soonestExpiry = 500ms;
constexpr Duration tickPeriod = 1s;

/// "9:05" for less than an hour, "1:00:00" from there on.
std::string countdown(std::chrono::seconds left) {
    const auto seconds = left.count();
    if (seconds < 3600) {
        return fmt::format("{}:{:02}", seconds / 60, seconds % 60);
    }
    return fmt::format("{}:{:02}:{:02}", seconds / 3600, seconds % 3600 / 60, seconds % 60);
}

}  // namespace

SleepManager::SleepManager(const SleepManagerServices& services, UpdateCheckerConfiguration updates)
    : mainLoop_(services.mainLoop),
      powerSources_(services.powerSources),
      defaults_(services.defaults),
      notifier_(services.notifier),
      lang_(services.lang),
      assertions_(services.power),
      fan_({services.mainLoop, services.connector, services.installer, services.thermalMonitor,
            services.defaults, services.notifier, services.lang, services.log}),
      updates_({services.client, services.opener}, std::move(updates)),
      triggers_({services.mainLoop, services.power, services.powerSources, services.displays,
                 services.applications, services.defaults, services.lang}),
      lid_({services.mainLoop, services.power, services.powerSources, services.thermalMonitor,
            services.defaults, services.notifier, services.lang}),
      drives_({services.mainLoop, services.volumes, services.defaults, services.locale}) {
    now_ = mainLoop_.wallTime();
    announceWhatFollows();
    joinModels();
    batteryWatchdog_ =
        mainLoop_.every(batteryCheckPeriod, batteryCheckPeriod, [this] { batterySafetyCheck(); });
}

SleepManager::~SleepManager() = default;

void SleepManager::joinModels() {
    triggers_.setCoolingSink(&fan_);
    lid_.setFan(fan_);
    fan_.reconcileToOffOnLaunch();
    triggers_.evaluate();
}

void SleepManager::announceWhatFollows() {
    connect(this, &SleepManager::nowChanged, this, &SleepManager::countdownChanged);
    connect(this, &SleepManager::expiresAtChanged, this, &SleepManager::countdownChanged);
    connect(this, &SleepManager::activeKindsChanged, this, &SleepManager::anythingActiveChanged);
    connect(&fan_, &FanController::isBoostedChanged, this, &SleepManager::anythingActiveChanged);
    connect(&fan_, &FanController::fansEnabledChanged, this, &SleepManager::anythingActiveChanged);
    connect(&triggers_, &TriggerManager::activeChanged, this, &SleepManager::anythingActiveChanged);
    connect(&lid_, &LidManager::enabledChanged, this, &SleepManager::anythingActiveChanged);
}

bool SleepManager::anythingActive() const {
    return !activeKinds().empty() || fan_.isBoosted() || fan_.fansEnabled() || triggers_.active() ||
           lid_.enabled();
}

QString SleepManager::remainingText() const {
    const std::optional<WallTime> end = expiresAt_;
    if (!end) {
        return {};
    }
    const auto left = std::chrono::duration_cast<std::chrono::seconds>(*end - now());
    return QString::fromStdString(countdown(std::max(left, 0s)));
}

QString SleepManager::expiryDescription() const {
    const std::optional<WallTime> end = expiresAt_;
    return end ? RelativeDate::text(*end, mainLoop_.wallTime(), lang_) : QString();
}

void SleepManager::apply(const Kinds& kinds, std::optional<WallTime> until) {
    for (const Kind kind : SleepAssertions::allKinds) {
        if (!kinds.contains(kind)) {
            assertions_.stop(kind);
        }
    }
    for (const Kind kind : kinds) {
        assertions_.start(kind);
    }
    publishKinds();
    if (until && !activeKinds().empty()) {
        scheduleExpiry(*until);
    } else {
        cancelExpiry();
    }
}

void SleepManager::toggle(Kind kind) {
    if (assertions_.holds(kind)) {
        assertions_.stop(kind);
    } else {
        assertions_.start(kind);
    }
    publishKinds();
    recomputeExpiryAfterChange();
}

void SleepManager::toggle(const QString& kind) {
    if (const auto known = SleepAssertions::kindFromRawValue(kind.toStdString())) {
        toggle(*known);
    }
}

void SleepManager::recomputeExpiryAfterChange() {
    if (activeKinds().empty()) {
        cancelExpiry();
    } else if (!expiresAt()) {
        scheduleExpiry(mainLoop_.wallTime() + longestToggledSession);
    }
}

void SleepManager::stopSession() {
    assertions_.stopAll();
    publishKinds();
    cancelExpiry();
}

void SleepManager::publishKinds() {
    activeKinds_ = assertions_.heldKinds();
}

void SleepManager::scheduleExpiry(WallTime date) {
    cancelExpiry();
    expiresAt_ = date;
    notifier_.requestAuthorizationIfNeeded();
    expiryTimer_ = mainLoop_.at(std::max(date, mainLoop_.wallTime() + soonestExpiry), [this] { expire(); });
    tickTimer_ = mainLoop_.every(tickPeriod, tickPeriod, [this] { now_ = mainLoop_.wallTime(); });
}

void SleepManager::cancelExpiry() {
    expiryTimer_.reset();
    tickTimer_.reset();
    expiresAt_ = std::nullopt;
}

void SleepManager::expire() {
    stopSession();
    notifier_.notify(
        lang_.text("Wach-Session beendet", "Keep-awake finished"),
        lang_.text("Der Timer ist abgelaufen — dein Mac kehrt zum normalen Energieverhalten zurück.",
                   "The timer ended — your Mac is back to its normal sleep behaviour."));
}

void SleepManager::batterySafetyCheck() {
    if (!LowBatteryAutoStop::isOn(defaults_)) {
        return;
    }
    const std::optional<int> charge = PowerSource::current(powerSources_).percentageOnBattery();
    if (!charge || *charge > rearmedAbovePercent) {
        lowBatteryStopped_ = false;
    } else if (*charge <= lowBatteryPercent && !lowBatteryStopped_ && !activeKinds().empty()) {
        stopOnLowBattery();
    }
}

void SleepManager::stopOnLowBattery() {
    lowBatteryStopped_ = true;
    stopSession();
    notifier_.notify(
        lang_.text("🪫 Akku niedrig", "🪫 Battery low"),
        lang_.text("Unter 15 % auf Akku — Wach bleiben wurde beendet, damit dein Mac schlafen kann.",
                   "Below 15% on battery — keep-awake was stopped so your Mac can sleep."));
}

void SleepManager::resetAll() {
    stopSession();
    if (lid_.enabled()) {
        lid_.setEnabled(false);
    }
    fan_.setFansEnabled(false);
    triggers_.setAutomationEnabled(false);
}

QStringList SleepManager::activeKindNames() const {
    QStringList names;
    for (const Kind kind : activeKinds()) {
        const std::string_view name = SleepAssertions::rawValue(kind);
        names.append(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())));
    }
    return names;
}

QVariant SleepManager::expiresAtVariant() const {
    const std::optional<WallTime> end = expiresAt_;
    return end ? QVariant(localTime(*end)) : QVariant();
}

QDateTime SleepManager::localNow() const {
    return localTime(now());
}

}  // namespace corvane
