#pragma once

#include "platform/linux/hwmon/Sysfs.h"

namespace corvane {

/// The tree of attributes under a folder of the file system.
class DirectorySysfs final : public Sysfs {
public:
    /// `root` is an absolute path, normally "/sys".
    explicit DirectorySysfs(std::string root);

    [[nodiscard]] std::vector<std::string> list(const std::string& directory) override;
    [[nodiscard]] std::optional<std::string> canonicalPath(const std::string& path) override;
    [[nodiscard]] std::unique_ptr<SysfsAttribute> open(const std::string& path, SysfsAccess access) override;

private:
    std::string root_;
};

}  // namespace corvane
