#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "platform/Log.h"
#include "platform/SingleInstance.h"
#include "platform/linux/desktop/EnvironmentLookup.h"
#include "platform/linux/desktop/QtDescriptor.h"
#include "platform/posix/FileDescriptor.h"

namespace corvane {

/// One instance for each user, in however many sessions they are logged in: the bus and the runtime folder
/// are the user's and not a session's, and two instances would fight over the one helper. By two files in a
/// folder that is the user's alone: who holds the lock on "lock" is the first, and who connects to the socket
/// "open" asks it to open its panel. All it takes is to connect; what is sent is not read, and one byte is
/// the answer. A first one that was killed leaves a socket that the next one takes over. Main thread, on Qt's
/// event loop.
class UserSingleInstance final : public SingleInstance {
public:
    /// `folder` is an absolute path, and made when it is missing. `log` outlives the instance. `patience` is
    /// how long the first one may take for its answer.
    UserSingleInstance(std::filesystem::path folder, Log& log,
                       std::chrono::milliseconds patience = std::chrono::seconds(5))
        : folder_(std::move(folder)), log_(log), patience_(patience) {}

    [[nodiscard]] Start claim(std::function<void()> openRequested) override;

private:
    enum class Lock { ours, others, impossible };

    [[nodiscard]] std::optional<std::string> prepareFolder() const;
    [[nodiscard]] Lock lock();
    void listen();
    void acceptOne();
    [[nodiscard]] std::string path(const char* name) const { return (folder_ / name).string(); }

    std::filesystem::path folder_;
    Log& log_;
    std::chrono::milliseconds patience_;
    std::function<void()> openRequested_;
    /// Locked by the first one; the system unlocks it with the process, whichever way that ends.
    std::optional<FileDescriptor> lock_;
    std::unique_ptr<QtDescriptor> listener_;
};

/// The folder for the user's instance: below $XDG_RUNTIME_DIR, or one with the user's number below the folder
/// for temporary files.
[[nodiscard]] std::filesystem::path instanceFolder(const EnvironmentLookup& environment);

}  // namespace corvane
