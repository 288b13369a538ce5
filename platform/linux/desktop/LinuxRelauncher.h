#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <utility>

#include "platform/Log.h"
#include "platform/Relauncher.h"
#include "platform/posix/FileDescriptor.h"

namespace corvane {

/// Leaves a process behind that waits for the end of this one, whichever way that ends, and then becomes the
/// application. What this one has let go of in an orderly end is free by then; when it is killed, the system
/// may still be closing its files and connections, so that whoever needs one of them tries for a while. Main
/// loop.
class LinuxRelauncher final : public Relauncher {
public:
    /// `executable` is what is started, with the environment of this process. `log` outlives the relauncher.
    LinuxRelauncher(std::filesystem::path executable, Log& log)
        : executable_(std::move(executable)), log_(log) {}

    void relaunch() override;

private:
    [[nodiscard]] std::optional<std::string> startWaiting(const FileDescriptor& input);

    std::filesystem::path executable_;
    Log& log_;
};

}  // namespace corvane
