#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/Log.h"
#include "platform/linux/hwmon/JournalEntry.h"

namespace corvane {

/// The record of all fans that are not with their firmware, kept in a file so that it outlives a process that
/// dies. Shared by processes: every change is made under a lock, on what the file holds then, and replaces
/// the file at once. One thread.
class FanJournal {
public:
    /// More fans than any machine has; further ones are refused.
    static constexpr std::size_t maxEntries = 64;

    using Entries = std::vector<JournalEntry>;

    /// `path` lies in a folder that only its owner may change; the folder is made when needed. `log` outlives
    /// the journal.
    FanJournal(std::string path, Log& log);

    /// What the file holds now. Neither allocates nor reads while the file stays the same. Lines that are
    /// damaged are left out and reported. While the file cannot be read they are what they were.
    [[nodiscard]] const Entries& entries();

    /// The entry of `fan`, or null. Valid until the next call.
    [[nodiscard]] const JournalEntry* find(const FanIdentity& fan);

    /// Whether `entries` is what the file holds now, which only its owner may see.
    [[nodiscard]] bool isReadable() { return refresh(); }

    /// Lets `change` alter the entries, and has them in the file when it returns true. False when it returned
    /// false, when another process is just changing the journal, or when it cannot be written; then the file
    /// is as before.
    [[nodiscard]] bool update(const std::function<bool(Entries&)>& change);

private:
    /// Tells versions of the file apart.
    struct Stamp {
        std::uint64_t inode = 0;
        std::int64_t changedSeconds = 0;
        std::int64_t changedNanoseconds = 0;

        bool operator==(const Stamp&) const = default;
    };

    [[nodiscard]] std::optional<Stamp> stamp() const;
    bool refresh();
    [[nodiscard]] std::optional<Entries> load();
    [[nodiscard]] Entries parse(const std::string& text);
    [[nodiscard]] bool replace(const Entries& entries) const;

    std::string path_;
    Log& log_;
    Entries entries_;
    std::optional<Stamp> loaded_;
    std::size_t reportedDamage_ = 0;
};

}  // namespace corvane
