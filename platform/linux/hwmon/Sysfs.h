#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// An open attribute file. Closed by its destructor.
class SysfsAttribute {
public:
    SysfsAttribute() = default;
    SysfsAttribute(const SysfsAttribute&) = delete;
    SysfsAttribute& operator=(const SysfsAttribute&) = delete;
    virtual ~SysfsAttribute() = default;

    /// Reads the value anew: the number of bytes put into `buffer`, or a negative errno value. Does not
    /// allocate.
    [[nodiscard]] virtual int read(std::span<char> buffer) = 0;

    /// Writes the value whole: 0 or an errno value. Does not allocate.
    [[nodiscard]] virtual int write(std::string_view text) = 0;
};

enum class SysfsAccess { read, readWrite };

/// The kernel's tree of device attributes. All paths are relative to its root, without a leading slash.
/// One thread.
class Sysfs {
public:
    Sysfs() = default;
    Sysfs(const Sysfs&) = delete;
    Sysfs& operator=(const Sysfs&) = delete;
    virtual ~Sysfs() = default;

    /// Names in `directory`, ascending; empty when it cannot be listed. A bounded number of them.
    [[nodiscard]] virtual std::vector<std::string> list(const std::string& directory) = 0;

    /// `path` with all links followed; nothing when it does not exist or leads out of the tree.
    [[nodiscard]] virtual std::optional<std::string> canonicalPath(const std::string& path) = 0;

    /// Null when the attribute is not there or its mode bits do not allow `access`; root is bound by them
    /// too.
    [[nodiscard]] virtual std::unique_ptr<SysfsAttribute> open(const std::string& path,
                                                               SysfsAccess access) = 0;
};

}  // namespace corvane
