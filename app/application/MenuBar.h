#pragma once

#include <memory>

#include "app/application/AppDelegate.h"
#include "app/application/Application.h"
#include "app/menu/MenuState.h"
#include "app/menu/StatusHeader.h"
#include "app/menu/TemperatureBadge.h"
#include "app/onboarding/OnboardingController.h"
#include "app/popover/Popover.h"
#include "app/settings/SettingsController.h"
#include "app/shell/Hotkeys.h"
#include "app/shell/WindowPresence.h"
#include "app/windows/Views.h"
#include "platform/AppPlatform.h"

namespace corvane {

/// All that the user sees of the application, and its hot keys, on a platform's services. Main loop.
class MenuBar {
public:
    /// Makes everything, in the order in which the user is to see it. `platform` and `application` outlive
    /// it.
    MenuBar(AppPlatform& platform, Application& application, const Views& views);

    /// Brings it to life.
    void start() { delegate_.applicationDidFinishLaunching(); }

    /// Opens the panel, as another start of the application wishes.
    void openPanel() { delegate_.openPopover(); }

    /// What the panel does.
    [[nodiscard]] MenuState& menu() { return menu_; }

private:
    // In the order in which the platform makes them.
    std::unique_ptr<Appearance> appearance_;
    std::unique_ptr<StatusItem> statusItem_;
    std::unique_ptr<LoginItem> loginItem_;
    std::unique_ptr<InstalledApplications> installedApplications_;
    std::unique_ptr<HotKeyService> hotKeyService_;
    std::unique_ptr<ActivationPolicy> activationPolicy_;
    std::unique_ptr<Relauncher> relauncher_;
    std::unique_ptr<Uninstaller> uninstaller_;

    MenuState menu_;
    StatusHeader header_;
    TemperatureBadge temperature_;
    std::unique_ptr<Popover> popover_;
    Hotkeys hotkeys_;
    WindowPresence presence_;
    OnboardingController onboarding_;
    SettingsController settings_;
    AppDelegate delegate_;
};

}  // namespace corvane
