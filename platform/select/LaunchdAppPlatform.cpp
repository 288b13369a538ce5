#include "platform/select/LaunchdAppPlatform.h"

#include <filesystem>

#include "app/installer/LaunchdInstaller.h"
#include "app/installer/LaunchdUninstaller.h"
#include "platform/macos/desktop/MainBundle.h"
#include "platform/macos/desktop/UserFolders.h"

namespace corvane {

namespace {

/// Empty for a program outside of any: what lies around it is not the application's to remove.
std::filesystem::path applicationBundle() {
    const std::filesystem::path bundle = MainBundle::path();
    return bundle.extension() == ".app" ? bundle : std::filesystem::path();
}

}  // namespace

LaunchdAppPlatform::LaunchdAppPlatform()
    : defaults_(MacAppPlatform::makeUserDefaults()),
      locale_(MacAppPlatform::makeLocale()),
      lang_(*defaults_, *locale_) {}

std::unique_ptr<HelperInstaller> LaunchdAppPlatform::makeHelperInstaller() {
    return std::make_unique<LaunchdInstaller>(
        files_, scripting_, lang_,
        LaunchdInstaller::Paths{.bundledHelper = MainBundle::resource("corvane-helper"),
                                .temporaryFolder = UserFolders::temporary()});
}

std::unique_ptr<Uninstaller> LaunchdAppPlatform::makeUninstaller(LoginItem& loginItem,
                                                                 UserDefaults& defaults) {
    return std::make_unique<LaunchdUninstaller>(
        LaunchdUninstaller::Services{scripting_, lang_, loginItem, defaults, files_, trash_},
        LaunchdUninstaller::Paths{.bundle = applicationBundle(),
                                  .home = UserFolders::home(),
                                  .identifier = MainBundle::identifier()});
}

}  // namespace corvane
