#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/Volumes.h"

namespace corvane {

/// One line of the kernel's table of mounts.
struct Mount {
    /// Where it is mounted, absolute.
    std::string path;
    /// Of the file system: "ext4".
    std::string type;
    /// What is mounted: a device, or anything that the file system makes of it.
    std::string source;
};

/// What `path`, a file like /proc/self/mountinfo, says; empty when it cannot be read. Reading it touches no
/// drive, so it does not wait for one. Takes some tens of microseconds.
[[nodiscard]] std::string readMountTable(const std::string& path);

/// Lines that make no sense are left out.
[[nodiscard]] std::vector<Mount> parseMountTable(std::string_view table);

/// A file system is mounted at `path`, and not just waited for (autofs).
[[nodiscard]] bool isMountPoint(std::string_view table, std::string_view path);

/// `path` is `folder` or below it.
[[nodiscard]] bool isWithin(std::string_view path, std::string_view folder);

/// The external volumes, as far as the table tells: file systems on block devices that are mounted where
/// people mount theirs. They have no names.
[[nodiscard]] std::vector<Volume> volumesInTable(std::string_view table);

}  // namespace corvane
