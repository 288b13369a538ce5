#pragma once

#include <QObject>
#include <QProperty>
#include <QString>
#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "app/shell/UpdateChecker.h"
#include "platform/HelperInstaller.h"
#include "platform/Lifetime.h"
#include "platform/LoginItem.h"
#include "platform/Relauncher.h"
#include "platform/SerialQueue.h"
#include "platform/Uninstaller.h"
#include "platform/UrlOpener.h"
#include "platform/UserDefaults.h"

namespace corvane {

/// What the settings need. The references outlive whoever holds them; the functions are never empty.
struct SettingsServices {
    SerialQueue& mainLoop;
    UserDefaults& defaults;
    LoginItem& loginItem;
    UpdateChecker& updates;
    UrlOpener& opener;
    Uninstaller& uninstaller;
    Relauncher& relauncher;
    /// Registers the keys that work everywhere, or lets them go.
    std::function<void(bool on)> enableHotkeys;
    /// Opens the introduction.
    std::function<void()> showIntroduction;
    /// The stored language is another one: whatever else is on the screen is to follow.
    std::function<void()> retranslateOthers;
    /// The application was removed: takes away whatever else of it could still be operated, and might leave
    /// something behind again.
    std::function<void()> withdraw;
    /// Ends the application.
    std::function<void()> quit;
    /// Of the application, such as "1.0".
    std::string version;
    /// Where users write to, a plain mail address; empty for none.
    std::string supportMail;
};

/// What the settings window shows, and what its controls do. While an alert waits for its answer, and while
/// the application is being removed, nothing else can be started. Belongs to the main loop.
class SettingsState final : public QObject {
    Q_OBJECT

    /// As the system has it.
    Q_PROPERTY(bool launchAtLogin READ launchAtLogin WRITE setLaunchAtLogin NOTIFY launchAtLoginChanged)
    /// The temperature stands beside the status icon.
    Q_PROPERTY(bool showTemp READ showTemp WRITE setShowTemp NOTIFY showTempChanged)
    Q_PROPERTY(bool hotkeysOn READ hotkeysOn WRITE setHotkeysOn NOTIFY hotkeysOnChanged)
    Q_PROPERTY(bool heatAlerts READ heatAlerts WRITE setHeatAlerts NOTIFY heatAlertsChanged)
    Q_PROPERTY(bool lowBattStop READ lowBattStop WRITE setLowBattStop NOTIFY lowBattStopChanged)
    /// "system", "de" or "en".
    Q_PROPERTY(QString appLang READ appLang NOTIFY appLangChanged)
    /// The user has asked for a check just now.
    Q_PROPERTY(bool checking READ checking NOTIFY checkingChanged)
    /// The user has asked for a check since the window was opened.
    Q_PROPERTY(bool checkedOnce READ checkedOnce NOTIFY checkedOnceChanged)
    /// The name of the `Alert` that waits for its answer.
    Q_PROPERTY(QString alert READ alertName NOTIFY alertChanged)
    /// Why the application could not be removed; of the last attempt.
    Q_PROPERTY(QString uninstallError READ uninstallError NOTIFY uninstallErrorChanged)
    /// The application is being removed, or waits for the password to be.
    Q_PROPERTY(bool isRemoving READ isRemoving NOTIFY isRemovingChanged)
    Q_PROPERTY(QString version READ version CONSTANT)
    Q_PROPERTY(bool canSendFeedback READ canSendFeedback CONSTANT)

public:
    enum class Alert { none, languageRestart, confirmUninstall, removed, uninstallFailed };
    Q_ENUM(Alert)

    /// How long a check is shown to be under way, however soon it is answered.
    static constexpr Duration checkLinger = std::chrono::milliseconds(1500);

    /// Shows what is stored, and what the system says, by now.
    explicit SettingsState(SettingsServices services);
    ~SettingsState() override;

    [[nodiscard]] bool launchAtLogin() const { return launchAtLogin_; }
    [[nodiscard]] bool showTemp() const { return showTemp_; }
    [[nodiscard]] bool hotkeysOn() const { return hotkeysOn_; }
    [[nodiscard]] bool heatAlerts() const { return heatAlerts_; }
    [[nodiscard]] bool lowBattStop() const { return lowBattStop_; }
    [[nodiscard]] QString appLang() const { return appLang_; }
    [[nodiscard]] bool checking() const { return checking_; }
    [[nodiscard]] bool checkedOnce() const { return checkedOnce_; }
    [[nodiscard]] Alert alert() const { return alert_; }
    [[nodiscard]] QString uninstallError() const { return uninstallError_; }
    [[nodiscard]] bool isRemoving() const { return isRemoving_; }
    [[nodiscard]] QString version() const { return QString::fromStdString(services_.version); }
    [[nodiscard]] bool canSendFeedback() const { return !services_.supportMail.empty(); }
    /// What the check finds.
    [[nodiscard]] UpdateChecker& updates() const { return services_.updates; }

