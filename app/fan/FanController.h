#pragma once

#include <QList>
#include <QObject>
#include <QProperty>
#include <QString>
#include <QVariant>
#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/fan/CoolingMode.h"
#include "app/fan/FanInfo.h"
#include "app/shell/Lang.h"
#include "app/shell/Notifier.h"
#include "core/CoolingProfile.h"
#include "platform/HelperConnection.h"
#include "platform/HelperInstaller.h"
#include "platform/Log.h"
#include "platform/SerialQueue.h"
#include "platform/StatusRecord.h"
#include "platform/ThermalStateMonitor.h"
#include "platform/UserDefaults.h"

namespace corvane {

/// What the fan controller needs. All of it outlives the controller.
struct FanControllerServices {
    /// The application's main loop, whose boot time is the controller's time.
    SerialQueue& mainLoop;
    HelperConnector& connector;
    HelperInstaller& installer;
    ThermalStateMonitor& thermalMonitor;
    UserDefaults& defaults;
    Notifier& notifier;
    const Lang& lang;
    Log& log;
};

/// The application's one model of the fans: asks the helper once a second how they are, turns what the user
/// and the automation want into one floor, and sees to it that the helper forces nothing that nobody wants.
///
/// It only ever asks for a floor or for release; that no fan runs slower than the firmware would have it is
/// the helper's business. Temperatures in °C, floors in percent of a fan's range, times in boot time. Belongs
/// to the main loop. Connection errors show up in `statusMessage`, never as exceptions.
class FanController final : public QObject {
    Q_OBJECT

    Q_PROPERTY(QList<corvane::FanInfo> fans READ fans NOTIFY fansChanged)
    Q_PROPERTY(double targetPercent READ targetPercent NOTIFY targetPercentChanged)
    Q_PROPERTY(bool isBoosted READ isBoosted NOTIFY isBoostedChanged)
    Q_PROPERTY(QVariant cpuTemp READ cpuTempVariant NOTIFY cpuTempChanged)
    Q_PROPERTY(bool thermalOverride READ thermalOverride NOTIFY thermalOverrideChanged)
    Q_PROPERTY(double effectivePercent READ effectivePercent NOTIFY effectivePercentChanged)
    Q_PROPERTY(QVariant cpuTempSmoothed READ cpuTempSmoothedVariant NOTIFY cpuTempSmoothedChanged)
    Q_PROPERTY(QVariant gpuTemp READ gpuTempVariant NOTIFY gpuTempChanged)
    Q_PROPERTY(QVariant gpuTempSmoothed READ gpuTempSmoothedVariant NOTIFY gpuTempSmoothedChanged)
    Q_PROPERTY(QList<double> tempTrend READ tempTrend NOTIFY tempTrendChanged)
    /// "manual" or "auto"; any other text is ignored.
    Q_PROPERTY(QString coolingMode READ coolingModeText WRITE setCoolingModeText NOTIFY coolingModeChanged)
    Q_PROPERTY(bool fansEnabled READ fansEnabled WRITE setFansEnabled NOTIFY fansEnabledChanged)
    Q_PROPERTY(double manualPercent READ manualPercent NOTIFY manualPercentChanged)
    /// A profile's raw value; any other text is ignored.
    Q_PROPERTY(QString coolingProfile READ coolingProfileText WRITE setCoolingProfileText NOTIFY
                   coolingProfileChanged)
    Q_PROPERTY(bool autoActive READ autoActive NOTIFY autoActiveChanged)
    Q_PROPERTY(bool autoEngaged READ autoEngaged NOTIFY autoEngagedChanged)
    Q_PROPERTY(double autoFloor READ autoFloor NOTIFY autoFloorChanged)
    /// A profile's raw value; empty for none.
    Q_PROPERTY(QString triggerProfile READ triggerProfileText NOTIFY triggerProfileChanged)
    Q_PROPERTY(bool helperInstalled READ helperInstalled NOTIFY helperInstalledChanged)
    Q_PROPERTY(bool helperNeedsUpdate READ helperNeedsUpdate NOTIFY helperNeedsUpdateChanged)
    Q_PROPERTY(QString statusMessage READ statusMessage NOTIFY statusMessageChanged)
    Q_PROPERTY(double boostDuration READ boostDuration WRITE setBoostDuration NOTIFY boostDurationChanged)
    /// Empty for none.
    Q_PROPERTY(QString boostRemainingText READ boostRemainingLine NOTIFY countdownChanged)
    Q_PROPERTY(bool spinningUp READ spinningUp NOTIFY spinningUpChanged)
    /// An int; invalid for none.
    Q_PROPERTY(QVariant spinUpRemaining READ spinUpRemainingVariant NOTIFY countdownChanged)

public:
    using ProfileKind = CoolingProfile::Kind;

