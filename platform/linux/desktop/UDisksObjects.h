#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <sdbus-c++/Message.h>

#include "platform/Volumes.h"

namespace corvane {

/// UDisks' names.
namespace UDisks {
inline constexpr const char* busName = "org.freedesktop.UDisks2";
inline constexpr const char* objectPath = "/org/freedesktop/UDisks2";
inline constexpr const char* objectManager = "org.freedesktop.DBus.ObjectManager";
}  // namespace UDisks

/// What matters of one of UDisks' objects: of a block device or a drive. Texts are empty, and flags false,
/// when it does not say, or not in the agreed form.
struct UDisksObject {
    // Of a drive.
    /// "usb", "sdio", "ieee1394", empty for most others.
    std::string connectionBus;
    bool isRemovable = false;
    bool isMediumRemovable = false;
    // Of a block device. Paths of objects are "/" for none.
    std::string label;
    std::string drive;
    std::string cryptoBackingDevice;
    std::string partitionTable;
    bool isIgnored = false;
    /// Who set up a loop device; none for anything else.
    std::optional<std::uint32_t> loopSetUpBy;
    /// Absolute.
    std::vector<std::string> mountPoints;
};

/// By object path.
using UDisksObjects = std::map<std::string, UDisksObject>;

/// More mount points of one object are left out. More objects are not believed.
inline constexpr std::size_t maxUDisksObjects = 4096;
inline constexpr std::size_t maxMountPoints = 64;

/// What UDisks answers to GetManagedObjects. Throws sdbus::Error when that is something else, or too much.
[[nodiscard]] UDisksObjects readUDisksObjects(sdbus::Message& reply);

/// What is mounted, in the order of the objects' paths.
[[nodiscard]] std::vector<Volume> volumesOf(const UDisksObjects& objects);

}  // namespace corvane
