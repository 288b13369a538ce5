#pragma once

#include <memory>

#include "app/shell/Lang.h"
#include "platform/macos/desktop/MacAppleScript.h"
#include "platform/macos/desktop/MacTrash.h"
#include "platform/macos/gui/MacAppPlatform.h"
#include "platform/posix/PosixFileSystem.h"

namespace corvane {

/// The application on a Mac, with what installs its helper for launchd and removes it again. Its prompts are
/// in the language of the user's settings, which it reads by itself.
class LaunchdAppPlatform : public MacAppPlatform {
public:
    LaunchdAppPlatform();

    std::unique_ptr<HelperInstaller> makeHelperInstaller() override;
    std::unique_ptr<Uninstaller> makeUninstaller(LoginItem& loginItem, UserDefaults& defaults) override;

private:
    std::unique_ptr<UserDefaults> defaults_;
    std::unique_ptr<Locale> locale_;
    Lang lang_;
    PosixFileSystem files_;
    MacAppleScript scripting_;
    MacTrash trash_;
};

}  // namespace corvane
