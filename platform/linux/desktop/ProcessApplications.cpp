#include "platform/linux/desktop/ProcessApplications.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include <dirent.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/desktop/ApplicationUnit.h"
#include "platform/posix/BoundedFile.h"

namespace corvane {

namespace {

/// More than one user can have by default.
constexpr int mostProcesses = 65'536;
/// In bytes. The kernel lets most environments be no larger.
constexpr std::size_t largestEnvironment = 131'072;
constexpr std::size_t largestText = 4096;

struct CloseDirectory {
    void operator()(DIR* directory) const { closedir(directory); }
};

bool isNumber(std::string_view name) {
    return !name.empty() && std::ranges::all_of(name, [](char c) { return c >= '0' && c <= '9'; });
}

std::string_view takePart(std::string_view& text, char separator) {
    const std::size_t end = text.find(separator);
    const std::string_view part = text.substr(0, end);
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    return part;
}

std::optional<std::string> byControlGroup(const std::string& folder) {
    const std::string content = readAtMost(folder + "/cgroup", largestText);
    for (std::string_view text = content; !text.empty();) {
        // NUMBER:CONTROLLERS:PATH
        std::string_view line = takePart(text, '\n');
        takePart(line, ':');
        takePart(line, ':');
        if (auto identifier = applicationOfControlGroup(line)) {
            return identifier;
        }
    }
    return std::nullopt;
}

std::optional<std::string> bySandbox(const std::string& folder) {
    const std::string content = readAtMost(folder + "/root/.flatpak-info", largestText);
    bool isInGroup = false;
    for (std::string_view text = content; !text.empty();) {
        std::string_view line = takePart(text, '\n');
        isInGroup = line.starts_with('[') ? line == "[Application]" : isInGroup;
        if (isInGroup && takePart(line, '=') == "name" && isApplicationIdentifier(line)) {
            return std::string(line);
        }
    }
    return std::nullopt;
}

/// The identifier of a desktop file by its path, as far as that can tell where its folder begins.
std::optional<std::string> identifierOfPath(std::string_view path) {
    constexpr std::string_view folder = "/applications/";
    constexpr std::string_view suffix = ".desktop";
    if (!path.ends_with(suffix)) {
        return std::nullopt;
    }
    path.remove_suffix(suffix.size());
    const std::size_t at = path.rfind(folder);
    std::string identifier(at == std::string_view::npos ? fileNameOf(path) : path.substr(at + folder.size()));
    std::ranges::replace(identifier, '/', '-');
    return isApplicationIdentifier(identifier) ? std::optional(std::move(identifier)) : std::nullopt;
}

/// Children inherit their parent's environment: only the process that it names counts.
std::optional<std::string> byEnvironment(const std::string& folder, std::string_view number) {
    const std::string content = readAtMost(folder + "/environ", largestEnvironment);
    std::string_view path;
    std::string_view started;
    for (std::string_view text = content; !text.empty();) {
        std::string_view value = takePart(text, '\0');
        const std::string_view name = takePart(value, '=');
        if (name == "GIO_LAUNCHED_DESKTOP_FILE") {
            path = value;
        } else if (name == "GIO_LAUNCHED_DESKTOP_FILE_PID") {
            started = value;
        }
    }
    return started == number ? identifierOfPath(path) : std::nullopt;
}

}  // namespace

ProcessApplications::Identifiers ProcessApplications::scan() {
    if (files_.refresh()) {
        known_.clear();
    }
    ++scans_;
    if (const std::unique_ptr<DIR, CloseDirectory> root(opendir(root_.c_str())); root) {
        int count = 0;
        while (const dirent* const entry = readdir(root.get())) {
            if (!isNumber(entry->d_name)) {
                continue;
            }
            if (++count > mostProcesses) {
                break;
            }
            if (const auto process = look(dirfd(root.get()), entry->d_name)) {
                examine(entry->d_name, *process);
            }
        }
    }
    Identifiers identifiers;
    std::erase_if(known_, [&](const auto& known) { return known.second.scan != scans_; });
    for (const auto& [number, known] : known_) {
        if (known.identifier) {
            identifiers.insert(*known.identifier);
        }
    }
    return identifiers;
}

/// None for a process that is another user's, the kernel's own, or over.
std::optional<ProcessApplications::Process> ProcessApplications::look(int rootDescriptor,
                                                                      const char* number) {
    struct stat info = {};
    if (fstatat(rootDescriptor, number, &info, 0) != 0 || info.st_uid != geteuid()) {
        return std::nullopt;
    }
    std::array<char, 4096> program{};
    const ssize_t size =
        readlinkat(rootDescriptor, fmt::format("{}/exe", number).c_str(), program.data(), program.size());
    if (size <= 0) {
        return std::nullopt;
    }
    return Process{.inode = info.st_ino,
                   .seconds = info.st_ctim.tv_sec,
                   .nanoseconds = info.st_ctim.tv_nsec,
                   .program = std::string(program.data(), static_cast<std::size_t>(size))};
}

void ProcessApplications::examine(const std::string& number, const Process& process) {
    Known& known = known_[number];
    known.scan = scans_;
    const bool isSame = known.process == process;
    if (isSame && known.isSettled) {
        return;
    }
    auto identifier = identify(number, process);
    known.isSettled = isSame && identifier == known.identifier;
    known.identifier = std::move(identifier);
    known.process = process;
}

std::optional<std::string> ProcessApplications::identify(const std::string& number,
                                                         const Process& process) const {
    const std::string folder = fmt::format("{}/{}", root_, number);
    if (auto identifier = byControlGroup(folder)) {
        return identifier;
    }
    if (auto identifier = bySandbox(folder)) {
        return identifier;
    }
    if (auto identifier = byEnvironment(folder, number)) {
        return identifier;
    }
    return byProgram(folder, process);
}

std::optional<std::string> ProcessApplications::byProgram(const std::string& folder,
                                                          const Process& process) const {
    // The kernel's word for a program that was replaced, by an update as a rule.
    constexpr std::string_view replaced = " (deleted)";
    std::string_view program = process.program;
    program.remove_suffix(program.ends_with(replaced) ? replaced.size() : 0);
    program = fileNameOf(program);
    if (auto identifier = files_.applicationOf(program)) {
        return identifier;
    }
    const std::string arguments = readAtMost(folder + "/cmdline", largestText);
    std::string_view rest = arguments;
    if (auto identifier = files_.applicationOf(fileNameOf(takePart(rest, '\0')))) {
        return identifier;
    }
    // A script's name comes after its interpreter's.
    return runsAllSorts(program) ? files_.applicationOf(fileNameOf(takePart(rest, '\0'))) : std::nullopt;
}

}  // namespace corvane
