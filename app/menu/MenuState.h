#pragma once

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QProperty>
#include <QString>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include "app/awake/DriveItem.h"
#include "app/awake/PowerInfo.h"
#include "app/menu/DriveRow.h"
#include "app/menu/DurationChoice.h"
#include "app/session/SleepManager.h"
#include "app/shell/Lang.h"
#include "platform/PowerSources.h"
#include "platform/SerialQueue.h"
#include "platform/UserDefaults.h"
#include "platform/Volumes.h"

namespace corvane {

class LoginItem;

/// What the panel's state needs. The references outlive it.
struct MenuServices {
    SerialQueue& mainLoop;
    SleepManager& manager;
    PowerSources& powerSources;
    Volumes& volumes;
    UserDefaults& defaults;
    LoginItem& loginItem;
    const Lang& lang;
    // None of these is empty.

    /// Opens the settings window.
    std::function<void()> showSettings;
    /// Opens the introduction.
    std::function<void()> showGuide;
    /// Ends the application.
    std::function<void()> quit;
};

/// The panel's view state, what its controls do, and the texts that need a rule. It survives closing and
/// opening the panel. Made at start-up, because some of it is captured there. Belongs to the main loop.
class MenuState final : public QObject {
    Q_OBJECT

    /// The end that the user is composing, in local time; to begin with, twelve hours from the start.
    Q_PROPERTY(QDateTime customDate READ customDate WRITE setCustomDate NOTIFY customDateChanged)
    Q_PROPERTY(bool showingCustomPicker READ showingCustomPicker WRITE setShowingCustomPicker NOTIFY
                   showingCustomPickerChanged)
    /// Percent. Setting it is a step of a drag: it is applied when the slider rests.
    Q_PROPERTY(double manualSlider READ manualSlider WRITE setManualSlider NOTIFY manualSliderChanged)
    /// "60%".
    Q_PROPERTY(QString manualSliderText READ manualSliderText NOTIFY manualSliderChanged)
    Q_PROPERTY(bool loginChoiceMade READ loginChoiceMade NOTIFY loginChoiceMadeChanged)
    Q_PROPERTY(bool loginOn READ loginOn NOTIFY loginOnChanged)
    Q_PROPERTY(bool expandAwake READ expandAwake WRITE setExpandAwake NOTIFY expandAwakeChanged)
    Q_PROPERTY(bool expandLid READ expandLid WRITE setExpandLid NOTIFY expandLidChanged)
    Q_PROPERTY(bool expandAuto READ expandAuto WRITE setExpandAuto NOTIFY expandAutoChanged)
    Q_PROPERTY(bool expandDrives READ expandDrives WRITE setExpandDrives NOTIFY expandDrivesChanged)
    Q_PROPERTY(bool expandFans READ expandFans WRITE setExpandFans NOTIFY expandFansChanged)
    /// The user is being asked about the closed-lid mode.
    Q_PROPERTY(bool isAskingAboutLid READ isAskingAboutLid NOTIFY isAskingAboutLidChanged)

    Q_PROPERTY(QList<corvane::DurationChoice> sleepDurations READ sleepDurations CONSTANT)
    Q_PROPERTY(QList<corvane::DurationChoice> fanDurations READ fanDurations CONSTANT)
    /// The chip whose choice made the end that the session has; 0 for none.
    Q_PROPERTY(int selectedSleepSeconds READ selectedSleepSeconds NOTIFY selectedSleepSecondsChanged)

    Q_PROPERTY(bool batteryVisible READ batteryVisible NOTIFY powerChanged)
    Q_PROPERTY(QString batterySymbol READ batterySymbol NOTIFY powerChanged)
    /// "85%"; empty when it is not known.
    Q_PROPERTY(QString batteryCharge READ batteryCharge NOTIFY powerChanged)
    Q_PROPERTY(bool batteryIsLow READ batteryIsLow NOTIFY powerChanged)
    /// The battery is being drained by what the user started.
    Q_PROPERTY(bool batteryHint READ batteryHint NOTIFY batteryHintChanged)

    /// The automation asks for more than the user's own setting does.
    Q_PROPERTY(bool automationCoolsHarder READ automationCoolsHarder NOTIFY coolingTextsChanged)
    Q_PROPERTY(bool showsLongBoostWarning READ showsLongBoostWarning NOTIFY coolingTextsChanged)
    /// What the automation's profile is called; empty without one.
    Q_PROPERTY(QString fanProfileName READ fanProfileName NOTIFY coolingTextsChanged)
    Q_PROPERTY(QString autoStatusText READ autoStatusText NOTIFY coolingTextsChanged)
    /// What the user's profile does.
    Q_PROPERTY(QString profileBlurb READ profileBlurb NOTIFY coolingTextsChanged)
    /// What the firmware makes of the fans while it has them because of heat.
    Q_PROPERTY(QString thermalWarning READ thermalWarning NOTIFY coolingTextsChanged)

