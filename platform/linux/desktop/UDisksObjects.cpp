#include "platform/linux/desktop/UDisksObjects.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

#include <sdbus-c++/sdbus-c++.h>

#include "platform/linux/desktop/MountTable.h"

namespace corvane {

namespace {

constexpr const char* ofInterface = "org.freedesktop.UDisks2.";

/// Layers below a file system, such as encryption and partitions. More than anybody stacks.
constexpr int maxLayers = 8;

/// Runs `each` within every entry of a dictionary.
template <typename Each>
void walk(sdbus::Message& message, const std::string& entry, std::size_t most, Each each) {
    message.enterContainer('{' + entry + '}');
    for (std::size_t i = 0; message.enterDictEntry(entry); ++i) {
        if (i == most) {
            throw sdbus::Error("org.freedesktop.DBus.Error.LimitsExceeded", "UDisks tells too much");
        }
        each();
        message.exitDictEntry();
    }
    message.clearFlags();
    message.exitContainer();
}

/// Leaves `value` as it is when the variant is of another type.
template <typename T>
void take(const sdbus::Variant& variant, T& value) {
    if (variant.containsValueOfType<T>()) {
        value = variant.get<T>();
    }
}

void takePath(const sdbus::Variant& variant, std::string& path) {
    sdbus::ObjectPath value;
    take(variant, value);
    path = std::move(value);
}

/// Paths are bytes, ended by a NUL as a rule.
void takeMountPoints(const sdbus::Variant& variant, std::vector<std::string>& paths) {
    std::vector<std::vector<std::uint8_t>> points;
    take(variant, points);
    for (const auto& point : points) {
        std::string path(point.begin(), std::ranges::find(point, 0));
        if (path.starts_with('/') && paths.size() < maxMountPoints) {
            paths.push_back(std::move(path));
        }
    }
}

void takeProperty(UDisksObject& object, std::string_view property, const sdbus::Variant& value) {
    if (property == "Drive.ConnectionBus") {
        take(value, object.connectionBus);
    } else if (property == "Drive.Removable") {
        take(value, object.isRemovable);
    } else if (property == "Drive.MediaRemovable") {
        take(value, object.isMediumRemovable);
    } else if (property == "Block.IdLabel") {
        take(value, object.label);
    } else if (property == "Block.Drive") {
        takePath(value, object.drive);
    } else if (property == "Block.CryptoBackingDevice") {
        takePath(value, object.cryptoBackingDevice);
    } else if (property == "Block.HintIgnore") {
        take(value, object.isIgnored);
    } else if (property == "Partition.Table") {
        takePath(value, object.partitionTable);
    } else if (property == "Loop.SetupByUID") {
        take(value, object.loopSetUpBy.emplace());
    } else if (property == "Filesystem.MountPoints") {
        takeMountPoints(value, object.mountPoints);
    }
}

/// The entry of an object within its dictionary of interfaces.
void readInterface(sdbus::Message& message, UDisksObject& object) {
    std::string interface;
    message >> interface;
    const bool isUDisks = interface.starts_with(ofInterface);
    walk(message, "sv", maxUDisksObjects, [&] {
        std::string property;
        sdbus::Variant value;
        message >> property >> value;
        if (isUDisks) {
            std::string name = interface.substr(std::string_view(ofInterface).size());
            name += '.';
            name += property;
            takeProperty(object, name, value);
        }
    });
}

bool isExternalDrive(const UDisksObject& drive) {
    return drive.connectionBus == "usb" || drive.connectionBus == "sdio" ||
           drive.connectionBus == "ieee1394" || drive.isRemovable || drive.isMediumRemovable;
}

/// Where desktops mount what a user asked them to.
bool isMountedByDesktop(std::string_view path) {
    return isWithin(path, "/media") || isWithin(path, "/run/media");
}

const UDisksObject* find(const UDisksObjects& objects, const std::string& path) {
    const auto found = objects.find(path);
    return found == objects.end() ? nullptr : &found->second;
}

/// What an encrypted volume or a partition lies on; null for none.
const UDisksObject* below(const UDisksObjects& objects, const UDisksObject& block) {
    const UDisksObject* encrypted = find(objects, block.cryptoBackingDevice);
    return encrypted != nullptr ? encrypted : find(objects, block.partitionTable);
}

bool isExternal(const UDisksObjects& objects, const UDisksObject& mounted, std::string_view path) {
    const UDisksObject* block = &mounted;
    for (int layer = 0; block != nullptr && layer < maxLayers; ++layer) {
        if (const UDisksObject* drive = find(objects, block->drive)) {
            return isExternalDrive(*drive);
        }
        if (block->loopSetUpBy.value_or(0) != 0) {
            return true;
        }
        block = below(objects, *block);
    }
    return isMountedByDesktop(path);
}

/// What the system is started from is nothing to look into.
bool isWhereUsersLook(std::string_view path) {
    return path != "/" && !isWithin(path, "/boot") && !isWithin(path, "/efi");
}

}  // namespace

UDisksObjects readUDisksObjects(sdbus::Message& reply) {
    UDisksObjects objects;
    walk(reply, "oa{sa{sv}}", maxUDisksObjects, [&] {
        sdbus::ObjectPath path;
        reply >> path;
        UDisksObject& object = objects[path];
        walk(reply, "sa{sv}", maxUDisksObjects, [&] { readInterface(reply, object); });
    });
    return objects;
}

std::vector<Volume> volumesOf(const UDisksObjects& objects) {
    std::vector<Volume> volumes;
    for (const auto& [name, block] : objects) {
        for (const std::string& path : block.mountPoints) {
            volumes.push_back({.path = path,
                               .name = block.label.empty() ? std::nullopt : std::optional(block.label),
                               .isInternal = block.isIgnored || !isExternal(objects, block, path),
                               .isBrowsable = !block.isIgnored && isWhereUsersLook(path)});
        }
    }
    return volumes;
}

}  // namespace corvane