    /// Raw readings that the smoothed temperatures are the median of.
    static constexpr qsizetype tempHistoryLimit = 15;
    /// Smoothed values kept for the trend.
    static constexpr qsizetype tempTrendLimit = 90;

    /// Reads the stored mode and profile, opens the connection when the helper is installed, and begins to
    /// poll.
    explicit FanController(const FanControllerServices& services);
    ~FanController() override;

    // What is so. Changes are announced by the signals.

    [[nodiscard]] QList<FanInfo> fans() const { return fans_; }
    /// The floor last asked for; 0 when released.
    [[nodiscard]] double targetPercent() const { return targetPercent_; }
    /// A floor is held.
    [[nodiscard]] bool isBoosted() const { return isBoosted_; }
    /// The last reading; keeps its value while the helper reports none.
    [[nodiscard]] std::optional<double> cpuTemp() const { return cpuTemp_; }
    /// The last reading; none while the helper reports none.
    [[nodiscard]] std::optional<double> gpuTemp() const { return gpuTemp_; }
    /// Medians of the last readings; none before the first.
    [[nodiscard]] std::optional<double> cpuTempSmoothed() const { return cpuTempSmoothed_; }
    [[nodiscard]] std::optional<double> gpuTempSmoothed() const { return gpuTempSmoothed_; }
    [[nodiscard]] const QList<double>& tempHistory() const { return tempHistory_; }
    [[nodiscard]] const QList<double>& gpuHistory() const { return gpuHistory_; }
    /// Smoothed CPU temperatures, one per status record that had one, oldest first.
    [[nodiscard]] QList<double> tempTrend() const { return tempTrend_; }
    /// Heat makes the fans run noticeably faster than the floor asks.
    [[nodiscard]] bool thermalOverride() const { return thermalOverride_; }
    /// What the helper applies.
    [[nodiscard]] double effectivePercent() const { return effectivePercent_; }
    [[nodiscard]] ThermalState thermalState() const { return thermalState_; }
    [[nodiscard]] CoolingMode coolingMode() const { return coolingMode_; }
    /// The user's master switch.
    [[nodiscard]] bool fansEnabled() const { return fansEnabled_; }
    /// The manual floor.
    [[nodiscard]] double manualPercent() const { return manualPercent_; }
    [[nodiscard]] ProfileKind coolingProfile() const { return coolingProfile_; }
    /// Automatic mode is armed.
    [[nodiscard]] bool autoActive() const { return autoActive_; }
    /// Automatic mode, or the automation, holds a floor.
    [[nodiscard]] bool autoEngaged() const { return autoEngaged_; }
    /// The floor that was computed last.
    [[nodiscard]] double autoFloor() const { return autoFloor_; }
    /// The strongest of the automation's requests; none when nobody asks.
    [[nodiscard]] std::optional<ProfileKind> triggerProfile() const { return triggerProfile_; }
    [[nodiscard]] bool helperInstalled() const { return helperInstalled_; }
    [[nodiscard]] bool helperNeedsUpdate() const { return helperNeedsUpdate_; }
    /// One line about the helper or the last request; empty when all is well.
    [[nodiscard]] QString statusMessage() const { return statusMessage_; }
    /// Length of a manual boost, s.
    [[nodiscard]] double boostDuration() const { return boostDuration_; }
    /// When the manual boost ends; none without one.
    [[nodiscard]] std::optional<BootTime> boostExpiresAt() const { return boostExpiresAt_; }
    /// The time as of the last poll, so that countdowns advance with it.
    [[nodiscard]] BootTime now() const { return now_; }
    /// Until when the spin-up banner counts down; it may stay longer, at 0.
    [[nodiscard]] std::optional<BootTime> spinUpUntil() const { return spinUpUntil_; }
    /// The fans have been forced and are not near their targets yet.
    [[nodiscard]] bool spinningUp() const { return spinningUp_; }
    /// The lid setting is wanted.
    [[nodiscard]] bool intendedLidLock() const { return intendedLidLock_; }

    /// "9:05"; none without a boost.
    [[nodiscard]] std::optional<std::string> boostRemainingText() const;
    /// Whole seconds, 0 or more; none unless the fans are spinning up.
    [[nodiscard]] std::optional<int> spinUpRemaining() const;

    // What the user chooses.

    /// The master switch. Nothing happens without a helper.
    void setFansEnabled(bool on);
    /// The slider: heard in manual mode with the switch on. 0 or less turns the switch off; NaN is ignored.
    void setManualFloor(double percent);
    void setCoolingMode(CoolingMode mode);
    void setCoolingProfile(ProfileKind kind);
    /// Seconds, more than 0; a boost never takes more than an hour. Anything else is ignored.
    void setBoostDuration(double seconds);
    /// Arms or disarms automatic mode.
    void setAuto(bool on);
    /// Asks for `targetPercent`: for the automation without end, for the user for `duration` seconds, at most
    /// an hour. Without a duration a boost that is held keeps its time and a new one takes `boostDuration`.
    /// False when there was nobody to ask.
    bool applyBoost(std::optional<double> duration, bool isAutomatic);
    /// Chooses how long boosts are, in seconds, and begins one of the user's: of the floor that is held, or
    /// else of the manual one, which is never 0.
    void boostFor(double seconds);

