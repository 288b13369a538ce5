#include "app/awake/LidManager.h"

#include "app/awake/LowBatteryAutoStop.h"
#include "app/awake/PowerSource.h"

namespace corvane {

namespace {

/// Without a helper there is nobody to ask.
void lockLid(FanController& fan, bool on) {
    if (fan.helperInstalled()) {
        fan.setLidStayAwake(on);
    }
}

}  // namespace

LidManager::LidManager(const LidManagerServices& services)
    : mainLoop_(services.mainLoop),
      powerSources_(services.powerSources),
      thermalMonitor_(services.thermalMonitor),
      defaults_(services.defaults),
      notifier_(services.notifier),
      lang_(services.lang),
      assertions_(services.power),
      thermalObserver_(services.thermalMonitor.observe([this] { checkThermal(); })) {}

LidManager::~LidManager() = default;

void LidManager::setEnabled(bool on) {
    if (on != enabled_) {
        enabled_ = on;
        apply();
    }
}

void LidManager::apply() {
    if (!fan_) {
        return;
    }
    if (enabled_) {
        takeHold(*fan_);
    } else {
        letGo(*fan_);
    }
}

void LidManager::takeHold(FanController& fan) {
    lastAutoOff_ = QString();
    notifier_.requestAuthorizationIfNeeded();
    lockLid(fan, true);
    assertions_.start(SleepAssertions::Kind::system);
    fan.requestCooling(coolingProfile, coolingSource);
    watchdog_ = mainLoop_.every(watchdogPeriod, watchdogPeriod, [this] { tick(); });
}

void LidManager::letGo(FanController& fan) {
    lockLid(fan, false);
    assertions_.stopAll();
    fan.requestCooling(std::nullopt, coolingSource);
    watchdog_.reset();
}

void LidManager::tick() {
    if (!enabled_ || !fan_) {
        return;
    }
    lockLid(*fan_, true);
    if (batteryIsLow()) {
        autoOff(lang_.text("Akku unter 15 % — Zugeklappt-wach beendet, damit der Mac schlafen kann.",
                           "Battery below 15% — closed-lid stopped so the Mac can sleep."));
        return;
    }
    checkThermal();
}

bool LidManager::batteryIsLow() const {
    if (!LowBatteryAutoStop::isOn(defaults_)) {
        return false;
    }
    const std::optional<int> charge = PowerSource::current(powerSources_).percentageOnBattery();
    return charge && *charge <= lowBatteryPercent;
}

void LidManager::checkThermal() {
    if (enabled_ && thermalMonitor_.state() >= ThermalState::serious) {
        autoOff(lang_.text("Zu heiß geworden — Zugeklappt-wach automatisch beendet (Sicherheit).",
                           "Got too hot — closed-lid auto-stopped for safety."));
    }
}

void LidManager::autoOff(const char* reason) {
    setEnabled(false);
    lastAutoOff_ = QString::fromUtf8(reason);
    notifier_.notify(lang_.text("🌡️ Zugeklappt-wach beendet", "🌡️ Closed-lid stopped"), reason);
}

}  // namespace corvane
