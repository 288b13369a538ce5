#include "app/application/MenuBar.h"

#include <cstdlib>
#include <functional>

#include "app/shell/BuildInfo.h"

namespace corvane {

namespace {

std::function<void()> quitting(AppPlatform& platform) {
    return [&mainLoop = platform.mainLoop()] { mainLoop.exit(EXIT_SUCCESS); };
}

}  // namespace

MenuBar::MenuBar(AppPlatform& platform, Application& application, const Views& views)
    : appearance_(platform.makeAppearance()),
      statusItem_(platform.makeStatusItem(*appearance_)),
      loginItem_(platform.makeLoginItem()),
      installedApplications_(platform.makeInstalledApplications(application.locale())),
      hotKeyService_(platform.makeHotKeyService()),
      activationPolicy_(platform.makeActivationPolicy()),
      relauncher_(platform.makeRelauncher()),
      uninstaller_(platform.makeUninstaller(*loginItem_, application.defaults())),
      menu_({.mainLoop = platform.mainQueue(),
             .manager = application.manager(),
             .powerSources = application.powerSources(),
             .volumes = application.volumes(),
             .defaults = application.defaults(),
             .loginItem = *loginItem_,
             .lang = application.lang(),
             .showSettings = [this] { settings_.show(); },
             .showGuide = [this] { onboarding_.show(); },
             .quit = quitting(platform)}),
      header_(application.manager(), application.lang()),
      temperature_(application.manager().fan(), application.lang()),
      popover_(views.makePopover({.mainLoop = platform.mainQueue(),
                                  .manager = application.manager(),
                                  .menu = menu_,
                                  .header = header_,
                                  .temperature = temperature_,
                                  .applications = *installedApplications_,
                                  .appearance = *appearance_,
                                  .lang = application.lang(),
                                  .locale = application.locale()})),
      hotkeys_(*hotKeyService_, platform.mainQueue(), application.lang()),
      presence_(*activationPolicy_),
      onboarding_({.mainLoop = platform.mainQueue(),
                   .defaults = application.defaults(),
                   .lang = application.lang(),
                   .presence = presence_,
                   .makeWindow = std::bind_front(views.makeOnboardingWindow, std::ref(platform.mainQueue()),
                                                 std::cref(application.lang())),
                   .version = BuildInfo::version}),
      settings_({.mainLoop = platform.mainQueue(),
                 .defaults = application.defaults(),
                 .loginItem = *loginItem_,
                 .updates = application.manager().updates(),
                 .opener = application.urlOpener(),
                 .uninstaller = *uninstaller_,
                 .relauncher = *relauncher_,
                 .enableHotkeys = [this](bool on) { hotkeys_.setEnabled(on); },
                 .showIntroduction = [this] { onboarding_.show(); },
                 .retranslateOthers =
                     [this] {
                         onboarding_.retranslate();
                         popover_->retranslate();
                     },
                 .withdraw = [this] { delegate_.withdraw(); },
                 .quit = quitting(platform),
                 .version = BuildInfo::version,
                 .supportMail = BuildInfo::supportMail},
                presence_,
                std::bind_front(views.makeSettingsWindow, WindowServices{.mainLoop = platform.mainQueue(),
                                                                         .appearance = *appearance_,
                                                                         .lang = application.lang()})),
      delegate_({.mainLoop = platform.mainQueue(),
                 .manager = application.manager(),
                 .header = header_,
                 .statusItem = *statusItem_,
                 .activation = *activationPolicy_,
                 .onboarding = onboarding_,
                 .popover = *popover_,
                 .hotkeys = hotkeys_,
                 .defaults = application.defaults(),
                 .lang = application.lang(),
                 .quit = quitting(platform),
                 .buildNumber = BuildInfo::buildNumber}) {}

}  // namespace corvane
