#pragma once

#include <QDateTime>
#include <QObject>
#include <QProperty>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <memory>
#include <optional>

#include "app/automation/TriggerManager.h"
#include "app/awake/DriveManager.h"
#include "app/awake/LidManager.h"
#include "app/awake/SleepAssertions.h"
#include "app/fan/FanController.h"
#include "app/shell/Lang.h"
#include "app/shell/Notifier.h"
#include "app/shell/UpdateChecker.h"
#include "platform/Displays.h"
#include "platform/HelperConnection.h"
#include "platform/HelperInstaller.h"
#include "platform/HttpsClient.h"
#include "platform/Locale.h"
#include "platform/Log.h"
#include "platform/PowerAssertions.h"
#include "platform/PowerSources.h"
#include "platform/RunningApplications.h"
#include "platform/SerialQueue.h"
#include "platform/ThermalStateMonitor.h"
#include "platform/UrlOpener.h"
#include "platform/UserDefaults.h"
#include "platform/Volumes.h"

namespace corvane {

/// What the sleep manager and the models that it owns need. All of it outlives the manager.
struct SleepManagerServices {
    /// The application's main loop, whose calendar the session goes by.
    SerialQueue& mainLoop;
    HelperConnector& connector;
    HelperInstaller& installer;
    ThermalStateMonitor& thermalMonitor;
    PowerSources& powerSources;
    PowerAssertions& power;
    Displays& displays;
    RunningApplications& applications;
    Volumes& volumes;
    HttpsClient& client;
    UrlOpener& opener;
    UserDefaults& defaults;
    const Locale& locale;
    Notifier& notifier;
    const Lang& lang;
    Log& log;
};

/// The application's root model. Owns the user's keep-awake session: which kinds of sleep are prevented,
/// until when, and what ends that; and owns the application's other models, which it makes, joins and starts.
///
/// A session ends at a time of the calendar, wherever the clock is set meanwhile. A kind that the system
/// refuses is passed over. Belongs to the main loop.
class SleepManager final : public QObject {
    Q_OBJECT

    /// Raw values, in the order of the kinds.
    Q_PROPERTY(QStringList activeKinds READ activeKindNames NOTIFY activeKindsChanged)
    /// A QDateTime in local time; invalid for none.
    Q_PROPERTY(QVariant expiresAt READ expiresAtVariant NOTIFY expiresAtChanged)
    Q_PROPERTY(QDateTime now READ localNow NOTIFY nowChanged)
    Q_PROPERTY(bool anythingActive READ anythingActive NOTIFY anythingActiveChanged)
    Q_PROPERTY(QString remainingText READ remainingText NOTIFY countdownChanged)
    Q_PROPERTY(QString expiryDescription READ expiryDescription NOTIFY countdownChanged)

public:
    using Kind = SleepAssertions::Kind;
    using Kinds = SleepAssertions::Kinds;

    /// A session that is begun kind by kind ends after this.
    static constexpr std::chrono::hours longestToggledSession{24};
    static constexpr Duration batteryCheckPeriod = std::chrono::seconds(30);
    /// On battery at this charge or less the session ends, once until the battery is charged again...
    static constexpr int lowBatteryPercent = 15;
    /// ...above this, or the computer is on AC.
    static constexpr int rearmedAbovePercent = 20;

    /// Makes the models, releases what an earlier run of the application may have left forced, and lets the
    /// automation's rules take effect.
    SleepManager(const SleepManagerServices& services, UpdateCheckerConfiguration updates);
    ~SleepManager() override;

    // What it owns.

    [[nodiscard]] const SleepAssertions& assertions() const { return assertions_; }
    [[nodiscard]] FanController& fan() { return fan_; }
    [[nodiscard]] UpdateChecker& updates() { return updates_; }
    [[nodiscard]] TriggerManager& triggers() { return triggers_; }
    [[nodiscard]] LidManager& lid() { return lid_; }
    [[nodiscard]] DriveManager& drives() { return drives_; }

    // What is so. Changes are announced by the signals.

    /// What the session holds: always the kinds that `assertions` holds.
    [[nodiscard]] Kinds activeKinds() const { return activeKinds_; }
    /// When the session ends; none while it has no end.
    [[nodiscard]] std::optional<WallTime> expiresAt() const { return expiresAt_; }
    /// The calendar as of the last second of a session with an end, or else as of the last such second.
    [[nodiscard]] WallTime now() const { return now_; }
    /// The session, the fans, the automation or the closed-lid mode is at work.
    [[nodiscard]] bool anythingActive() const;
    /// From `now` to the end, "59:59" or "1:00:00", 0 or more; null while there is no end.
    [[nodiscard]] QString remainingText() const;
    /// The end in the user's language, "Tomorrow, 6:15 AM"; null while there is no end.
    [[nodiscard]] QString expiryDescription() const;

    // What the user chooses.

    /// The session holds just these kinds from now on, until then, or without end. No kinds end it.
    void apply(const Kinds& kinds, std::optional<WallTime> until);
    /// Takes the kind, or lets go of it. A session that gets its first end by this lasts a day at most.
    void toggle(Kind kind);
    /// The same by the kind's raw value; any other text is ignored.
    Q_INVOKABLE void toggle(const QString& kind);
    /// Ends the session, without a word.
    void stopSession();
    /// The session ends then, with a notification; half a second from now at the earliest. Asks for the
    /// permission to post it.
    void scheduleExpiry(WallTime date);
    /// The session goes on without end.
    void cancelExpiry();
    /// Stops all that the application keeps going: the session, the closed-lid mode, the fans, the
    /// automation.
    Q_INVOKABLE void resetAll();

Q_SIGNALS:
    void activeKindsChanged();
    void expiresAtChanged();
    void nowChanged();
    /// It may have changed.
    void anythingActiveChanged();
    /// The texts about the end may have changed.
    void countdownChanged();

private:
    [[nodiscard]] QStringList activeKindNames() const;
    [[nodiscard]] QVariant expiresAtVariant() const;
    [[nodiscard]] QDateTime localNow() const;

    void joinModels();
    void announceWhatFollows();
    void publishKinds();
    void recomputeExpiryAfterChange();
    void expire();
    void batterySafetyCheck();
    void stopOnLowBattery();

    SerialQueue& mainLoop_;
    PowerSources& powerSources_;
    UserDefaults& defaults_;
    Notifier& notifier_;
    const Lang& lang_;

    // Made in this order.
    SleepAssertions assertions_;
    FanController fan_;
    UpdateChecker updates_;
    TriggerManager triggers_;
    LidManager lid_;
    DriveManager drives_;

    // Published. Assigning a different value announces it.
    Q_OBJECT_BINDABLE_PROPERTY(SleepManager, SleepAssertions::Kinds, activeKinds_,
                               &SleepManager::activeKindsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(SleepManager, std::optional<WallTime>, expiresAt_,
                               &SleepManager::expiresAtChanged)
    Q_OBJECT_BINDABLE_PROPERTY(SleepManager, WallTime, now_, &SleepManager::nowChanged)

    /// The session was ended by a low battery; that is not done again before the battery is charged.
    bool lowBatteryStopped_ = false;
    std::unique_ptr<Timer> expiryTimer_;
    std::unique_ptr<Timer> tickTimer_;
    std::unique_ptr<Timer> batteryWatchdog_;
};

}  // namespace corvane
