#pragma once

#include <QObject>
#include <QPointer>
#include <QProperty>
#include <QString>
#include <memory>

#include "app/awake/SleepAssertions.h"
#include "app/fan/FanController.h"
#include "app/shell/Lang.h"
#include "app/shell/Notifier.h"
#include "core/CoolingProfile.h"
#include "platform/Observation.h"
#include "platform/PowerAssertions.h"
#include "platform/PowerSources.h"
#include "platform/SerialQueue.h"
#include "platform/ThermalStateMonitor.h"
#include "platform/UserDefaults.h"

namespace corvane {

/// What the closed-lid mode needs. All of it outlives the mode.
struct LidManagerServices {
    SerialQueue& mainLoop;
    PowerAssertions& power;
    PowerSources& powerSources;
    ThermalStateMonitor& thermalMonitor;
    UserDefaults& defaults;
    Notifier& notifier;
    const Lang& lang;
};

/// Keeps a notebook running with its lid closed: the helper disables sleep, the system is asked to stay
/// awake, and because a closed lid traps heat, the fan controller is asked for cooling. A low battery and
/// heat end the mode by themselves. Off at every start of the application. Belongs to the main loop.
class LidManager final : public QObject {
    Q_OBJECT

    Q_PROPERTY(bool enabled READ enabled WRITE setEnabled NOTIFY enabledChanged)
    Q_PROPERTY(QString lastAutoOff READ lastAutoOff NOTIFY lastAutoOffChanged)

public:
    /// Asked for while the mode is on.
    static constexpr CoolingProfile::Kind coolingProfile = CoolingProfile::Kind::balanced;
    /// Who asks the fan controller for it.
    static constexpr const char* coolingSource = "lid";
    /// How often the helper is asked again, which may have been restarted, and the battery is looked at.
    static constexpr Duration watchdogPeriod = std::chrono::seconds(20);
    /// On battery at this charge or less the mode ends.
    static constexpr int lowBatteryPercent = 15;

    explicit LidManager(const LidManagerServices& services);
    ~LidManager() override;

    /// Through whom the helper and the cooling are asked for. While there is none, or when it has gone,
    /// switching takes and releases nothing.
    void setFan(FanController& fan) { fan_ = &fan; }

    /// The mode is on.
    [[nodiscard]] bool enabled() const { return enabled_; }
    /// Why the mode ended by itself, in the user's language; empty when it did not, and from the next time it
    /// is switched on.
    [[nodiscard]] QString lastAutoOff() const { return lastAutoOff_; }
    /// What the mode holds.
    [[nodiscard]] const SleepAssertions& assertions() const { return assertions_; }

    /// Setting what is so does nothing.
    void setEnabled(bool on);

Q_SIGNALS:
    void enabledChanged();
    void lastAutoOffChanged();

private:
    void apply();
    void takeHold(FanController& fan);
    void letGo(FanController& fan);
    void tick();
    [[nodiscard]] bool batteryIsLow() const;
    void checkThermal();
    void autoOff(const char* reason);

    SerialQueue& mainLoop_;
    PowerSources& powerSources_;
    ThermalStateMonitor& thermalMonitor_;
    UserDefaults& defaults_;
    Notifier& notifier_;
    const Lang& lang_;
    SleepAssertions assertions_;
    QPointer<FanController> fan_;

    // Published. Assigning a different value announces it.
    Q_OBJECT_BINDABLE_PROPERTY(LidManager, bool, enabled_, &LidManager::enabledChanged)
    Q_OBJECT_BINDABLE_PROPERTY(LidManager, QString, lastAutoOff_, &LidManager::lastAutoOffChanged)

    std::unique_ptr<Timer> watchdog_;
    std::unique_ptr<Observation> thermalObserver_;
};

}  // namespace corvane
