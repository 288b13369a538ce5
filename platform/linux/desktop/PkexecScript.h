#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "platform/HelperInstaller.h"

class QProcess;

namespace corvane {

/// A script of the application's that root runs, without an argument, once its user has agreed to that at
/// pkexec's prompt. Lives on a thread with a Qt event loop, the application's main loop.
class PkexecScript {
public:
    using Done = std::function<void(InstallResult result)>;

    struct Options {
        /// Absolute.
        std::filesystem::path script;
        /// What the script does, for messages: "the installation".
        const char* work;
        /// A name to be looked up in $PATH, or a path.
        std::string pkexec;
    };

    explicit PkexecScript(Options options);
    PkexecScript(const PkexecScript&) = delete;
    PkexecScript& operator=(const PkexecScript&) = delete;

    /// While the prompt is up, this takes it away, and nothing is run. A script that was agreed to runs to
    /// its end by itself.
    ~PkexecScript();

    /// Returns at once. `done` runs once, later or inside this call, and may destroy the script; not at all
    /// when the script is destroyed first. Not called again before that.
    void run(Done done);

private:
    void keepErrors();
    /// Ends the run, which has ended itself, with its result.
    void finish(const InstallResult& result);

    Options options_;
    Done done_;
    std::unique_ptr<QProcess> process_;
    /// The end of what it wrote to standard error.
    std::string errors_;
};

}  // namespace corvane
