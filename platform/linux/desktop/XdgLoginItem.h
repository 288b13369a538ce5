#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <utility>

#include "platform/FileSystem.h"
#include "platform/Log.h"
#include "platform/LoginItem.h"
#include "platform/linux/desktop/EnvironmentLookup.h"

namespace corvane {

/// The login item as a desktop has it: a desktop file in the user's autostart folder. It counts as off when
/// the user has switched it off in the desktop's own settings. Main loop.
class XdgLoginItem final : public LoginItem {
public:
    /// `file` is the desktop file, whose folders are made when they are missing. `executable` is what it
    /// starts. Both others outlive the item.
    XdgLoginItem(FileSystem& files, Log& log, std::filesystem::path file, std::filesystem::path executable)
        : files_(files), log_(log), file_(std::move(file)), executable_(std::move(executable)) {}

    [[nodiscard]] bool isEnabled() const override;
    bool setEnabled(bool on) override;

private:
    [[nodiscard]] bool startsExecutable() const;
    // What went wrong.
    std::optional<std::string> write();
    std::optional<std::string> remove();

    FileSystem& files_;
    Log& log_;
    std::filesystem::path file_;
    std::filesystem::path executable_;
};

/// Where the application's autostart file is: in the folder for configuration, as `xdgFolder` finds it.
[[nodiscard]] std::filesystem::path autostartFile(const EnvironmentLookup& environment);

}  // namespace corvane
