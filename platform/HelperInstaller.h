#pragma once

#include <functional>
#include <string>
#include <utility>

namespace corvane {

/// How an installation, or a removal, ended.
struct InstallResult {
    enum class Outcome {
        success,
        /// The user dismissed the administrator prompt.
        cancelled,
        failure,
    };

    Outcome outcome = Outcome::success;
    /// What went wrong, one line; only with `failure`.
    std::string message;

    static InstallResult success() { return {}; }
    static InstallResult cancelled() { return {Outcome::cancelled, {}}; }
    static InstallResult failure(std::string message) { return {Outcome::failure, std::move(message)}; }

    bool operator==(const InstallResult&) const = default;
};

/// Puts the privileged helper in place and registers it with the system's service manager, behind one
/// administrator prompt. Belongs to the main loop.
class HelperInstaller {
public:
    using Done = std::function<void(InstallResult result)>;

    HelperInstaller() = default;
    HelperInstaller(const HelperInstaller&) = delete;
    HelperInstaller& operator=(const HelperInstaller&) = delete;
    virtual ~HelperInstaller() = default;

    /// The helper's program and the file that registers it are both there; what is in them is not looked at.
    [[nodiscard]] virtual bool isInstalled() const = 0;

    /// The helper is installed and the application brings a program that differs from it in any byte. False
    /// when either cannot be read, and when a package manager looks after the installed one.
    [[nodiscard]] virtual bool needsUpdate() const = 0;

    /// Shows the prompt and installs, over an earlier installation too. `done` runs once on the main loop, be
    /// it inside this call or later; not at all when the installer is destroyed first. Not called again
    /// before that.
    virtual void install(Done done) = 0;
};

}  // namespace corvane