    /// The chosen drives. One is there while something is mounted at its path: the folder that some systems
    /// leave behind at the path of a drive that is gone does not count.
    Q_PROPERTY(QList<corvane::DriveRow> driveRows READ driveRows NOTIFY driveRowsChanged)
    /// The external drives there are, chosen or not.
    Q_PROPERTY(QList<corvane::DriveItem> availableDrives READ availableDrives NOTIFY availableDrivesChanged)
    /// Those of them that are not chosen.
    Q_PROPERTY(QList<corvane::DriveItem> addableDrives READ addableDrives NOTIFY addableDrivesChanged)

public:
    /// Boolean: the user was asked about closed-lid mode; absent means false.
    static constexpr const char* closedLidWarnedSetting = "closedLidWarned";

    /// How long the slider must rest before its value is applied.
    static constexpr Duration sliderRest = std::chrono::milliseconds(250);
    /// How often the battery and the drives are looked at while the panel is shown.
    static constexpr Duration refreshPeriod = std::chrono::seconds(5);
    /// How long the answered login prompt stays, so that its switch is seen to move.
    static constexpr Duration loginPromptLinger = std::chrono::milliseconds(450);

    /// Captures the custom end and the login item's state.
    explicit MenuState(MenuServices services);
    ~MenuState() override;

    [[nodiscard]] QDateTime customDate() const { return customDate_; }
    /// An invalid date is passed over.
    void setCustomDate(const QDateTime& date);
    [[nodiscard]] bool showingCustomPicker() const { return showingCustomPicker_; }
    void setShowingCustomPicker(bool on) { showingCustomPicker_ = on; }
    [[nodiscard]] double manualSlider() const { return manualSlider_; }
    /// Kept within 0...100; NaN is passed over.
    void setManualSlider(double percent);
    [[nodiscard]] QString manualSliderText() const;
    [[nodiscard]] bool loginChoiceMade() const { return loginChoiceMade_; }
    [[nodiscard]] bool loginOn() const { return loginOn_; }
    [[nodiscard]] bool expandAwake() const { return expandAwake_; }
    void setExpandAwake(bool on) { expandAwake_ = on; }
    [[nodiscard]] bool expandLid() const { return expandLid_; }
    void setExpandLid(bool on) { expandLid_ = on; }
    [[nodiscard]] bool expandAuto() const { return expandAuto_; }
    void setExpandAuto(bool on) { expandAuto_ = on; }
    [[nodiscard]] bool expandDrives() const { return expandDrives_; }
    void setExpandDrives(bool on) { expandDrives_ = on; }
    [[nodiscard]] bool expandFans() const { return expandFans_; }
    void setExpandFans(bool on) { expandFans_ = on; }
    [[nodiscard]] bool isAskingAboutLid() const { return isAskingAboutLid_; }

    [[nodiscard]] QList<DurationChoice> sleepDurations() const { return DurationChoice::ofSleep(); }
    [[nodiscard]] QList<DurationChoice> fanDurations() const { return DurationChoice::ofFans(); }
    [[nodiscard]] int selectedSleepSeconds() const;

    [[nodiscard]] bool batteryVisible() const;
    [[nodiscard]] QString batterySymbol() const;
    [[nodiscard]] QString batteryCharge() const;
    [[nodiscard]] bool batteryIsLow() const;
    [[nodiscard]] bool batteryHint() const;

    [[nodiscard]] bool automationCoolsHarder() const;
    [[nodiscard]] bool showsLongBoostWarning() const;
    [[nodiscard]] QString fanProfileName() const;
    [[nodiscard]] QString autoStatusText() const;
    [[nodiscard]] QString profileBlurb() const;
    [[nodiscard]] QString thermalWarning() const;

    [[nodiscard]] QList<DriveRow> driveRows() const { return driveRows_; }
    [[nodiscard]] QList<DriveItem> availableDrives() const { return availableDrives_; }
    [[nodiscard]] QList<DriveItem> addableDrives() const;

    // What the panel does.

    /// The panel is shown: looks at everything afresh, and opens just the sections that are in use.
    void panelAppeared();
    void panelDisappeared();

