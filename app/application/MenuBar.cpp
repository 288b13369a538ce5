#include "app/application/MenuBar.h"

#include <cstdlib>

#include "app/shell/BuildInfo.h"

namespace corvane {

namespace {

std::function<void()> quitting(AppPlatform& platform) {
    return [&mainLoop = platform.mainLoop()] { mainLoop.exit(EXIT_SUCCESS); };
}

}  // namespace

MenuBar::MenuBar(AppPlatform& platform, Application& application, const PopoverFactory& makePopover)
    : appearance_(platform.makeAppearance()),
      statusItem_(platform.makeStatusItem(*appearance_)),
      loginItem_(platform.makeLoginItem()),
      installedApplications_(platform.makeInstalledApplications(application.locale())),
      hotKeyService_(platform.makeHotKeyService()),
      menu_({.mainLoop = platform.mainQueue(),
             .manager = application.manager(),
             .powerSources = application.powerSources(),
             .volumes = application.volumes(),
             .defaults = application.defaults(),
             .loginItem = *loginItem_,
             .lang = application.lang(),
             .showSettings = nullptr,
             .showGuide = nullptr,
             .quit = quitting(platform)}),
      header_(application.manager(), application.lang()),
      temperature_(application.manager().fan(), application.lang()),
      popover_(makePopover({.mainLoop = platform.mainQueue(),
                            .manager = application.manager(),
                            .menu = menu_,
                            .header = header_,
                            .temperature = temperature_,
                            .applications = *installedApplications_,
                            .appearance = *appearance_,
                            .lang = application.lang(),
                            .locale = application.locale()})),
      hotkeys_(*hotKeyService_, platform.mainQueue(), application.lang()),
      delegate_({.mainLoop = platform.mainQueue(),
                 .manager = application.manager(),
                 .header = header_,
                 .statusItem = *statusItem_,
                 .popover = *popover_,
                 .hotkeys = hotkeys_,
                 .defaults = application.defaults(),
                 .lang = application.lang(),
                 .quit = quitting(platform),
                 .buildNumber = BuildInfo::buildNumber}) {}

}  // namespace corvane
