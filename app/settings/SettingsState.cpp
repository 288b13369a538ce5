#include "app/settings/SettingsState.h"

#include <QByteArray>
#include <QMetaEnum>
#include <QStringList>
#include <QUrl>
#include <utility>

#include <fmt/format.h>

#include "app/awake/LowBatteryAutoStop.h"
#include "app/fan/FanSettings.h"
#include "app/shell/Lang.h"
#include "app/shell/ShellSettings.h"

namespace corvane {

namespace {

constexpr const char* systemLanguage = "system";

bool isLanguage(const QString& text) {
    return QStringList{systemLanguage, "de", "en"}.contains(text);
}

/// Whatever else is stored behaves as the system's.
QString chosenLanguage(const UserDefaults& defaults) {
    const auto stored =
        QString::fromStdString(defaults.get<std::string>(Lang::setting).value_or(systemLanguage));
    return isLanguage(stored) ? stored : QString(systemLanguage);
}

std::string percentEncoded(const std::string& text) {
    return QUrl::toPercentEncoding(QString::fromStdString(text)).toStdString();
}

}  // namespace

SettingsState::SettingsState(SettingsServices services) : services_(std::move(services)) {
    const UserDefaults& defaults = services_.defaults;
    launchAtLogin_ = services_.loginItem.isEnabled();
    showTemp_ = defaults.get<bool>(ShellSettings::showTemperature).value_or(false);
    hotkeysOn_ = defaults.get<bool>(ShellSettings::hotkeys).value_or(true);
    heatAlerts_ = defaults.get<bool>(FanSettings::heatAlerts).value_or(true);
    lowBattStop_ = LowBatteryAutoStop::isOn(defaults);
    appLang_ = chosenLanguage(defaults);
}

SettingsState::~SettingsState() = default;

QString SettingsState::alertName() const {
    return QMetaEnum::fromType<Alert>().valueToKey(static_cast<int>(alert()));
}

// The switches.

void SettingsState::setLaunchAtLogin(bool on) {
    if (isRemoved()) {
        return;
    }
    services_.loginItem.setEnabled(on);
    launchAtLogin_ = services_.loginItem.isEnabled();
}

void SettingsState::setShowTemp(bool on) {
    if (store(ShellSettings::showTemperature, on)) {
        showTemp_ = on;
    }
}

void SettingsState::setHotkeysOn(bool on) {
    if (store(ShellSettings::hotkeys, on)) {
        services_.enableHotkeys(on);
        hotkeysOn_ = on;
    }
}

void SettingsState::setHeatAlerts(bool on) {
    if (store(FanSettings::heatAlerts, on)) {
        heatAlerts_ = on;
    }
}

void SettingsState::setLowBattStop(bool on) {
    if (store(LowBatteryAutoStop::setting, on)) {
        lowBattStop_ = on;
    }
}

bool SettingsState::store(const char* setting, bool on) {
    if (isRemoved()) {
        return false;
    }
    services_.defaults.set(setting, on);
    return true;
}

// The language.

void SettingsState::chooseLanguage(const QString& language) {
    if (isOccupied() || !isLanguage(language) || language == appLang()) {
        return;
    }
    services_.defaults.set(Lang::setting, language.toStdString());
    appLang_ = language;
    Q_EMIT languageChanged();
    services_.retranslateOthers();
    alert_ = Alert::languageRestart;
}

void SettingsState::restartNow() {
    if (close(Alert::languageRestart)) {
        services_.relauncher.relaunch();
        services_.quit();
    }
}

void SettingsState::restartLater() {
    close(Alert::languageRestart);
}

// Updates, help and feedback.

void SettingsState::checkForUpdates() {
    if (isOccupied()) {
        return;
    }
    checking_ = true;
    checkedOnce_ = true;
    services_.updates.check();
    checkTimer_ = services_.mainLoop.after(checkLinger, [this] { checking_ = false; });
}

void SettingsState::showIntroduction() {
    if (!isOccupied()) {
        services_.showIntroduction();
    }
}

void SettingsState::sendFeedback() {
    if (canSendFeedback() && !isOccupied()) {
        const std::string subject = fmt::format("Corvane v{} — Feedback", services_.version);
        services_.opener.open(
            fmt::format("mailto:{}?subject={}", services_.supportMail, percentEncoded(subject)));
    }
}

// The removal.

void SettingsState::askToUninstall() {
    if (!isOccupied()) {
        alert_ = Alert::confirmUninstall;
    }
}

void SettingsState::cancelUninstall() {
    close(Alert::confirmUninstall);
}

void SettingsState::confirmUninstall() {
    if (!close(Alert::confirmUninstall)) {
        return;
    }
    isRemoving_ = true;
    services_.uninstaller.performPrivilegedRemoval(
        lifetime_.bound([this](const InstallResult& result) { endRemoval(result); }));
}

void SettingsState::endRemoval(const InstallResult& result) {
    isRemoving_ = false;
    switch (result.outcome) {
        case InstallResult::Outcome::success:
            services_.withdraw();
            services_.uninstaller.clearUserTraces();
            alert_ = Alert::removed;
            break;
        case InstallResult::Outcome::failure:
            uninstallError_ = QString::fromStdString(result.message);
            alert_ = Alert::uninstallFailed;
            break;
        case InstallResult::Outcome::cancelled:
            break;
    }
    Q_EMIT removalEnded();
}

void SettingsState::sayGoodbye() {
    if (close(Alert::removed)) {
        services_.quit();
    }
}

void SettingsState::dismissFailure() {
    close(Alert::uninstallFailed);
}

bool SettingsState::close(Alert alert) {
    if (alert_ != alert) {
        return false;
    }
    alert_ = Alert::none;
    return true;
}

}  // namespace corvane
