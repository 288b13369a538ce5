#pragma once

#include <QObject>
#include <QPoint>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "app/application/StatusMenu.h"
#include "app/menu/StatusHeader.h"
#include "app/onboarding/OnboardingController.h"
#include "app/popover/Popover.h"
#include "app/session/SleepManager.h"
#include "app/shell/Hotkeys.h"
#include "app/shell/Lang.h"
#include "platform/ActivationPolicy.h"
#include "platform/Lifetime.h"
#include "platform/SerialQueue.h"
#include "platform/StatusItem.h"
#include "platform/UserDefaults.h"

namespace corvane {

/// What the delegate needs. All of it outlives the delegate.
struct AppDelegateServices {
    SerialQueue& mainLoop;
    SleepManager& manager;
    const StatusHeader& header;
    StatusItem& statusItem;
    ActivationPolicy& activation;
    OnboardingController& onboarding;
    Popover& popover;
    Hotkeys& hotkeys;
    UserDefaults& defaults;
    const Lang& lang;
    /// Ends the application.
    std::function<void()> quit;
    std::string buildNumber = "?";
};

/// Brings the application up once its models are there, keeps the status item in step with them, and does
/// what the user asks of the status item and the hot keys. Belongs to the main loop.
class AppDelegate final : public QObject {
    Q_OBJECT

public:
    /// Text: the build that was last started.
    static constexpr const char* lastBuildSetting = "lastLaunchedBuild";

    /// The panel of a new build opens by itself after this, once, unless the introduction does it.
    static constexpr Duration firstOpeningDelay = std::chrono::milliseconds(700);
    /// A session that a hot key begins lasts this long.
    static constexpr Duration hotkeySession = std::chrono::hours(24);

    explicit AppDelegate(AppDelegateServices services);
    ~AppDelegate() override;

    /// Everything that happens at start-up after the models, the status item and the panel were made.
    void applicationDidFinishLaunching();

    /// Opens the panel where the status item was clicked, or closes it. No anchor where the tray tells none.
    void togglePopover(const StatusItemAnchor& anchor);

    /// Opens the panel where the status item was clicked last, and brings the application before all others:
    /// the panel is to have the keyboard.
    void openPopover();

    void perform(Hotkeys::Action action);

    /// The application was removed and is about to end: closes the panel for good and an open introduction,
    /// and does nothing any more that is asked of the status item, whose menu is emptied, and of the hot
    /// keys.
    void withdraw();

private:
    void letGo();
    void followModels();
    void updateIconSoon();
    void updateIcon();
    [[nodiscard]] std::string temperatureTitle() const;
    void introduce();
    void toggleKeepAwake();
    void toggleFanBoost();

    AppDelegateServices services_;
    StatusMenu menu_;
    std::optional<QPoint> anchor_;
    bool isIconOutdated_ = false;
    bool isWithdrawn_ = false;
    std::unique_ptr<Timer> openingTimer_;
    Lifetime lifetime_;
};

}  // namespace corvane