    // What the window does. Each choice is stored at once; once the application has been removed there is
    // nothing to choose.

    /// Shows afterwards what has become of it.
    void setLaunchAtLogin(bool on);
    void setShowTemp(bool on);
    void setHotkeysOn(bool on);
    void setHeatAlerts(bool on);
    void setLowBattStop(bool on);
    /// "system", "de" or "en"; offers a restart, for which texts of the new language are to be shown. Without
    /// effect for any other value, and for the one that is chosen.
    Q_INVOKABLE void chooseLanguage(const QString& language);
    Q_INVOKABLE void checkForUpdates();
    Q_INVOKABLE void showIntroduction();
    /// Begins a message to the maker in the user's mail program, where there is an address.
    Q_INVOKABLE void sendFeedback();
    /// Asks whether to remove the application.
    Q_INVOKABLE void askToUninstall();

    // The answers. Each is without effect unless its own alert waits for it.

    Q_INVOKABLE void restartNow();
    Q_INVOKABLE void restartLater();
    /// Asks for the password and removes the application.
    Q_INVOKABLE void confirmUninstall();
    Q_INVOKABLE void cancelUninstall();
    /// The application has been removed.
    Q_INVOKABLE void sayGoodbye();
    Q_INVOKABLE void dismissFailure();

    /// The window was closed. Answers an alert that leaves no choice.
    void windowClosed() { sayGoodbye(); }

Q_SIGNALS:
    void launchAtLoginChanged();
    void showTempChanged();
    void hotkeysOnChanged();
    void heatAlertsChanged();
    void lowBattStopChanged();
    void appLangChanged();
    void checkingChanged();
    void checkedOnceChanged();
    void alertChanged();
    void uninstallErrorChanged();
    void isRemovingChanged();
    /// The stored language is another one: texts are to be built anew.
    void languageChanged();
    /// The removal has come to an end, whichever; an alert tells of it unless the user dismissed the prompt.
    void removalEnded();

private:
    [[nodiscard]] QString alertName() const;
    [[nodiscard]] bool isOccupied() const { return isRemoving_ || alert_ != Alert::none; }
    [[nodiscard]] bool isRemoved() const { return alert_ == Alert::removed; }
    /// False once the application is removed, which has no settings any more.
    bool store(const char* setting, bool on);
    void endRemoval(const InstallResult& result);
    /// False when that alert does not wait.
    bool close(Alert alert);

    SettingsServices services_;

    // Published. Assigning a different value announces it.
    Q_OBJECT_BINDABLE_PROPERTY(SettingsState, bool, launchAtLogin_, &SettingsState::launchAtLoginChanged)
    Q_OBJECT_BINDABLE_PROPERTY(SettingsState, bool, showTemp_, &SettingsState::showTempChanged)
    Q_OBJECT_BINDABLE_PROPERTY(SettingsState, bool, hotkeysOn_, &SettingsState::hotkeysOnChanged)
    Q_OBJECT_BINDABLE_PROPERTY(SettingsState, bool, heatAlerts_, &SettingsState::heatAlertsChanged)
    Q_OBJECT_BINDABLE_PROPERTY(SettingsState, bool, lowBattStop_, &SettingsState::lowBattStopChanged)
    Q_OBJECT_BINDABLE_PROPERTY(SettingsState, QString, appLang_, &SettingsState::appLangChanged)
    Q_OBJECT_BINDABLE_PROPERTY(SettingsState, bool, checking_, &SettingsState::checkingChanged)
    Q_OBJECT_BINDABLE_PROPERTY(SettingsState, bool, checkedOnce_, &SettingsState::checkedOnceChanged)
    Q_OBJECT_BINDABLE_PROPERTY_WITH_ARGS(SettingsState, Alert, alert_, Alert::none,
                                         &SettingsState::alertChanged)
    Q_OBJECT_BINDABLE_PROPERTY(SettingsState, QString, uninstallError_, &SettingsState::uninstallErrorChanged)
    Q_OBJECT_BINDABLE_PROPERTY(SettingsState, bool, isRemoving_, &SettingsState::isRemovingChanged)

    /// While a check is shown to be under way.
    std::unique_ptr<Timer> checkTimer_;
    Lifetime lifetime_;
};

}  // namespace corvane
