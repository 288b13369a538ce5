#include "app/automation/TriggerManager.h"

#include <algorithm>
#include <utility>

#include "app/awake/LowBatteryAutoStop.h"
#include "app/awake/PowerSource.h"

namespace corvane {

TriggerManager::TriggerManager(const TriggerManagerServices& services)
    : powerSources_(services.powerSources),
      displays_(services.displays),
      applications_(services.applications),
      defaults_(services.defaults),
      lang_(services.lang),
      assertions_(services.power) {
    automationEnabled_ = defaults_.get<bool>(enabledSetting).value_or(false);
    keepAwakeOnAC_ = defaults_.get<bool>(onACSetting).value_or(false);
    keepAwakeOnExternalDisplay_ = defaults_.get<bool>(onExternalDisplaySetting).value_or(false);
    apps_ = TriggerList::decode(defaults_.get<StoredList::Data>(appsSetting).value_or(StoredList::Data()));
    applicationsObservation_ = applications_.observe([this] { evaluate(); });
    displaysObservation_ = displays_.observe([this] { evaluate(); });
    pollTimer_ = services.mainLoop.every(pollPeriod, pollPeriod, [this] { evaluate(); });
    evaluate();
}

TriggerManager::~TriggerManager() = default;

bool TriggerManager::lowBatteryAutoStop() const {
    return LowBatteryAutoStop::isOn(defaults_);
}

QString TriggerManager::coolingProfileText() const {
    const auto kind = coolingProfileActive();
    return kind ? QString::fromStdString(std::string(CoolingProfile::rawValue(*kind))) : QString();
}

void TriggerManager::setAutomationEnabled(bool on) {
    defaults_.set(enabledSetting, on);
    automationEnabled_ = on;
    evaluate();
}

void TriggerManager::setKeepAwakeOnAC(bool on) {
    defaults_.set(onACSetting, on);
    keepAwakeOnAC_ = on;
    evaluate();
}

void TriggerManager::setKeepAwakeOnExternalDisplay(bool on) {
    defaults_.set(onExternalDisplaySetting, on);
    keepAwakeOnExternalDisplay_ = on;
    evaluate();
}

void TriggerManager::addApp(const TriggerApp& app) {
    QList<TriggerApp> apps = apps_;
    const bool isKnown = std::any_of(apps.cbegin(), apps.cend(),
                                     [&](const TriggerApp& known) { return known.bundleID == app.bundleID; });
    if (!isKnown) {
        apps.append(app);
        changeApps(std::move(apps));
    }
}

void TriggerManager::addApp(const QString& bundleID, const QString& name) {
    addApp({.bundleID = bundleID, .name = name, .cooling = std::nullopt});
}

void TriggerManager::removeApp(const TriggerApp& app) {
    QList<TriggerApp> apps = apps_;
    apps.removeIf([&](const TriggerApp& known) { return known.bundleID == app.bundleID; });
    changeApps(std::move(apps));
}

void TriggerManager::setCooling(std::optional<ProfileKind> cooling, const TriggerApp& app) {
    QList<TriggerApp> apps = apps_;
    const auto known = std::find_if(apps.begin(), apps.end(), [&](const TriggerApp& candidate) {
        return candidate.bundleID == app.bundleID;
    });
    if (known != apps.end()) {
        known->cooling = cooling;
        changeApps(std::move(apps));
    }
}

void TriggerManager::setCooling(const TriggerApp& app, const QString& cooling) {
    const auto kind = CoolingProfile::fromRawValue(cooling.toStdString());
    if (kind || cooling.isEmpty()) {
        setCooling(kind, app);
    }
}

void TriggerManager::changeApps(QList<TriggerApp> apps) {
    apps_ = std::move(apps);
    if (auto data = TriggerList::encode(apps_)) {
        defaults_.set(appsSetting, *std::move(data));
    }
    evaluate();
}

void TriggerManager::evaluate() {
    if (!automationEnabled()) {
        apply({});
        return;
    }
    const PowerInfo power = PowerSource::current(powerSources_);
    const std::optional<int> charge = power.percentageOnBattery();
    const bool isLow = charge && *charge <= lowBatteryPercent;
    apply(isLow && lowBatteryAutoStop() ? Verdict() : verdict(power));
}

TriggerManager::Verdict TriggerManager::verdict(const PowerInfo& power) const {
    Verdict verdict;
    if (keepAwakeOnAC() && power.onAC) {
        verdict.reasons.append(QString::fromUtf8(lang_.text("am Netzteil", "on AC power")));
    }
    if (keepAwakeOnExternalDisplay() && hasExternalDisplay()) {
        verdict.reasons.append(QString::fromUtf8(lang_.text("externer Bildschirm", "external display")));
    }
    if (!apps().isEmpty()) {
        judgeApps(verdict);
    }
    return verdict;
}

bool TriggerManager::hasExternalDisplay() const {
    const auto online = displays_.online();
    return online && std::any_of(online->begin(), online->end(),
                                 [](const Display& display) { return !display.isBuiltIn; });
}

void TriggerManager::judgeApps(Verdict& verdict) const {
    const RunningApplications::Identifiers running = applications_.identifiers();
    QList<TriggerApp> matches = apps();
    matches.removeIf([&](const TriggerApp& app) { return !running.contains(app.bundleID.toStdString()); });
    if (matches.isEmpty()) {
        return;
    }
    const qsizetype further = matches.size() - 1;
    const QString more = further == 0 ? QString() : QStringLiteral(" +%1").arg(further);
    verdict.reasons.append(matches.constFirst().name + more);
    for (const TriggerApp& app : std::as_const(matches)) {
        verdict.cooling = std::max(verdict.cooling, app.cooling);
    }
}

void TriggerManager::apply(const Verdict& verdict) {
    if (verdict.reasons.isEmpty()) {
        assertions_.stopAll();
    } else {
        assertions_.start(SleepAssertions::Kind::system);
        assertions_.start(SleepAssertions::Kind::display);
    }
    active_ = !verdict.reasons.isEmpty();
    activeReason_ = verdict.reasons.join(QStringLiteral(", "));
    coolingProfileActive_ = verdict.cooling;
    if (coolingSink_) {
        coolingSink_->requestCooling(verdict.cooling, coolingSource);
    }
}

}  // namespace corvane
