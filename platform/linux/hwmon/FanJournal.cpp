#include "platform/linux/hwmon/FanJournal.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/posix/FileTransfers.h"

namespace corvane {

namespace {

constexpr mode_t ownerOnly = 0600;
constexpr mode_t ownerOnlyFolder = 0700;
/// Larger than any journal of `maxEntries`; what lies beyond is not read.
constexpr std::size_t maxFileSize = 65'536;

FileDescriptor openFile(const std::string& path, int flags) {
    return FileDescriptor(::open(path.c_str(), flags | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, ownerOnly));
}

void makeFolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash != std::string::npos && slash > 0) {
        // A folder that is there already is as good; one that cannot be made shows when the file is opened.
        static_cast<void>(::mkdir(path.substr(0, slash).c_str(), ownerOnlyFolder));
    }
}

std::optional<std::string> readAll(const FileDescriptor& file) {
    std::string text(maxFileSize, '\0');
    const auto size = readFully(file, text);
    if (!size) {
        return std::nullopt;
    }
    text.resize(*size);
    return text;
}

}  // namespace

FanJournal::FanJournal(std::string path, Log& log) : path_(std::move(path)), log_(log) {}

const FanJournal::Entries& FanJournal::entries() {
    refresh();
    return entries_;
}

const JournalEntry* FanJournal::find(const FanIdentity& fan) {
    const Entries& all = entries();
    const auto entry =
        std::find_if(all.begin(), all.end(), [&](const JournalEntry& each) { return each.fan == fan; });
    return entry == all.end() ? nullptr : &*entry;
}

bool FanJournal::update(const std::function<bool(Entries&)>& change) {
    makeFolderOf(path_);
    const FileDescriptor lock = openFile(path_ + ".lock", O_RDWR | O_CREAT);
    // Whoever holds the lock is done in an instant, or hangs: neither is waited for.
    if (!lock.isOpen() || ::flock(lock.get(), LOCK_EX | LOCK_NB) != 0) {
        return false;
    }
    std::optional<Entries> changed = load();
    if (!changed) {
        return false;
    }
    const Entries before = *changed;
    if (!change(*changed) || changed->size() > maxEntries) {
        return false;
    }
    if (*changed != before && !replace(*changed)) {
        return false;
    }
    entries_ = std::move(*changed);
    loaded_ = stamp();
    return true;
}

/// Nothing when it cannot be told whether there is a journal; the stamp of none is empty.
std::optional<FanJournal::Stamp> FanJournal::stamp() const {
    struct stat info = {};
    if (::lstat(path_.c_str(), &info) != 0) {
        return errno == ENOENT ? std::optional(Stamp()) : std::nullopt;
    }
    return Stamp{info.st_ino, info.st_mtim.tv_sec, info.st_mtim.tv_nsec};
}

/// False when what the file holds now cannot be read.
bool FanJournal::refresh() {
    const std::optional<Stamp> now = stamp();
    if (!now || loaded_ == now) {
        return now.has_value();
    }
    std::optional<Entries> loaded = load();
    if (!loaded) {
        return false;
    }
    entries_ = std::move(*loaded);
    loaded_ = now;
    return true;
}

/// Nothing when there is a journal that cannot be read.
std::optional<FanJournal::Entries> FanJournal::load() {
    const FileDescriptor file = openFile(path_, O_RDONLY);
    if (!file.isOpen()) {
        return errno == ENOENT ? std::optional(Entries()) : std::nullopt;
    }
    const std::optional<std::string> text = readAll(file);
    return text ? std::optional(parse(*text)) : std::nullopt;
}

FanJournal::Entries FanJournal::parse(const std::string& text) {
    Entries entries;
    std::size_t damaged = 0;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        std::optional<JournalEntry> entry =
            parseJournalEntry(std::string_view(text).substr(start, end - start));
        if (entry && entries.size() < maxEntries) {
            entries.push_back(std::move(*entry));
        } else {
            ++damaged;
        }
        start = end + 1;
    }
    if (std::exchange(reportedDamage_, damaged) != damaged && damaged > 0) {
        log_.write(fmt::format("Corvane daemon: fan journal: {} damaged lines skipped", damaged));
    }
    return entries;
}

bool FanJournal::replace(const Entries& entries) const {
    std::string text;
    for (const JournalEntry& entry : entries) {
        text += formatJournalEntry(entry) + "\n";
    }
    const std::string draft = path_ + ".new";
    const FileDescriptor file = openFile(draft, O_WRONLY | O_CREAT | O_TRUNC);
    return file.isOpen() && writeFully(file, text) && ::fsync(file.get()) == 0 &&
           std::rename(draft.c_str(), path_.c_str()) == 0;
}

}  // namespace corvane
