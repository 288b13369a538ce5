#include "platform/linux/desktop/DesktopFiles.h"

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <tuple>
#include <utility>

#include <fmt/format.h>
#include <sys/stat.h>

#include "platform/linux/desktop/ApplicationUnit.h"
#include "platform/posix/BoundedFile.h"

namespace corvane {

namespace {

namespace fs = std::filesystem;

/// Far more than anybody has installed.
constexpr std::size_t mostFiles = 10'000;
constexpr int deepest = 4;
/// In bytes; with all their translations some have 100 KB. What counts comes early.
constexpr std::size_t largestFile = 262'144;

constexpr std::string_view suffix = ".desktop";

std::string orElse(const char* value, std::string otherwise) {
    return value != nullptr && *value != '\0' ? value : std::move(otherwise);
}

/// The smaller, the better does it stand for its program.
auto rankOf(const std::pair<const std::string, DesktopFile>& application) {
    const auto& [identifier, file] = application;
    return std::tie(file.isOutOfMenus, file.argumentCount, identifier);
}

}  // namespace

DesktopFiles::Stamp DesktopFiles::stampOf(const std::string& folder) {
    struct stat info = {};
    if (stat(folder.c_str(), &info) != 0) {
        return {};
    }
    return {.device = info.st_dev,
            .inode = info.st_ino,
            .seconds = info.st_mtim.tv_sec,
            .nanoseconds = info.st_mtim.tv_nsec};
}

bool DesktopFiles::isUnchanged() const {
    return !stamps_.empty() && std::ranges::all_of(stamps_, [](const auto& known) {
        return stampOf(known.first) == known.second;
    });
}

bool DesktopFiles::refresh() {
    const bool isUnchangedNow = isUnchanged();
    if (isUnchangedNow && isSettled_) {
        return false;
    }
    isSettled_ = isUnchangedNow;
    stamps_.clear();
    byIdentifier_.clear();
    filesRead_ = 0;
    for (const std::string& folder : folders_) {
        readFolder(folder, {}, 0);
    }
    sortByProgram();
    return true;
}

void DesktopFiles::readFolder(const std::string& folder, const std::string& prefix, int depth) {
    // Before it is read: what changes meanwhile is then read again.
    stamps_[folder] = stampOf(folder);
    std::error_code error;
    fs::directory_iterator entry(folder, error);
    for (; !error && entry != fs::directory_iterator() && filesRead_ < mostFiles; entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        std::error_code unknown;
        if (name.ends_with(suffix)) {
            ++filesRead_;
            readFile(entry->path().string(),
                     fmt::format("{}{}", prefix, name.substr(0, name.size() - suffix.size())));
        } else if (depth < deepest && stamps_.size() < mostFiles && entry->is_directory(unknown)) {
            readFolder(entry->path().string(), fmt::format("{}{}-", prefix, name), depth + 1);
        }
    }
}

void DesktopFiles::readFile(const std::string& path, const std::string& identifier) {
    if (byIdentifier_.contains(identifier) || !isApplicationIdentifier(identifier)) {
        return;
    }
    if (auto file = readDesktopFile(readAtMost(path, largestFile), viewer_)) {
        byIdentifier_.emplace(identifier, std::move(*file));
    }
}

void DesktopFiles::sortByProgram() {
    std::erase_if(byIdentifier_, [](const auto& application) { return application.second.isHidden; });
    std::map<std::string_view, decltype(byIdentifier_)::const_pointer> best;
    for (const auto& application : byIdentifier_) {
        for (const std::string& program : application.second.programs) {
            const auto& current = best.emplace(program, &application).first;
            if (rankOf(application) < rankOf(*current->second)) {
                current->second = &application;
            }
        }
    }
    byProgram_.clear();
    for (const auto& [program, application] : best) {
        byProgram_.emplace(program, application->first);
    }
}

std::optional<std::string> DesktopFiles::applicationOf(std::string_view program) const {
    const auto found = byProgram_.find(program);
    return found == byProgram_.end() ? std::nullopt : std::optional(found->second);
}

std::vector<std::string> desktopFileFolders(const EnvironmentLookup& environment) {
    constexpr const char* systemFolders = "/usr/local/share:/usr/share";
    const std::string home = orElse(environment("HOME"), {});
    std::string all = orElse(environment("XDG_DATA_HOME"), fmt::format("{}/.local/share", home));
    all.append(":").append(orElse(environment("XDG_DATA_DIRS"), systemFolders));
    std::vector<std::string> folders;
    std::istringstream stream(all);
    for (std::string folder; std::getline(stream, folder, ':');) {
        const fs::path path = fs::path(folder).lexically_normal() / "applications";
        if (path.is_absolute() && std::ranges::find(folders, path.string()) == folders.end()) {
            folders.push_back(path.string());
        }
    }
    return folders;
}

std::vector<std::string> desktopNames(const EnvironmentLookup& environment) {
    std::vector<std::string> names;
    std::istringstream stream(orElse(environment("XDG_CURRENT_DESKTOP"), {}));
    for (std::string name; std::getline(stream, name, ':');) {
        if (!name.empty()) {
            names.push_back(name);
        }
    }
    return names;
}

}  // namespace corvane