    /// On: a session of a day. Off: no session.
    Q_INVOKABLE void toggleAwake(bool on);
    /// The session, or one of system and display, ends that many seconds from now.
    Q_INVOKABLE void applySleepDuration(int seconds);
    /// The same, at `customDate`; closes the picker.
    Q_INVOKABLE void applyCustomDate();

    /// Asks before it switches the mode on for the first time.
    Q_INVOKABLE void toggleClosedLid(bool on);
    /// What the user answered. Without a question nothing happens.
    Q_INVOKABLE void answerLidWarning(bool accepted);

    /// The drag is over: its value is applied now.
    Q_INVOKABLE void releaseSlider();
    /// Chooses the length of boosts and begins one.
    Q_INVOKABLE void applyFanDuration(int seconds);

    /// Looks for drives to choose from now.
    Q_INVOKABLE void refreshDrives();

    /// Whether to start at login. That the user was asked is kept.
    Q_INVOKABLE void answerLogin(bool on);

    Q_INVOKABLE void showSettings();
    Q_INVOKABLE void showGuide();
    Q_INVOKABLE void quit();

    /// The language has changed: announces the texts.
    Q_SLOT void retranslate();

Q_SIGNALS:
    void customDateChanged();
    void showingCustomPickerChanged();
    void manualSliderChanged();
    void loginChoiceMadeChanged();
    void loginOnChanged();
    void expandAwakeChanged();
    void expandLidChanged();
    void expandAutoChanged();
    void expandDrivesChanged();
    void expandFansChanged();
    void isAskingAboutLidChanged();
    void selectedSleepSecondsChanged();
    void powerChanged();
    // They may have changed.
    void batteryHintChanged();
    void coolingTextsChanged();
    void driveRowsChanged();
    void availableDrivesChanged();
    void addableDrivesChanged();

private:
    /// What a chip did: the session ends at `end` because `seconds` were chosen.
    struct ChosenSleep {
        int seconds;
        WallTime end;
    };

    [[nodiscard]] SleepManager& manager() const { return services_.manager; }
    [[nodiscard]] FanController& fan() const { return services_.manager.fan(); }

    void followModels();
    void syncExpansion();
    void lookAround();
    void refreshPower();
    void refreshDriveRows();
    void applySleepExpiry(WallTime date);
    void applySlider();
    void followManualPercent();
    void followFansEnabled();
    void showManualPercent();

    MenuServices services_;

    // Published. Assigning a different value announces it.
    Q_OBJECT_BINDABLE_PROPERTY(MenuState, QDateTime, customDate_, &MenuState::customDateChanged)
    Q_OBJECT_BINDABLE_PROPERTY(MenuState, bool, showingCustomPicker_, &MenuState::showingCustomPickerChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(MenuState, double, manualSlider_, 100,
                                         &MenuState::manualSliderChanged)
    Q_OBJECT_BINDABLE_PROPERTY(MenuState, bool, loginChoiceMade_, &MenuState::loginChoiceMadeChanged)
    Q_OBJECT_BINDABLE_PROPERTY(MenuState, bool, loginOn_, &MenuState::loginOnChanged)
    Q_OBJECT_BINDABLE_PROPERTY(MenuState, bool, expandAwake_, &MenuState::expandAwakeChanged)
    Q_OBJECT_BINDABLE_PROPERTY(MenuState, bool, expandLid_, &MenuState::expandLidChanged)
    Q_OBJECT_BINDABLE_PROPERTY(MenuState, bool, expandAuto_, &MenuState::expandAutoChanged)
    Q_OBJECT_BINDABLE_PROPERTY(MenuState, bool, expandDrives_, &MenuState::expandDrivesChanged)
    Q_OBJECT_BINDABLE_PROPERTY(MenuState, bool, expandFans_, &MenuState::expandFansChanged)
    Q_OBJECT_BINDABLE_PROPERTY(MenuState, bool, isAskingAboutLid_, &MenuState::isAskingAboutLidChanged)
    Q_OBJECT_BINDABLE_PROPERTY(MenuState, PowerInfo, power_, &MenuState::powerChanged)
    Q_OBJECT_BINDABLE_PROPERTY(MenuState, QList<DriveRow>, driveRows_, &MenuState::driveRowsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(MenuState, QList<DriveItem>, availableDrives_,
                               &MenuState::availableDrivesChanged)

    std::optional<ChosenSleep> chosenSleep_;
    /// While a value of the slider waits to be applied.
    std::unique_ptr<Timer> sliderTimer_;
    /// While the panel is shown.
    std::unique_ptr<Timer> refreshTimer_;
    std::unique_ptr<Timer> loginPromptTimer_;
};

}  // namespace corvane
