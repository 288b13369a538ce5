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
/// application. By then the system has closed all files and connections of this one. Main loop.
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
