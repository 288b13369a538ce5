#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QProperty>
#include <QString>
#include <QStringList>
#include <chrono>
#include <memory>
#include <optional>

#include "app/automation/TriggerApp.h"
#include "app/awake/PowerInfo.h"
#include "app/awake/SleepAssertions.h"
#include "app/fan/FanController.h"
#include "app/shell/Lang.h"
#include "core/CoolingProfile.h"
#include "platform/Displays.h"
#include "platform/Observation.h"
#include "platform/PowerAssertions.h"
#include "platform/PowerSources.h"
#include "platform/RunningApplications.h"
#include "platform/SerialQueue.h"
#include "platform/UserDefaults.h"

namespace corvane {

/// What the automation needs. All of it outlives the automation.
struct TriggerManagerServices {
    SerialQueue& mainLoop;
    PowerAssertions& power;
    PowerSources& powerSources;
    Displays& displays;
    RunningApplications& applications;
    UserDefaults& defaults;
    const Lang& lang;
};

/// Keeps the computer awake while one of the user's rules holds, and asks for the strongest cooling that the
/// rules of running applications name. It holds assertions of its own: nothing that the user or the
/// closed-lid mode holds is ever touched.
///
/// The rules are looked at whenever one changes, an application starts or quits, or the displays change, and
/// every `pollPeriod`. On battery at `lowBatteryPercent` or less none holds, unless the user does not want
/// that. Each setter stores its value, an equal one too, and looks at the rules. Belongs to the main loop.
class TriggerManager final : public QObject {
    Q_OBJECT

    Q_PROPERTY(bool automationEnabled READ automationEnabled WRITE setAutomationEnabled NOTIFY
                   automationEnabledChanged)
    Q_PROPERTY(bool keepAwakeOnAC READ keepAwakeOnAC WRITE setKeepAwakeOnAC NOTIFY keepAwakeOnACChanged)
    Q_PROPERTY(bool keepAwakeOnExternalDisplay READ keepAwakeOnExternalDisplay WRITE
                   setKeepAwakeOnExternalDisplay NOTIFY keepAwakeOnExternalDisplayChanged)
    Q_PROPERTY(QList<corvane::TriggerApp> apps READ apps NOTIFY appsChanged)
    Q_PROPERTY(bool active READ active NOTIFY activeChanged)
    Q_PROPERTY(QString activeReason READ activeReason NOTIFY activeReasonChanged)
    Q_PROPERTY(QString coolingProfileActive READ coolingProfileText NOTIFY coolingProfileActiveChanged)

public:
    using ProfileKind = CoolingProfile::Kind;

    // The settings: three Booleans and a stored list.
    static constexpr const char* enabledSetting = "trig.enabled";
    static constexpr const char* onACSetting = "trig.onAC";
    static constexpr const char* onExternalDisplaySetting = "trig.extDisplay";
    static constexpr const char* appsSetting = "trig.apps";

    /// Lower than what ends a session of the user's: the automation takes over again by itself.
    static constexpr int lowBatteryPercent = 12;
    static constexpr Duration pollPeriod = std::chrono::seconds(5);
    /// Who asks the fan controller for cooling.
    static constexpr const char* coolingSource = "apps";

    /// Reads the stored rules and looks at them; there is nowhere to ask for cooling yet.
    explicit TriggerManager(const TriggerManagerServices& services);
    ~TriggerManager() override;

    /// Where cooling is asked for from the next look at the rules on; null for nowhere, as when it is gone.
    void setCoolingSink(FanController* sink) { coolingSink_ = sink; }
    [[nodiscard]] FanController* coolingSink() const { return coolingSink_; }

