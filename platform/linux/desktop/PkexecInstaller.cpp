#include "platform/linux/desktop/PkexecInstaller.h"

#include <utility>

namespace corvane {

namespace {

constexpr const char* helperName = "corvane-helper";
constexpr const char* scriptName = "install-helper";

}  // namespace

PkexecInstaller::PkexecInstaller(const FileSystem& files, Paths paths)
    : files_(files),
      paths_(std::move(paths)),
      script_({.script = paths_.folder / scriptName, .work = "the installation", .pkexec = paths_.pkexec}) {}

bool PkexecInstaller::isPresent(const Helper& helper) const {
    return files_.isFile(helper.program) && files_.isFile(helper.activation);
}

bool PkexecInstaller::isInstalled() const {
    return isPresent(paths_.installed) || isPresent(paths_.packaged);
}

bool PkexecInstaller::needsUpdate() const {
    return isPresent(paths_.installed) && files_.differ(paths_.folder / helperName, paths_.installed.program);
}

void PkexecInstaller::install(Done done) {
    if (!files_.isFile(paths_.folder / helperName)) {
        done(InstallResult::failure("Standalone helper binary not found in app bundle"));
        return;
    }
    script_.run(std::move(done));
}

}  // namespace corvane
