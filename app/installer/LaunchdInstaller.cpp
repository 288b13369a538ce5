#include "app/installer/LaunchdInstaller.h"

#include <utility>

#include "app/installer/AdministratorScript.h"
#include "app/installer/LaunchdPropertyList.h"
#include "app/installer/LaunchdScript.h"

namespace corvane {

namespace {

constexpr const char* temporaryName = "de.tavrin.switchyard.smchelper.plist";

/// English in both languages.
constexpr AdministratorScriptTexts installationTexts{.notCreated = "Failed to create AppleScript",
                                                     .unknownError = "unknown error"};

}  // namespace

LaunchdInstaller::LaunchdInstaller(FileSystem& files, AppleScript& scripting, const Lang& lang, Paths paths)
    : files_(files), scripting_(scripting), lang_(lang), paths_(std::move(paths)) {}

bool LaunchdInstaller::isInstalled() const {
    return files_.isFile(paths_.installed.helper) && files_.isFile(paths_.installed.propertyList);
}

bool LaunchdInstaller::needsUpdate() const {
    return isInstalled() && paths_.bundledHelper &&
           files_.differ(*paths_.bundledHelper, paths_.installed.helper);
}

void LaunchdInstaller::install(Done done) {
    done(installed());
}

InstallResult LaunchdInstaller::installed() {
    if (!paths_.bundledHelper || !files_.isFile(*paths_.bundledHelper)) {
        return InstallResult::failure("Standalone helper binary not found in app bundle");
    }
    const std::filesystem::path list = paths_.temporaryFolder / temporaryName;
    if (const auto error = files_.writeAtomically(list, makePlist(paths_.installed))) {
        return InstallResult::failure("Could not write plist: " + *error);
    }
    InstallResult result = runAsRoot(launchdScript(*paths_.bundledHelper, list, paths_.installed));
    files_.remove(list);
    return result;
}

InstallResult LaunchdInstaller::runAsRoot(const std::string& shellScript) {
    const char* const prompt = lang_.text(
        "Corvane installiert ein Hilfswerkzeug zur Lüftersteuerung. Danach läuft alles ohne weitere "
        "Passwort-Abfragen.",
        "Corvane is installing a small helper for fan control. After this, everything runs without further "
        "password prompts.");
    return runAsAdministrator(scripting_, shellScript, prompt, installationTexts);
}

}  // namespace corvane
