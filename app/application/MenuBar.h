#pragma once

#include <functional>
#include <memory>

#include "app/application/AppDelegate.h"
#include "app/application/Application.h"
#include "app/menu/MenuState.h"
#include "app/menu/StatusHeader.h"
#include "app/menu/TemperatureBadge.h"
#include "app/popover/PanelModels.h"
#include "app/popover/Popover.h"
#include "app/shell/Hotkeys.h"
#include "platform/AppPlatform.h"

namespace corvane {

/// Makes the panel of these models, which outlive it.
using PopoverFactory = std::function<std::unique_ptr<Popover>(const PanelModels& models)>;

/// All that the user sees of the application, and its hot keys, on a platform's services. Main loop.
class MenuBar {
public:
    /// Makes everything, in the order in which the user is to see it. `platform` and `application` outlive
    /// it.
    MenuBar(AppPlatform& platform, Application& application, const PopoverFactory& makePopover);

    /// Brings it to life.
    void start() { delegate_.applicationDidFinishLaunching(); }

    /// Opens the panel, as another start of the application wishes.
    void openPanel() { delegate_.openPopover(); }

    [[nodiscard]] Popover& popover() { return *popover_; }

private:
    // In the order in which the platform makes them.
    std::unique_ptr<Appearance> appearance_;
    std::unique_ptr<StatusItem> statusItem_;
    std::unique_ptr<LoginItem> loginItem_;
    std::unique_ptr<InstalledApplications> installedApplications_;
    std::unique_ptr<HotKeyService> hotKeyService_;

    MenuState menu_;
    StatusHeader header_;
    TemperatureBadge temperature_;
    std::unique_ptr<Popover> popover_;
    Hotkeys hotkeys_;
    AppDelegate delegate_;
};

}  // namespace corvane
