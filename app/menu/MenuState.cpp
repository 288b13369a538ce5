#include "app/menu/MenuState.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "app/awake/PowerSource.h"
#include "app/shell/LocalTime.h"
#include "app/shell/ShellSettings.h"
#include "platform/LoginItem.h"

namespace corvane {

using namespace std::chrono_literals;

namespace {

constexpr Duration longestSession = 24h;
constexpr Duration customSession = 12h;
constexpr double fullSpeed = 100;

WallTime after(WallTime now, Duration duration) {
    return now + std::chrono::duration_cast<WallTime::duration>(duration);
}

/// The calendar that timers go by ends some centuries before the toolkit's.
bool isWithinCalendar(const QDateTime& date) {
    return date.isValid() && date >= localTime(WallTime::min() + 1s) && date <= localTime(WallTime::max());
}

WallTime wallTime(const QDateTime& date) {
    return WallTime(std::chrono::milliseconds(date.toMSecsSinceEpoch()));
}

bool isSet(const UserDefaults& defaults, const char* setting) {
    return defaults.get<bool>(setting).value_or(false);
}

}  // namespace

MenuState::MenuState(MenuServices services) : services_(std::move(services)) {
    customDate_ = localTime(after(services_.mainLoop.wallTime(), customSession));
    loginChoiceMade_ = isSet(services_.defaults, ShellSettings::loginChoiceMade);
    loginOn_ = services_.loginItem.isEnabled();
    refreshPower();
    refreshDriveRows();
    showManualPercent();
    followModels();
}

MenuState::~MenuState() = default;

void MenuState::followModels() {
    connect(&manager(), &SleepManager::expiresAtChanged, this, &MenuState::selectedSleepSecondsChanged);
    connect(&manager().drives(), &DriveManager::drivesChanged, this, &MenuState::refreshDriveRows);
    connect(&fan(), &FanController::manualPercentChanged, this, &MenuState::followManualPercent);
    connect(&fan(), &FanController::fansEnabledChanged, this, &MenuState::followFansEnabled);

    connect(this, &MenuState::powerChanged, this, &MenuState::batteryHintChanged);
    connect(&manager(), &SleepManager::activeKindsChanged, this, &MenuState::batteryHintChanged);
    connect(&manager().lid(), &LidManager::enabledChanged, this, &MenuState::batteryHintChanged);
    connect(&fan(), &FanController::isBoostedChanged, this, &MenuState::batteryHintChanged);

    for (const auto signal : {&FanController::fansEnabledChanged, &FanController::coolingModeChanged,
                              &FanController::coolingProfileChanged, &FanController::manualPercentChanged,
                              &FanController::triggerProfileChanged, &FanController::autoEngagedChanged,
                              &FanController::autoFloorChanged, &FanController::boostDurationChanged,
                              &FanController::effectivePercentChanged}) {
        connect(&fan(), signal, this, &MenuState::coolingTextsChanged);
    }

    connect(this, &MenuState::availableDrivesChanged, this, &MenuState::addableDrivesChanged);
    connect(&manager().drives(), &DriveManager::drivesChanged, this, &MenuState::addableDrivesChanged);
}

// The panel.

void MenuState::panelAppeared() {
    fan().refresh();
    lookAround();
    syncExpansion();
    refreshTimer_ = services_.mainLoop.every(refreshPeriod, refreshPeriod, [this] { lookAround(); });
}

void MenuState::panelDisappeared() {
    refreshTimer_.reset();
}

void MenuState::syncExpansion() {
    expandAwake_ = !manager().activeKinds().empty();
    expandLid_ = manager().lid().enabled() || !manager().lid().lastAutoOff().isEmpty();
    expandAuto_ = manager().triggers().automationEnabled();
    expandDrives_ = manager().drives().enabled();
    expandFans_ = fan().fansEnabled() || fan().triggerProfile() || !fan().helperInstalled();
}

void MenuState::lookAround() {
    refreshPower();
    refreshDrives();
    refreshDriveRows();
}

void MenuState::refreshPower() {
    power_ = PowerSource::current(services_.powerSources);
}

void MenuState::showSettings() {
    services_.showSettings();
}

void MenuState::showGuide() {
    services_.showGuide();
}

void MenuState::quit() {
    services_.quit();
}

// The session.

void MenuState::toggleAwake(bool on) {
    if (on) {
        applySleepExpiry(after(services_.mainLoop.wallTime(), longestSession));
    } else {
        manager().stopSession();
    }
    expandAwake_ = on;
}

void MenuState::applySleepDuration(int seconds) {
    const WallTime end = after(services_.mainLoop.wallTime(), std::chrono::seconds(seconds));
    chosenSleep_ = ChosenSleep{seconds, end};
    applySleepExpiry(end);
}

void MenuState::applyCustomDate() {
    applySleepExpiry(wallTime(customDate_));
    showingCustomPicker_ = false;
}

void MenuState::applySleepExpiry(WallTime date) {
    using Kind = SleepAssertions::Kind;
    const SleepAssertions::Kinds active = manager().activeKinds();
    manager().apply(active.empty() ? SleepAssertions::Kinds{Kind::system, Kind::display} : active, date);
}

int MenuState::selectedSleepSeconds() const {
    return chosenSleep_ && manager().expiresAt() == chosenSleep_->end ? chosenSleep_->seconds : 0;
}

void MenuState::setCustomDate(const QDateTime& date) {
    if (isWithinCalendar(date)) {
        customDate_ = date.toLocalTime();
    }
}

// The closed-lid mode.

void MenuState::toggleClosedLid(bool on) {
    if (on && !isSet(services_.defaults, closedLidWarnedSetting)) {
        isAskingAboutLid_ = true;
    } else {
        manager().lid().setEnabled(on);
    }
}

void MenuState::answerLidWarning(bool accepted) {
    if (!isAskingAboutLid_) {
        return;
    }
    isAskingAboutLid_ = false;
    LidManager& lid = manager().lid();
    if (accepted) {
        services_.defaults.set(closedLidWarnedSetting, true);
        lid.setEnabled(true);
    } else {
        // The switch has moved already; it moves back when it hears that the mode is still off.
        Q_EMIT lid.enabledChanged();
    }
}

// The drives.

void MenuState::refreshDrives() {
    availableDrives_ = manager().drives().availableDrives();
}

QList<DriveItem> MenuState::addableDrives() const {
    const QList<DriveItem> chosen = manager().drives().drives();
    QList<DriveItem> addable = availableDrives_;
    addable.removeIf([&chosen](const DriveItem& drive) {
        return std::ranges::find(chosen, drive.path, &DriveItem::path) != chosen.end();
    });
    return addable;
}

void MenuState::refreshDriveRows() {
    QList<DriveRow> rows;
    for (const DriveItem& drive : manager().drives().drives()) {
        rows.append({drive, services_.volumes.isMounted(drive.path.toStdString())});
    }
    driveRows_ = rows;
}

// The fans.

void MenuState::setManualSlider(double percent) {
    if (std::isnan(percent)) {
        return;
    }
    manualSlider_ = std::clamp(percent, 0.0, fullSpeed);
    sliderTimer_ = services_.mainLoop.after(sliderRest, [this] { applySlider(); });
}

void MenuState::releaseSlider() {
    if (sliderTimer_) {
        applySlider();
    }
}

void MenuState::applySlider() {
    sliderTimer_.reset();
    fan().setManualFloor(manualSlider_);
    // At 0 the fans are off, and the slider stays there until they are on again.
    if (fan().fansEnabled()) {
        showManualPercent();
    }
}

void MenuState::followManualPercent() {
    // The user's hand comes first.
    if (!sliderTimer_) {
        showManualPercent();
    }
}

void MenuState::followFansEnabled() {
    sliderTimer_.reset();
    if (fan().fansEnabled()) {
        showManualPercent();
    }
}

void MenuState::showManualPercent() {
    manualSlider_ = fan().manualPercent();
}

void MenuState::applyFanDuration(int seconds) {
    fan().boostFor(seconds);
}

// The login prompt.

void MenuState::answerLogin(bool on) {
    loginOn_ = on;
    services_.loginItem.setEnabled(on);
    services_.defaults.set(ShellSettings::loginChoiceMade, true);
    loginPromptTimer_ = services_.mainLoop.after(loginPromptLinger, [this] { loginChoiceMade_ = true; });
}

}  // namespace corvane
