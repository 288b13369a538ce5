#include "app/installer/LaunchdUninstaller.h"

#include <utility>

#include <fmt/format.h>

#include "app/installer/AdministratorScript.h"
#include "app/installer/LaunchdRemovalScript.h"
#include "app/shell/ShellSettings.h"

namespace corvane {

namespace {

/// German in both languages.
constexpr AdministratorScriptTexts removalTexts{.notCreated = "AppleScript konnte nicht erstellt werden",
                                                .unknownError = "unbekannter Fehler"};

/// What the next installation has to ask again, even where the rest cannot be removed.
constexpr const char* furtherSettings[] = {ShellSettings::seenIntroduction, ShellSettings::loginChoiceMade};

/// Below the user's home folder; {} is the bundle's identifier.
constexpr const char* userFiles[] = {"Library/Preferences/{}.plist", "Library/Caches/{}",
                                     "Library/HTTPStorages/{}", "Library/HTTPStorages/{}.binarycookies",
                                     "Library/WebKit/{}"};

}  // namespace

LaunchdUninstaller::LaunchdUninstaller(const Services& services, Paths paths)
    : services_(services), paths_(std::move(paths)) {}

void LaunchdUninstaller::performPrivilegedRemoval(Done done) {
    const char* const prompt =
        services_.lang.text("Corvane entfernt sein Hintergrund-Hilfswerkzeug und sich selbst vollständig.",
                            "Corvane will remove its background helper and itself completely.");
    done(runAsAdministrator(services_.scripting, launchdRemovalScript(paths_.bundle, paths_.installed),
                            prompt, removalTexts));
}

void LaunchdUninstaller::clearUserTraces() {
    services_.loginItem.setEnabled(false);
    removeSettings();
    removeFiles();
    // The script may not have been able to remove it.
    services_.trash.moveThere(paths_.bundle);
}

void LaunchdUninstaller::removeSettings() {
    if (paths_.identifier) {
        services_.defaults.removeAll();
    }
    for (const char* setting : furtherSettings) {
        services_.defaults.remove(setting);
    }
}

void LaunchdUninstaller::removeFiles() {
    if (!paths_.identifier) {
        return;
    }
    for (const char* file : userFiles) {
        services_.files.removeTree(paths_.home / fmt::format(fmt::runtime(file), *paths_.identifier));
    }
}

}  // namespace corvane