    // What the automation and the closed-lid mode ask for.

    /// `source` asks for a profile, or withdraws what it asked for. The strongest request of all sources
    /// counts.
    void requestCooling(std::optional<ProfileKind> kind, const std::string& source);
    /// Sets the combined request.
    void setTriggerCooling(std::optional<ProfileKind> kind);
    void setLidStayAwake(bool on);

    /// Releases the fans. False when there was no connection to tell the helper through; it then releases by
    /// itself when it hears nothing more.
    bool resetBoost();
    /// Releases what an earlier run may have left. Once, at application start.
    void reconcileToOffOnLaunch();
    /// The computer was suspended, for which the helper let go of the fans: asks again for what is wanted.
    void resumeAfterSuspend();

    /// Asks the helper for its status now.
    void refresh();
    /// Installs the helper or its update; the outcome shows in `statusMessage`. One at a time.
    Q_INVOKABLE void installHelper();

Q_SIGNALS:
    void fansChanged();
    void targetPercentChanged();
    void isBoostedChanged();
    void cpuTempChanged();
    void thermalOverrideChanged();
    void effectivePercentChanged();
    void cpuTempSmoothedChanged();
    void gpuTempChanged();
    void gpuTempSmoothedChanged();
    void thermalStateChanged();
    void tempTrendChanged();
    void coolingModeChanged();
    void fansEnabledChanged();
    void manualPercentChanged();
    void coolingProfileChanged();
    void autoActiveChanged();
    void autoEngagedChanged();
    void autoFloorChanged();
    void triggerProfileChanged();
    void helperInstalledChanged();
    void helperNeedsUpdateChanged();
    void statusMessageChanged();
    void boostDurationChanged();
    void boostExpiresAtChanged();
    void nowChanged();
    void spinUpUntilChanged();
    void spinningUpChanged();
    /// What is left of a boost or a spin-up may have changed.
    void countdownChanged();

private:
    static constexpr double defaultBoostSeconds = 600;

    template <typename Value>
    static QVariant variant(const std::optional<Value>& value) {
        return value ? QVariant(*value) : QVariant();
    }
    [[nodiscard]] QVariant cpuTempVariant() const { return variant(cpuTemp()); }
    [[nodiscard]] QVariant cpuTempSmoothedVariant() const { return variant(cpuTempSmoothed()); }
    [[nodiscard]] QVariant gpuTempVariant() const { return variant(gpuTemp()); }
    [[nodiscard]] QVariant gpuTempSmoothedVariant() const { return variant(gpuTempSmoothed()); }
    [[nodiscard]] QVariant spinUpRemainingVariant() const { return variant(spinUpRemaining()); }
    [[nodiscard]] QString boostRemainingLine() const;
    [[nodiscard]] QString coolingModeText() const;
    void setCoolingModeText(const QString& text);
    [[nodiscard]] QString coolingProfileText() const;
    void setCoolingProfileText(const QString& text);
    [[nodiscard]] QString triggerProfileText() const;

    // Connection and poll (FanController.cpp)
    void announceCountdowns();
    void restoreChoices();
    void connectIfNeeded();
    void dropConnection();
    /// Null without a connection.
    [[nodiscard]] FanHelperProtocol* remoteProxy() const;
    void poll();
    void finishInstallation(const InstallResult& result);
    void setStatusMessage(std::string_view text);

    // What the helper reports (FanStatus.cpp)
    void applyStatus(const StatusRecord& status);
    void takeFans(const StatusRecord& status);
    void takeTemperatures(const StatusRecord& status);
    void endSpinUpIfReached();
    void reconcileDaemonState(bool daemonForcingFans, bool daemonLidLock);
    void checkHeatAlert();
    void updateThermalState();
    [[nodiscard]] bool heatAlertsEnabled() const;

    // What is asked of the helper (FanCooling.cpp)
    void beginSpinUp();
    void endSpinUp();
    void scheduleBoostExpiry(double seconds);
    void cancelBoostExpiry();
    void boostExpired();
    void evaluateAutoCooling(bool force);
    void engage(double floor, bool force);
    void countZeroFloor();
    void disengage();
    void coolingModeWasChanged();
    [[nodiscard]] double coolingTemperature() const;
    void requestNotificationPermission();

