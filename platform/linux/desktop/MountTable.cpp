#include "platform/linux/desktop/MountTable.h"

#include <algorithm>
#include <array>
#include <optional>

#include "platform/posix/BoundedFile.h"

namespace corvane {

namespace {

/// More than thousands of mounts need.
constexpr std::size_t largestTable = 4 * 1024 * 1024;

constexpr std::array userFolders{"/media", "/run/media", "/mnt", "/Volumes"};

/// Cuts off and returns what comes before the next separator.
std::string_view cut(std::string_view& text, char separator) {
    const std::size_t end = std::min(text.find(separator), text.size());
    const std::string_view first = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return first;
}

bool isOctal(std::string_view digits) {
    return digits.size() == 3 &&
           std::ranges::all_of(digits, [](char digit) { return digit >= '0' && digit <= '7'; });
}

/// The kernel writes blanks, tabs, line ends and backslashes as "\ooo".
std::string decoded(std::string_view field) {
    std::string text;
    for (std::size_t i = 0; i < field.size(); ++i) {
        const std::string_view digits = field.substr(i + 1, 3);
        if (field[i] == '\\' && isOctal(digits)) {
            text += static_cast<char>((digits[0] - '0') * 64 + (digits[1] - '0') * 8 + (digits[2] - '0'));
            i += digits.size();
        } else {
            text += field[i];
        }
    }
    return text;
}

/// "36 35 98:0 /root /path options optional... - type source superoptions"
std::optional<Mount> parseLine(std::string_view line) {
    constexpr int fieldsBeforePath = 4;
    for (int i = 0; i < fieldsBeforePath; ++i) {
        cut(line, ' ');
    }
    const std::string_view path = cut(line, ' ');
    while (!line.empty() && cut(line, ' ') != "-") {
    }
    const std::string_view type = cut(line, ' ');
    const std::string_view source = cut(line, ' ');
    if (!path.starts_with('/') || type.empty()) {
        return std::nullopt;
    }
    return Mount{decoded(path), std::string(type), decoded(source)};
}

bool isWhereUsersMount(std::string_view path) {
    return std::ranges::any_of(userFolders, [&](std::string_view folder) { return isWithin(path, folder); });
}

}  // namespace

std::string readMountTable(const std::string& path) {
    return readAtMost(path, largestTable);
}

std::vector<Mount> parseMountTable(std::string_view table) {
    std::vector<Mount> mounts;
    while (!table.empty()) {
        if (auto mount = parseLine(cut(table, '\n'))) {
            mounts.push_back(std::move(*mount));
        }
    }
    return mounts;
}

bool isMountPoint(std::string_view table, std::string_view path) {
    const std::vector<Mount> mounts = parseMountTable(table);
    return std::ranges::any_of(
        mounts, [&](const Mount& mount) { return mount.path == path && mount.type != "autofs"; });
}

bool isWithin(std::string_view path, std::string_view folder) {
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

std::vector<Volume> volumesInTable(std::string_view table) {
    std::vector<Volume> volumes;
    for (const Mount& mount : parseMountTable(table)) {
        if (mount.source.starts_with("/dev/") && isWhereUsersMount(mount.path)) {
            volumes.push_back(
                {.path = mount.path, .name = std::nullopt, .isInternal = false, .isBrowsable = true});
        }
    }
    return volumes;
}

}  // namespace corvane