    /// The master switch.
    [[nodiscard]] bool automationEnabled() const { return automationEnabled_; }
    [[nodiscard]] bool keepAwakeOnAC() const { return keepAwakeOnAC_; }
    [[nodiscard]] bool keepAwakeOnExternalDisplay() const { return keepAwakeOnExternalDisplay_; }
    /// In the order they were added.
    [[nodiscard]] QList<TriggerApp> apps() const { return apps_; }
    /// Some rule holds.
    [[nodiscard]] bool active() const { return active_; }
    /// The rules that hold, in the user's language; empty when none does.
    [[nodiscard]] QString activeReason() const { return activeReason_; }
    /// What is asked of the fans.
    [[nodiscard]] std::optional<ProfileKind> coolingProfileActive() const { return coolingProfileActive_; }
    /// What the automation holds.
    [[nodiscard]] const SleepAssertions& assertions() const { return assertions_; }
    /// The user's choice that a low battery ends it.
    [[nodiscard]] bool lowBatteryAutoStop() const;

    void setAutomationEnabled(bool on);
    void setKeepAwakeOnAC(bool on);
    void setKeepAwakeOnExternalDisplay(bool on);

    /// Passed over when there is a rule of this application already.
    void addApp(const TriggerApp& app);
    /// The same, of a rule that asks for no cooling.
    Q_INVOKABLE void addApp(const QString& bundleID, const QString& name);
    /// Removes every rule of this application.
    Q_INVOKABLE void removeApp(const corvane::TriggerApp& app);
    /// Gives the first rule of this application another cooling, or none. Passed over without such a rule.
    void setCooling(std::optional<ProfileKind> cooling, const TriggerApp& app);
    /// The same, by the profile's raw value, empty for none; any other text is ignored.
    Q_INVOKABLE void setCooling(const corvane::TriggerApp& app, const QString& cooling);

    /// Looks at the rules now.
    void evaluate();

Q_SIGNALS:
    void automationEnabledChanged();
    void keepAwakeOnACChanged();
    void keepAwakeOnExternalDisplayChanged();
    void appsChanged();
    void activeChanged();
    void activeReasonChanged();
    void coolingProfileActiveChanged();

private:
    /// What the rules come to; as made, none holds.
    struct Verdict {
        QStringList reasons;
        std::optional<ProfileKind> cooling;
    };

    [[nodiscard]] QString coolingProfileText() const;
    [[nodiscard]] Verdict verdict(const PowerInfo& power) const;
    [[nodiscard]] bool hasExternalDisplay() const;
    void judgeApps(Verdict& verdict) const;
    void apply(const Verdict& verdict);
    void changeApps(QList<TriggerApp> apps);

    PowerSources& powerSources_;
    Displays& displays_;
    RunningApplications& applications_;
    UserDefaults& defaults_;
    const Lang& lang_;
    SleepAssertions assertions_;
    QPointer<FanController> coolingSink_;

    // Published. Assigning a different value announces it.
    Q_OBJECT_BINDABLE_PROPERTY(TriggerManager, bool, automationEnabled_,
                               &TriggerManager::automationEnabledChanged)
    Q_OBJECT_BINDABLE_PROPERTY(TriggerManager, bool, keepAwakeOnAC_, &TriggerManager::keepAwakeOnACChanged)
    Q_OBJECT_BINDABLE_PROPERTY(TriggerManager, bool, keepAwakeOnExternalDisplay_,
                               &TriggerManager::keepAwakeOnExternalDisplayChanged)
    Q_OBJECT_BINDABLE_PROPERTY(TriggerManager, QList<TriggerApp>, apps_, &TriggerManager::appsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(TriggerManager, bool, active_, &TriggerManager::activeChanged)
    Q_OBJECT_BINDABLE_PROPERTY(TriggerManager, QString, activeReason_, &TriggerManager::activeReasonChanged)
    Q_OBJECT_BINDABLE_PROPERTY(TriggerManager, std::optional<CoolingProfile::Kind>, coolingProfileActive_,
                               &TriggerManager::coolingProfileActiveChanged)

    std::unique_ptr<Observation> applicationsObservation_;
    std::unique_ptr<Observation> displaysObservation_;
    std::unique_ptr<Timer> pollTimer_;
};

}  // namespace corvane