    SerialQueue& mainLoop_;
    HelperConnector& connector_;
    HelperInstaller& installer_;
    ThermalStateMonitor& thermalMonitor_;
    UserDefaults& defaults_;
    Notifier& notifier_;
    const Lang& lang_;
    Log& log_;

    // Published. Assigning a different value announces it.
    Q_OBJECT_BINDABLE_PROPERTY(FanController, QList<FanInfo>, fans_, &FanController::fansChanged)
    Q_OBJECT_BINDABLE_PROPERTY(FanController, double, targetPercent_, &FanController::targetPercentChanged)
    Q_OBJECT_BINDABLE_PROPERTY(FanController, bool, isBoosted_, &FanController::isBoostedChanged)
    Q_OBJECT_BINDABLE_PROPERTY(FanController, std::optional<double>, cpuTemp_, &FanController::cpuTempChanged)
    Q_OBJECT_BINDABLE_PROPERTY(FanController, bool, thermalOverride_, &FanController::thermalOverrideChanged)
    Q_OBJECT_BINDABLE_PROPERTY(FanController, double, effectivePercent_,
                               &FanController::effectivePercentChanged)
    Q_OBJECT_BINDABLE_PROPERTY(FanController, std::optional<double>, cpuTempSmoothed_,
                               &FanController::cpuTempSmoothedChanged)
    Q_OBJECT_BINDABLE_PROPERTY(FanController, std::optional<double>, gpuTemp_, &FanController::gpuTempChanged)
    Q_OBJECT_BINDABLE_PROPERTY(FanController, std::optional<double>, gpuTempSmoothed_,
                               &FanController::gpuTempSmoothedChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(FanController, ThermalState, thermalState_, ThermalState::nominal,
                                         &FanController::thermalStateChanged)
    Q_OBJECT_BINDABLE_PROPERTY(FanController, QList<double>, tempTrend_, &FanController::tempTrendChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(FanController, CoolingMode, coolingMode_, CoolingMode::automatic,
                                         &FanController::coolingModeChanged)
    Q_OBJECT_BINDABLE_PROPERTY(FanController, bool, fansEnabled_, &FanController::fansEnabledChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(FanController, double, manualPercent_, 100,
                                         &FanController::manualPercentChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(FanController, CoolingProfile::Kind, coolingProfile_,
                                         CoolingProfile::Kind::balanced,
                                         &FanController::coolingProfileChanged)
    Q_OBJECT_BINDABLE_PROPERTY(FanController, bool, autoActive_, &FanController::autoActiveChanged)
    Q_OBJECT_BINDABLE_PROPERTY(FanController, bool, autoEngaged_, &FanController::autoEngagedChanged)
    Q_OBJECT_BINDABLE_PROPERTY(FanController, double, autoFloor_, &FanController::autoFloorChanged)
    Q_OBJECT_BINDABLE_PROPERTY(FanController, std::optional<CoolingProfile::Kind>, triggerProfile_,
                               &FanController::triggerProfileChanged)
    Q_OBJECT_BINDABLE_PROPERTY(FanController, bool, helperInstalled_, &FanController::helperInstalledChanged)
    Q_OBJECT_BINDABLE_PROPERTY(FanController, bool, helperNeedsUpdate_,
                               &FanController::helperNeedsUpdateChanged)
    Q_OBJECT_BINDABLE_PROPERTY(FanController, QString, statusMessage_, &FanController::statusMessageChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(FanController, double, boostDuration_, defaultBoostSeconds,
                                         &FanController::boostDurationChanged)
    Q_OBJECT_BINDABLE_PROPERTY(FanController, std::optional<BootTime>, boostExpiresAt_,
                               &FanController::boostExpiresAtChanged)
    Q_OBJECT_BINDABLE_PROPERTY(FanController, BootTime, now_, &FanController::nowChanged)
    Q_OBJECT_BINDABLE_PROPERTY(FanController, std::optional<BootTime>, spinUpUntil_,
                               &FanController::spinUpUntilChanged)
    Q_OBJECT_BINDABLE_PROPERTY(FanController, bool, spinningUp_, &FanController::spinningUpChanged)

    QList<double> tempHistory_;
    QList<double> gpuHistory_;
    bool lastThrottleNotified_ = false;
    bool overheatNotified_ = false;
    int autoCoolTicks_ = 0;
    int reconcileMismatchTicks_ = 0;
    bool intendedLidLock_ = false;
    bool isInstalling_ = false;
    std::optional<BootTime> spinUpStarted_;
    std::map<std::string, ProfileKind> coolingRequests_;

    // Destroyed in reverse order: first the connection, whose end calls nobody back.
    std::unique_ptr<Observation> thermalObserver_;
    std::unique_ptr<Timer> boostExpiryTimer_;
    std::unique_ptr<Timer> pollTimer_;
    std::unique_ptr<HelperConnection> connection_;
};

}  // namespace corvane
